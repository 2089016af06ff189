// klvrcompiler: checks a Kelvaro project and builds its application.
//   klvrcompiler PROJECT -Release | -Deploy   check, then write PROJECT/build/Release/N.app
//   klvrcompiler PROJECT -xcodeproj           create PROJECT/N.xcodeproj when missing
//   klvrcompiler -Clean PROJECT               remove PROJECT/build
// The first error goes to standard error as one "Kelvaro: ..." line, exit status 1.
#include "tools/lang/project.h"
#include "tools/lang/project_file.h"
#include "tools/lang/vocabulary.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>

namespace fs = std::filesystem;

namespace {

int usage() {
    std::fputs("usage: klvrcompiler PROJECT -Release|-Deploy|-xcodeproj\n       klvrcompiler -Clean PROJECT\n", stderr);
    return 2;
}

fs::path ownExecutable(const char* argv0) {
    std::error_code error;
    fs::path self = fs::read_symlink("/proc/self/exe", error);
    return error ? fs::absolute(argv0) : self;
}

// The IDE passes the folder to clean with a backslash before every blank; a folder
// that exists as given is taken as it is.
fs::path unescapeBlanks(const std::string& argument) {
    std::error_code error;
    if (fs::exists(argument, error))
        return argument;
    std::string path;
    for (std::size_t i = 0; i < argument.size(); ++i) {
        if (argument[i] == '\\' && i + 1 < argument.size() && argument[i + 1] == ' ')
            continue;
        path.push_back(argument[i]);
    }
    return path;
}

int fail(const klvr::Diagnostic& d) {
    const std::string line = klvr::formatDiagnostic(d);
    std::fwrite(line.data(), 1, line.size(), stderr);
    return 1;
}

int build(const fs::path& project, const std::string& configuration, const fs::path& self) {
    const auto started = std::chrono::steady_clock::now();
    std::error_code error;
    if (!fs::is_directory(project, error)) {
        std::fprintf(stderr, "klvrcompiler: %s is not a folder\n", project.c_str());
        return 1;
    }
    klvr::Vocabulary vocabulary;
    const std::string resources = klvr::defaultResourcesDir(self.string());
    const int added = vocabulary.loadPropertyLists(resources);
    const std::vector<std::string> sources = klvr::listSourceFiles(project);
    std::printf("Checking %zu %s of %s (%d vocabulary words)\n", sources.size(), sources.size() == 1 ? "file" : "files",
                project.c_str(), added);
    std::fflush(stdout);
    const klvr::CheckSummary summary = klvr::checkProject(project, sources, vocabulary);
    if (summary.error)
        return fail(*summary.error);
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    std::printf("Checked %zu %s, %zu %s in %.2f s\n", summary.files, summary.files == 1 ? "file" : "files", summary.lines,
                summary.lines == 1 ? "line" : "lines", seconds);
    const fs::path runner = self.parent_path() / "klvrrun";
    if (!fs::exists(runner, error)) {
        std::fprintf(stderr, "klvrcompiler: the runner %s is missing\n", runner.c_str());
        return 1;
    }
    const std::string name = klvr::projectName(project);
    std::printf("Writing %s/build/Release/%s.app\n", project.c_str(), name.c_str());
    const std::string buildError = klvr::buildApplication(project, sources, runner, "Release");
    if (!buildError.empty()) {
        std::fprintf(stderr, "klvrcompiler: %s\n", buildError.c_str());
        return 1;
    }
    std::printf("Build succeeded (%s)\n", configuration.c_str());
    return 0;
}

int makeXcodeproj(const fs::path& project) {
    const fs::path xcodeproj = project / (klvr::projectName(project) + ".xcodeproj");
    std::error_code error;
    if (fs::exists(xcodeproj, error)) {
        std::printf("%s exists\n", xcodeproj.c_str());
        return 0;
    }
    if (!fs::is_directory(project, error)) {
        std::fprintf(stderr, "klvrcompiler: %s is not a folder\n", project.c_str());
        return 1;
    }
    if (!klvr::writeProjectFile(xcodeproj, klvr::ProjectFile::createFor(project))) {
        std::fprintf(stderr, "klvrcompiler: cannot write %s\n", xcodeproj.c_str());
        return 1;
    }
    std::printf("Created %s\n", xcodeproj.c_str());
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3)
        return usage();
    const std::string first = argv[1], second = argv[2];
    if (first == "-Clean") {
        const std::string error = klvr::cleanProject(unescapeBlanks(second));
        if (!error.empty()) {
            std::fprintf(stderr, "klvrcompiler: %s\n", error.c_str());
            return 1;
        }
        return 0;
    }
    const fs::path project = first;
    if (second == "-Release" || second == "-Deploy")
        return build(project, second.substr(1), ownExecutable(argv[0]));
    if (second == "-xcodeproj")
        return makeXcodeproj(project);
    return usage();
}
