// klvrmake: adds file references to, or removes them from, a project's platform
// project file.
//   klvrmake -append FILE... -o P/N.xcodeproj -p P     add the files
//   klvrmake FILE... -o P/N.xcodeproj -p P             remove the files
#include "tools/lang/project_file.h"

#include <cstdio>
#include <string>
#include <vector>

namespace {

int usage(const char* why) {
    std::fprintf(stderr,
                 "klvrmake: %s\nusage: klvrmake [-append] FILE... -o PROJECT/NAME.xcodeproj -p PROJECT\n", why);
    return 2;
}

bool endsWith(const std::string& s, const std::string& suffix) {
    return s.size() >= suffix.size() && s.compare(s.size() - suffix.size(), suffix.size(), suffix) == 0;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    std::size_t i = 0;
    const bool append = i < args.size() && args[i] == "-append";
    if (append)
        ++i;
    std::vector<std::string> files;
    while (i < args.size() && args[i] != "-o" && args[i] != "-p")
        files.push_back(args[i++]);
    if (files.empty())
        return usage("no files given");
    if (i + 4 != args.size() || args[i] != "-o" || args[i + 2] != "-p")
        return usage("expected -o PROJECT/NAME.xcodeproj -p PROJECT after the files");
    std::string xcodeproj = args[i + 1];
    const std::string project = args[i + 3];
    while (xcodeproj.size() > 1 && xcodeproj.back() == '/')
        xcodeproj.pop_back();
    if (!endsWith(xcodeproj, ".xcodeproj") || project.empty())
        return usage("the -o argument must name a .xcodeproj folder");

    klvr::ProjectFile file = klvr::readProjectFile(xcodeproj, project);
    for (const std::string& reference : files) {
        if (append)
            file.addFile(reference);
        else
            file.removeFile(reference);
    }
    if (!klvr::writeProjectFile(xcodeproj, file)) {
        std::fprintf(stderr, "klvrmake: cannot write %s/%s\n", xcodeproj.c_str(), klvr::ProjectFile::kFileName);
        return 1;
    }
    return 0;
}
