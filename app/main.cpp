// The thin executable. The scanner's commands (--scan, --tags), the project search
// (--find) and the language server (--lsp) run here with Qt Core alone; everything else is handed to the IDE library beside the executable, which
// brings in the window system, the editor component and the rest.
#include "insight/scan_command.h"
#include "lsp/server.h"
#include "search/find_command.h"

#include <QStringList>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <malloc.h>
#include <string>

namespace {

// The IDE library in the executable's own folder.
std::string ideLibraryPath() {
    char self[PATH_MAX];
    const char* resolved = realpath("/proc/self/exe", self);
    std::string folder = resolved ? std::string(resolved) : std::string();
    folder = folder.substr(0, folder.find_last_of('/') + 1);
    return folder + "libkelvaro_ide.so";
}

int runIde(int argc, char** argv) {
    const std::string path = ideLibraryPath();
    void* library = dlopen(path.c_str(), RTLD_LAZY | RTLD_LOCAL);
    if (!library) {
        std::fprintf(stderr, "kelvaro: cannot load the IDE library %s: %s\n", path.c_str(), dlerror());
        return 1;
    }
    using Entry = int (*)(int, char**);
    const auto entry = reinterpret_cast<Entry>(dlsym(library, "kelvaroIdeMain"));
    if (!entry) {
        std::fprintf(stderr, "kelvaro: %s has no entry point: %s\n", path.c_str(), dlerror());
        return 1;
    }
    return entry(argc, argv);
}

} // namespace

int main(int argc, char** argv) {
    // Heaps grow in large steps. Scanning a project allocates tens of megabytes from
    // several threads at once, and growing the heaps a page or two at a time cost
    // thousands of system calls that each stop the other threads' page faults. The
    // step is address space only; memory is used as it is touched.
    mallopt(M_TOP_PAD, 32 << 20);
    if (argc >= 2 && (std::strcmp(argv[1], "--scan") == 0 || std::strcmp(argv[1], "--tags") == 0)) {
        QStringList args;
        for (int i = 0; i < argc; ++i)
            args << QString::fromLocal8Bit(argv[i]);
        return runScannerCommand(args);
    }
    if (argc >= 2 && std::strcmp(argv[1], "--find") == 0) {
        QStringList args;
        for (int i = 0; i < argc; ++i)
            args << QString::fromLocal8Bit(argv[i]);
        return runFindCommand(args);
    }
    if (argc >= 2 && std::strcmp(argv[1], "--lsp") == 0)
        return lsp::runLanguageServer(argc, argv);
    return runIde(argc, argv);
}
