#include "tools/lang/project.h"

#include "tools/lang/interpreter.h"
#include "tools/lang/lexer.h"
#include "tools/lang/parser.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <cstdio>
#include <fstream>
#include <unordered_set>

namespace fs = std::filesystem;

namespace klvr {

namespace {

bool endsWith(const std::string& s, std::string_view suffix) {
    return s.size() >= suffix.size() && s.compare(s.size() - suffix.size(), suffix.size(), suffix) == 0;
}

std::size_t countLines(const std::string& text) {
    const auto n = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    return n + (!text.empty() && text.back() != '\n');
}

}  // namespace

std::string projectName(const fs::path& project) {
    fs::path p = project.lexically_normal();
    if (p.filename().empty())
        p = p.parent_path();
    return p.filename().string();
}

std::vector<std::string> listSourceFiles(const fs::path& project) {
    std::vector<std::string> names;
    std::error_code error;
    fs::directory_iterator it(project, error);
    if (error)
        return names;
    for (const fs::directory_entry& entry : it) {
        const std::string name = entry.path().filename().string();
        if (endsWith(name, ".klvr") && name.size() > 5 && entry.is_regular_file(error))
            names.push_back(name);
    }
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        const bool aGlobal = endsWith(a, kGlobalFileName), bGlobal = endsWith(b, kGlobalFileName);
        if (aGlobal != bGlobal)
            return aGlobal;
        return a < b;
    });
    return names;
}

std::optional<std::string> readSource(const fs::path& file, std::string& error) {
    std::error_code code;
    const std::uintmax_t size = fs::file_size(file, code);
    if (code) {
        error = "File cannot be read";
        return std::nullopt;
    }
    if (size > kMaxSourceBytes) {
        error = "File too large";
        return std::nullopt;
    }
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        error = "File cannot be read";
        return std::nullopt;
    }
    std::string text(static_cast<std::size_t>(size), '\0');
    in.read(text.data(), static_cast<std::streamsize>(size));
    text.resize(static_cast<std::size_t>(in.gcount()));
    return text;
}

CheckSummary checkProject(const fs::path& project, const std::vector<std::string>& sources, const Vocabulary& vocabulary) {
    CheckSummary summary;
    if (sources.empty() || !endsWith(sources.front(), kGlobalFileName)) {
        summary.error = Diagnostic{std::string(kGlobalFileName) + " missing", 1, kGlobalFileName};
        return summary;
    }
    std::unordered_set<std::string> classes;
    for (const std::string& name : sources)
        classes.insert(lowerName(name.substr(0, name.find('.'))));
    std::unordered_set<std::string> globalPublics;

    // Checks one file; returns its line count, or sets `error`.
    const auto checkOne = [&](std::size_t index, std::optional<Diagnostic>& error) -> std::size_t {
        const std::string& name = sources[index];
        std::string readError;
        const auto text = readSource(project / name, readError);
        if (!text) {
            error = Diagnostic{readError, 1, name};
            return 0;
        }
        CompileContext context;
        context.vocabulary = &vocabulary;
        context.projectClasses = &classes;
        if (index == 0)
            globalPublics = publicMemberNames(*text);
        else
            context.globalPublics = &globalPublics;
        try {
            compileClass(*text, name, context);
        } catch (const LanguageError& failure) {
            error = failure.diagnostic;
        }
        return countLines(*text);
    };

    // The Global file first: the others may use its Public members.
    std::optional<Diagnostic> globalError;
    summary.lines = checkOne(0, globalError);
    if (globalError) {
        summary.error = globalError;
        return summary;
    }

    // The other files are independent of each other and are checked on a few threads.
    // Every file before the first one with an error is still checked, so the error
    // reported is the same as a check in file order would find.
    const std::size_t count = sources.size();
    std::vector<std::optional<Diagnostic>> errors(count);
    std::vector<std::size_t> lines(count, 0);
    std::atomic<std::size_t> next{1};
    std::atomic<std::size_t> firstError{count};
    const auto work = [&] {
        for (;;) {
            const std::size_t index = next.fetch_add(1);
            if (index >= count || index > firstError.load())
                return;
            lines[index] = checkOne(index, errors[index]);
            if (errors[index]) {
                std::size_t seen = firstError.load();
                while (index < seen && !firstError.compare_exchange_weak(seen, index)) {
                }
            }
        }
    };
    const std::size_t threads = std::min<std::size_t>({std::max(1u, std::thread::hardware_concurrency()), 4, count - 1});
    std::vector<std::thread> pool;
    for (std::size_t t = 1; t < threads; ++t)
        pool.emplace_back(work);
    work();
    for (std::thread& thread : pool)
        thread.join();
    if (firstError.load() < count) {
        summary.error = errors[firstError.load()];
        return summary;
    }
    summary.files = count;
    for (std::size_t n : lines)
        summary.lines += n;
    return summary;
}

