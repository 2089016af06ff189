// One error of the checker or the runner, and the single line the IDE reads back.
#pragma once

#include <stdexcept>
#include <string>

namespace klvr {

struct Diagnostic {
    std::string message;  // short and precise, e.g. "Next without For"
    int line = 0;         // 1-based
    std::string file;     // relative to the project folder
};

// "Kelvaro: " + message + " in line " + N + " in file " + file + "\n": the IDE cuts the
// file and line out of exactly this shape, so it must never change.
std::string formatDiagnostic(const Diagnostic& d);

// Thrown by the parser and the interpreter; caught only by the tools' entry points.
struct LanguageError : std::runtime_error {
    Diagnostic diagnostic;
    explicit LanguageError(Diagnostic d) : std::runtime_error(d.message), diagnostic(std::move(d)) {}
};

}  // namespace klvr
