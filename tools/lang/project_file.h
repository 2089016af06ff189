// The platform project file P/N.xcodeproj/project.pbxproj: a plain text file with one
// reference a line. "source NAME" lines list the Kelvaro sources, "file REF" lines
// every other file the project maker added (companion files, resources, frameworks).
// Lines it does not know are kept as they are.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace klvr {

class ProjectFile {
public:
    static constexpr const char* kFileName = "project.pbxproj";

    // A new project file for the project folder: its sources and the companion files
    // in P/N (C.mm and C.h).
    static ProjectFile createFor(const std::filesystem::path& project);
    static ProjectFile parse(const std::string& text);

    std::string text() const;
    bool hasFile(const std::string& reference) const;
    // Both return whether the file changed; adding twice or removing a missing
    // reference changes nothing.
    bool addFile(const std::string& reference);
    bool removeFile(const std::string& reference);
    std::vector<std::string> files() const;

private:
    std::vector<std::string> lines_;
};

// Reads the project file in `xcodeproj`; an absent file reads as a new one for `project`.
ProjectFile readProjectFile(const std::filesystem::path& xcodeproj, const std::filesystem::path& project);
// Writes it atomically (the old file stays whole if the write fails). Returns success.
bool writeProjectFile(const std::filesystem::path& xcodeproj, const ProjectFile& file);

}  // namespace klvr