std::optional<Diagnostic> runFolder(const fs::path& folder, std::int64_t maxSteps) {
    const std::vector<std::string> sources = listSourceFiles(folder);
    if (sources.empty() || !endsWith(sources.front(), kGlobalFileName))
        return Diagnostic{std::string(kGlobalFileName) + " missing", 1, kGlobalFileName};
    std::string readError;
    const auto text = readSource(folder / sources.front(), readError);
    if (!text)
        return Diagnostic{readError, 1, sources.front()};
    // The checker has vetted the names at build time; the runner only fails on the
    // ones it cannot run when it reaches them.
    CompileContext context;
    context.unknownNamesAreErrors = false;
    try {
        const ClassUnit unit = compileClass(*text, sources.front(), context);
        Interpreter::Options options;
        options.maxSteps = maxSteps;
        options.print = [](const QString& line) {
            const QByteArray bytes = line.toUtf8();
            std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
            std::fputc('\n', stdout);
        };
        Interpreter interpreter(unit, std::move(options));
        interpreter.run();
    } catch (const LanguageError& failure) {
        return failure.diagnostic;
    }
    return std::nullopt;
}

std::string buildApplication(const fs::path& project, const std::vector<std::string>& sources, const fs::path& runner,
                             const std::string& configuration) {
    const std::string name = projectName(project);
    const fs::path releaseDir = project / "build" / configuration;
    const fs::path app = releaseDir / (name + ".app");
    const fs::path partial = releaseDir / ("." + name + ".app.partial");
    std::error_code error;
    // Whatever fails, the half-made folder goes and the previous application stays.
    const auto failed = [&](const std::string& what) {
        std::error_code ignored;
        fs::remove_all(partial, ignored);
        return what + ": " + error.message();
    };
    fs::remove_all(partial, error);
    fs::create_directories(partial / "Contents" / "MacOS", error);
    if (!error)
        fs::create_directories(partial / "Contents" / "Resources", error);
    if (error)
        return failed("cannot create " + partial.string());
    const fs::path executable = partial / "Contents" / "MacOS" / name;
    fs::copy_file(runner, executable, fs::copy_options::overwrite_existing, error);
    if (error)
        return failed("cannot copy the runner to " + executable.string());
    fs::permissions(executable, fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec |
                                    fs::perms::others_read | fs::perms::others_exec, error);
    for (const std::string& source : sources) {
        // A hard link costs no new file on the disk; saving a source (the IDE saves by
        // replacing the file) leaves the application's link on the built text.
        const fs::path target = partial / "Contents" / "Resources" / source;
        fs::create_hard_link(project / source, target, error);
        if (error)
            fs::copy_file(project / source, target, fs::copy_options::overwrite_existing, error);
        if (error)
            return failed("cannot copy " + source);
    }
    // Replace the previous application only once the new one is complete.
    fs::remove_all(app, error);
    fs::rename(partial, app, error);
    if (error)
        return failed("cannot write " + app.string());
    return std::string();
}

std::string cleanProject(const fs::path& project) {
    std::error_code error;
    if (!fs::is_directory(project, error))
        return project.string() + " is not a folder";
    fs::remove_all(project / "build", error);
    return error ? error.message() : std::string();
}

}  // namespace klvr
