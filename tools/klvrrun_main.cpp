// klvrrun: runs a Kelvaro program.
//   klvrrun FOLDER      runs the Global class of the sources in FOLDER
// Copied into a built application as Contents/MacOS/N and started with no
// arguments, it runs the sources in ../Resources beside itself.
#include "tools/lang/project.h"

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>

namespace fs = std::filesystem;

int main(int argc, char** argv) {
    // Output reaches the IDE's run log line by line, also from a program that never ends.
    std::setvbuf(stdout, nullptr, _IOLBF, 1 << 16);
    fs::path folder;
    if (argc == 2 && std::strcmp(argv[1], "-h") != 0 && std::strcmp(argv[1], "--help") != 0) {
        folder = argv[1];
    } else if (argc == 1) {
        std::error_code error;
        fs::path self = fs::read_symlink("/proc/self/exe", error);
        if (error)
            self = fs::absolute(argv[0]);
        folder = self.parent_path().parent_path() / "Resources";
    } else {
        std::fputs("usage: klvrrun FOLDER\n", stderr);
        return 2;
    }
    const auto error = klvr::runFolder(folder);
    std::fflush(stdout);
    if (error) {
        // The same shape as a compiler error, without its final line break.
        std::string line = klvr::formatDiagnostic(*error);
        std::fwrite(line.data(), 1, line.size(), stderr);
        return 1;
    }
    return 0;
}
