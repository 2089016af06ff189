#include "tools/lang/diagnostic.h"

namespace klvr {

std::string formatDiagnostic(const Diagnostic& d) {
    return "Kelvaro: " + d.message + " in line " + std::to_string(d.line) + " in file " + d.file + "\n";
}

}  // namespace klvr
