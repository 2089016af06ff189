// A Kelvaro project folder as the toolchain sees it: the *.klvr files at its top
// level, checked together, and the application folder a build writes.
#pragma once

#include "tools/lang/diagnostic.h"
#include "tools/lang/interpreter.h"
#include "tools/lang/vocabulary.h"

#include <QString>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace klvr {

inline constexpr const char* kGlobalFileName = "Global.NSObject.klvr";
// Bigger source files are refused rather than read into memory.
inline constexpr std::uintmax_t kMaxSourceBytes = 16u * 1024u * 1024u;

// The project's name: the last component of its folder (a final "/" is ignored).
std::string projectName(const std::filesystem::path& project);

// Names of the *.klvr files at the top of the folder: the Global file first, the
// others in name order. Empty when the folder cannot be listed.
std::vector<std::string> listSourceFiles(const std::filesystem::path& project);

// Reads a whole file; nullopt when it cannot be read or is too big (error says why).
std::optional<std::string> readSource(const std::filesystem::path& file, std::string& error);

struct CheckSummary {
    std::optional<Diagnostic> error;  // the first error, if any
    std::size_t files = 0;
    std::size_t lines = 0;
};

// Checks every source of the project against each other and the vocabulary.
CheckSummary checkProject(const std::filesystem::path& project, const std::vector<std::string>& sources,
                          const Vocabulary& vocabulary);

// Checks one source of the project given as text (an editor's unsaved text) against the
// project's other files as they are on disk: the first error of that text, if any. A
// file of the project that cannot be read counts as empty.
std::optional<Diagnostic> checkSourceText(const std::filesystem::path& project, const std::string& fileName,
                                          const std::string& text, const Vocabulary& vocabulary);

// Runs the program of the sources in `folder`; each line it prints goes to `print`, or
// to standard output when `print` is empty. Returns the error, if the program failed.
std::optional<Diagnostic> runFolder(const std::filesystem::path& folder, std::int64_t maxSteps = -1,
                                    std::function<void(const QString&)> print = {});

struct SourceText {
    std::string name;  // <Class>.<SuperClass>.klvr
    std::string text;
};
// Runs a program given as texts, the Global file first (the fuzzer's way in).
std::optional<Diagnostic> runSources(const std::vector<SourceText>& files, Interpreter::Options options);

// Checks the file `index` of `files` (the Global file first) as the project's check
// checks it: against the shapes of all the files and the vocabulary. Its first error.
std::optional<Diagnostic> checkSourceOf(const std::vector<SourceText>& files, std::size_t index,
                                        const Vocabulary& vocabulary);

// The same check kept ready for a project whose texts change one at a time (the
// language server's diagnostics): each file's own members are read once and again only
// when its text changes; a check links them and compiles the one file.
class ProjectChecker {
public:
    explicit ProjectChecker(std::vector<SourceText> files);  // the Global file first
    ~ProjectChecker();
    std::size_t size() const;
    const std::string& name(std::size_t index) const;
    void setText(std::size_t index, std::string text);
    std::optional<Diagnostic> check(std::size_t index, const Vocabulary& vocabulary) const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

// Writes PROJECT/build/<configuration>/N.app: Contents/MacOS/N is a copy of the
// runner, Contents/Resources holds the sources. Returns an error text or "".
std::string buildApplication(const std::filesystem::path& project, const std::vector<std::string>& sources,
                             const std::filesystem::path& runner, const std::string& configuration);

// Removes PROJECT/build and nothing else. Returns an error text or "".
std::string cleanProject(const std::filesystem::path& project);

}  // namespace klvr
