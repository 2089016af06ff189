// klvrrun: runs a Kelvaro program.
//   klvrrun FOLDER      runs the program of the sources in FOLDER
//   klvrrun             prints its usage
// Copied into a built application as Contents/MacOS/N and started with no
// arguments, it runs the sources in ../Resources beside itself.
#include "tools/lang/project.h"

#include <pthread.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string>

namespace fs = std::filesystem;

namespace {

// Deep recursion in a program must end in "Too many nested calls", not in the end of
// the stack, so the program runs on a thread with a stack far beyond what the
// interpreter's nesting limit can use.
constexpr std::size_t kRunnerStackBytes = std::size_t{1} << 30;

struct RunRequest {
    fs::path folder;
    std::optional<klvr::Diagnostic> error;
};

void* runOnThread(void* request) {
    auto* run = static_cast<RunRequest*>(request);
    run->error = klvr::runFolder(run->folder);
    return nullptr;
}

std::optional<klvr::Diagnostic> runWithLargeStack(const fs::path& folder) {
    RunRequest request{folder, std::nullopt};
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, kRunnerStackBytes);
    pthread_t thread;
    if (pthread_create(&thread, &attributes, runOnThread, &request) != 0) {
        pthread_attr_destroy(&attributes);
        return klvr::runFolder(folder);  // no thread to be had: run here, within the usual limits
    }
    pthread_attr_destroy(&attributes);
    pthread_join(thread, nullptr);
    return request.error;
}

}  // namespace

int main(int argc, char** argv) {
    // Output reaches the IDE's run log line by line, also from a program that never ends.
    std::setvbuf(stdout, nullptr, _IOLBF, 1 << 16);
    fs::path folder;
    // Under its own name the runner needs a folder; as a built application's
    // executable it runs the sources beside itself.
    const bool ownName = fs::path(argv[0]).filename() == "klvrrun";
    if (argc == 2 && std::strcmp(argv[1], "-h") != 0 && std::strcmp(argv[1], "--help") != 0) {
        folder = argv[1];
    } else if (argc == 1 && !ownName) {
        std::error_code error;
        fs::path self = fs::read_symlink("/proc/self/exe", error);
        if (error)
            self = fs::absolute(argv[0]);
        folder = self.parent_path().parent_path() / "Resources";
    } else {
        std::fputs("usage: klvrrun FOLDER\n"
                   "  runs the Kelvaro program whose sources (Global.NSObject.klvr and the other\n"
                   "  *.klvr files) are in FOLDER; a runtime error prints one line\n"
                   "  \"Kelvaro: <message> in line N in file F\" on standard error and gives 1\n",
                   stderr);
        return 2;
    }
    const auto error = runWithLargeStack(folder);
    std::fflush(stdout);
    if (error) {
        // The same shape as a compiler error, without its final line break.
        std::string line = klvr::formatDiagnostic(*error);
        std::fwrite(line.data(), 1, line.size(), stderr);
        return 1;
    }
    return 0;
}
