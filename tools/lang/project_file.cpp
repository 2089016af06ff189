#include "tools/lang/project_file.h"

#include "tools/lang/project.h"

#include <QByteArray>
#include <QFile>
#include <QSaveFile>
#include <QString>

#include <algorithm>

namespace fs = std::filesystem;

namespace klvr {

namespace {

constexpr const char* kHeader = "// Kelvaro project file: one reference a line (\"source NAME\", \"file PATH\")";

bool isFileLine(const std::string& line, const std::string& reference) {
    return line.size() == reference.size() + 5 && line.compare(0, 5, "file ") == 0 && line.compare(5, std::string::npos, reference) == 0;
}

}  // namespace

ProjectFile ProjectFile::createFor(const fs::path& project) {
    ProjectFile file;
    const std::string name = projectName(project);
    file.lines_.push_back(kHeader);
    file.lines_.push_back("name " + name);
    for (const std::string& source : listSourceFiles(project))
        file.lines_.push_back("source " + source);
    std::vector<std::string> companions;
    std::error_code error;
    for (fs::directory_iterator it(project / name, error), end; !error && it != end; it.increment(error)) {
        const std::string entry = it->path().filename().string();
        const std::string extension = it->path().extension().string();
        if (extension == ".mm" || extension == ".h")
            companions.push_back(entry);
    }
    std::sort(companions.begin(), companions.end());
    for (const std::string& companion : companions)
        file.lines_.push_back("file " + companion);
    return file;
}

ProjectFile ProjectFile::parse(const std::string& text) {
    ProjectFile file;
    std::size_t pos = 0;
    while (pos < text.size()) {
        std::size_t end = text.find('\n', pos);
        if (end == std::string::npos)
            end = text.size();
        std::string line = text.substr(pos, end - pos);
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        file.lines_.push_back(std::move(line));
        pos = end + 1;
    }
    return file;
}

std::string ProjectFile::text() const {
    std::string out;
    for (const std::string& line : lines_)
        out += line + "\n";
    return out;
}

bool ProjectFile::hasFile(const std::string& reference) const {
    return std::any_of(lines_.begin(), lines_.end(), [&](const std::string& line) { return isFileLine(line, reference); });
}

bool ProjectFile::addFile(const std::string& reference) {
    if (hasFile(reference))
        return false;
    lines_.push_back("file " + reference);
    return true;
}

bool ProjectFile::removeFile(const std::string& reference) {
    const auto before = lines_.size();
    lines_.erase(std::remove_if(lines_.begin(), lines_.end(), [&](const std::string& line) { return isFileLine(line, reference); }),
                 lines_.end());
    return lines_.size() != before;
}

std::vector<std::string> ProjectFile::files() const {
    std::vector<std::string> result;
    for (const std::string& line : lines_)
        if (line.compare(0, 5, "file ") == 0)
            result.push_back(line.substr(5));
    return result;
}

ProjectFile readProjectFile(const fs::path& xcodeproj, const fs::path& project) {
    QFile in(QFile::decodeName(QByteArray::fromStdString((xcodeproj / ProjectFile::kFileName).string())));
    if (!in.open(QIODevice::ReadOnly))
        return ProjectFile::createFor(project);
    return ProjectFile::parse(in.readAll().toStdString());
}

bool writeProjectFile(const fs::path& xcodeproj, const ProjectFile& file) {
    std::error_code error;
    fs::create_directories(xcodeproj, error);
    QSaveFile out(QFile::decodeName(QByteArray::fromStdString((xcodeproj / ProjectFile::kFileName).string())));
    if (!out.open(QIODevice::WriteOnly))
        return false;
    const std::string text = file.text();
    out.write(text.data(), static_cast<qint64>(text.size()));
    return out.commit();
}

}  // namespace klvr
