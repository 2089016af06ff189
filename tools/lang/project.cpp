#include "tools/lang/project.h"

#include "tools/lang/interpreter.h"
#include "tools/lang/lexer.h"
#include "tools/lang/parser.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <cstdio>
#include <fstream>
#include <functional>
#include <unordered_map>
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

namespace {

// The lower-case class and superclass of a file named <Class>.<SuperClass>.klvr.
std::string classOfFile(const std::string& name) { return lowerName(name.substr(0, name.find('.'))); }

std::string superclassOfFile(const std::string& name) {
    const std::size_t last = name.rfind('.');
    if (last == std::string::npos || last == 0)
        return std::string();
    const std::size_t before = name.rfind('.', last - 1);
    if (before == std::string::npos || before < name.find('.'))
        return std::string();
    return lowerName(name.substr(before + 1, last - before - 1));
}

// The sources of a project read into memory, with the shape of every class.
struct LoadedProject {
    std::vector<std::optional<std::string>> texts;
    std::vector<std::string> readErrors;
    std::unordered_set<std::string> classes;
    std::unordered_map<std::string, ClassShape> shapes;
    std::unordered_map<std::string, std::size_t> fileOfClass;
    std::optional<Diagnostic> error;  // a class deriving from itself

    const ClassShape* superclassOf(const std::string& fileName) const {
        const std::string super = superclassOfFile(fileName);
        if (super == classOfFile(fileName))
            return nullptr;
        const auto found = shapes.find(super);
        return found == shapes.end() ? nullptr : &found->second;
    }
};

// Runs work(i) for every i below count on up to four threads.
void forEachIndex(std::size_t count, const std::function<void(std::size_t)>& work) {
    std::atomic<std::size_t> next{0};
    const auto worker = [&] {
        for (std::size_t i = next.fetch_add(1); i < count; i = next.fetch_add(1))
            work(i);
    };
    const std::size_t threads = std::min<std::size_t>({std::max(1u, std::thread::hardware_concurrency()), 4, count});
    std::vector<std::thread> pool;
    for (std::size_t t = 1; t < threads; ++t)
        pool.emplace_back(worker);
    worker();
    for (std::thread& thread : pool)
        thread.join();
}

// The class names of the sources, and each file's own members (in parallel).
std::vector<ClassShape> ownShapes(LoadedProject& project, const std::vector<std::string>& sources) {
    for (std::size_t i = 0; i < sources.size(); ++i) {
        const std::string cls = classOfFile(sources[i]);
        project.classes.insert(cls);
        project.fileOfClass.emplace(cls, i);
    }
    std::vector<ClassShape> own(sources.size());
    forEachIndex(sources.size(), [&](std::size_t i) {
        const auto& text = project.texts[i];
        own[i] = classShape(text ? std::string_view(*text) : std::string_view(), sources[i], nullptr);
    });
    return own;
}

// Puts each class behind its superclass's shape; `own` is used up.
void linkShapes(LoadedProject& project, const std::vector<std::string>& sources, std::vector<ClassShape>& own) {
    project.shapes.clear();
    project.error.reset();
    std::vector<char> state(sources.size(), 0);  // 0 not yet, 1 in progress, 2 done
    const std::function<void(std::size_t)> shape = [&](std::size_t i) {
        if (state[i] == 2 || project.error)
            return;
        if (state[i] == 1) {
            project.error = Diagnostic{"Class " + sources[i].substr(0, sources[i].find('.')) + " derives from itself", 1, sources[i]};
            return;
        }
        state[i] = 1;
        const auto parent = project.fileOfClass.find(superclassOfFile(sources[i]));
        if (parent != project.fileOfClass.end() && parent->second != i)
            shape(parent->second);
        if (project.error)
            return;
        ClassShape& mine = own[i];
        if (const ClassShape* super = project.superclassOf(sources[i])) {
            mine.ancestors.insert(mine.ancestors.begin(), super->ancestors.begin(), super->ancestors.end());
            mine.ancestors.insert(mine.ancestors.begin(), super->name);
            // The fields a class declares again keep the superclass's slot.
            std::vector<std::pair<std::string, bool>> fields = super->fields;
            for (auto& field : mine.fields)
                if (std::none_of(fields.begin(), fields.end(), [&](const auto& f) { return f.first == field.first; }))
                    fields.push_back(std::move(field));
            mine.fields = std::move(fields);
            for (const auto& [name, isPublic] : super->methods)
                mine.methods.emplace(name, isPublic);
        }
        project.shapes[classOfFile(sources[i])] = std::move(mine);
        state[i] = 2;
    };
    for (std::size_t i = 0; i < sources.size(); ++i)
        shape(i);
}

// Makes the shapes of the classes whose texts are in `project`: each file's own members
// in parallel, then each class put behind its superclass's.
void shapeProject(LoadedProject& project, const std::vector<std::string>& sources) {
    std::vector<ClassShape> own = ownShapes(project, sources);
    linkShapes(project, sources, own);
}

LoadedProject loadProject(const fs::path& folder, const std::vector<std::string>& sources) {
    LoadedProject project;
    project.texts.resize(sources.size());
    project.readErrors.resize(sources.size());
    forEachIndex(sources.size(), [&](std::size_t i) { project.texts[i] = readSource(folder / sources[i], project.readErrors[i]); });
    shapeProject(project, sources);
    return project;
}

std::optional<Diagnostic> runLoaded(const LoadedProject& loaded, const std::vector<std::string>& sources,
                                    Interpreter::Options options) {
    if (loaded.error)
        return loaded.error;
    // The checker has vetted the names at build time; the runner only fails on the
    // ones it cannot run when it reaches them.
    try {
        std::vector<ClassUnit> units;
        units.reserve(sources.size());
        for (std::size_t i = 0; i < sources.size(); ++i) {
            if (!loaded.texts[i])
                return Diagnostic{loaded.readErrors[i], 1, sources[i]};
            CompileContext context;
            context.unknownNamesAreErrors = false;
            context.projectClasses = &loaded.classes;
            context.global = &loaded.shapes.at("global");
            context.superclass = loaded.superclassOf(sources[i]);
            context.classes = &loaded.shapes;
            units.push_back(compileClass(*loaded.texts[i], sources[i], context));
        }
        std::vector<const ClassUnit*> program;
        for (const ClassUnit& unit : units)
            program.push_back(&unit);
        Interpreter interpreter(program, std::move(options));
        interpreter.run();
    } catch (const LanguageError& failure) {
        return failure.diagnostic;
    }
    return std::nullopt;
}

}  // namespace

namespace {

// Checks the file `index` of a loaded project; returns its line count, or sets `error`.
std::size_t checkLoadedFile(const LoadedProject& loaded, const std::vector<std::string>& sources, std::size_t index,
                            const Vocabulary& vocabulary, std::optional<Diagnostic>& error) {
    const std::string& name = sources[index];
    const auto& text = loaded.texts[index];
    if (!text) {
        error = Diagnostic{loaded.readErrors[index], 1, name};
        return 0;
    }
    CompileContext context;
    context.vocabulary = &vocabulary;
    context.projectClasses = &loaded.classes;
    context.global = &loaded.shapes.at("global");
    context.superclass = loaded.superclassOf(name);
    context.classes = &loaded.shapes;
    try {
        compileClass(*text, name, context);
    } catch (const LanguageError& failure) {
        error = failure.diagnostic;
    }
    return countLines(*text);
}

}  // namespace

CheckSummary checkProject(const fs::path& project, const std::vector<std::string>& sources, const Vocabulary& vocabulary) {
    CheckSummary summary;
    if (sources.empty() || !endsWith(sources.front(), kGlobalFileName)) {
        summary.error = Diagnostic{std::string(kGlobalFileName) + " missing", 1, kGlobalFileName};
        return summary;
    }
    const LoadedProject loaded = loadProject(project, sources);

    // Checks one file; returns its line count, or sets `error`.
    const auto checkOne = [&](std::size_t index, std::optional<Diagnostic>& error) -> std::size_t {
        return checkLoadedFile(loaded, sources, index, vocabulary, error);
    };

    // The Global file first.
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
    if (loaded.error) {
        summary.error = loaded.error;
        return summary;
    }
    summary.files = count;
    for (std::size_t n : lines)
        summary.lines += n;
    return summary;
}

std::optional<Diagnostic> checkSourceText(const fs::path& project, const std::string& fileName, const std::string& text,
                                          const Vocabulary& vocabulary) {
    std::vector<std::string> sources = listSourceFiles(project);
    auto found = std::find(sources.begin(), sources.end(), fileName);
    if (found == sources.end())
        found = sources.insert(sources.end(), fileName);
    const std::size_t index = static_cast<std::size_t>(found - sources.begin());
    std::vector<SourceText> files(sources.size());
    forEachIndex(sources.size(), [&](std::size_t i) {
        files[i].name = sources[i];
        std::string unreadable;
        files[i].text = i == index ? text : readSource(project / sources[i], unreadable).value_or(std::string());
    });
    return checkSourceOf(files, index, vocabulary);
}

std::optional<Diagnostic> runFolder(const fs::path& folder, std::int64_t maxSteps, std::function<void(const QString&)> print) {
    const std::vector<std::string> sources = listSourceFiles(folder);
    if (sources.empty() || !endsWith(sources.front(), kGlobalFileName))
        return Diagnostic{std::string(kGlobalFileName) + " missing", 1, kGlobalFileName};
    Interpreter::Options options;
    options.maxSteps = maxSteps;
    options.print = print ? std::move(print) : [](const QString& line) {
        const QByteArray bytes = line.toUtf8();
        std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout);
        std::fputc('\n', stdout);
    };
    return runLoaded(loadProject(folder, sources), sources, std::move(options));
}

std::optional<Diagnostic> runSources(const std::vector<SourceText>& files, Interpreter::Options options) {
    if (files.empty() || files.front().name != kGlobalFileName)
        return Diagnostic{std::string(kGlobalFileName) + " missing", 1, kGlobalFileName};
    LoadedProject project;
    std::vector<std::string> sources;
    for (const SourceText& file : files) {
        sources.push_back(file.name);
        project.texts.emplace_back(file.text);
        project.readErrors.emplace_back();
    }
    shapeProject(project, sources);
    return runLoaded(project, sources, std::move(options));
}

struct ProjectChecker::State {
    LoadedProject project;
    std::vector<std::string> sources;
    std::vector<ClassShape> own;  // each file's own members, before linking
};

ProjectChecker::ProjectChecker(std::vector<SourceText> files) : state_(std::make_unique<State>()) {
    for (SourceText& file : files) {
        state_->sources.push_back(std::move(file.name));
        state_->project.texts.emplace_back(std::move(file.text));
        state_->project.readErrors.emplace_back();
    }
    state_->own = ownShapes(state_->project, state_->sources);
}

ProjectChecker::~ProjectChecker() = default;

std::size_t ProjectChecker::size() const { return state_->sources.size(); }

const std::string& ProjectChecker::name(std::size_t index) const { return state_->sources.at(index); }

void ProjectChecker::setText(std::size_t index, std::string text) {
    if (index >= state_->sources.size())
        return;
    state_->own[index] = classShape(text, state_->sources[index], nullptr);
    state_->project.texts[index] = std::move(text);
}

std::optional<Diagnostic> ProjectChecker::check(std::size_t index, const Vocabulary& vocabulary) const {
    if (state_->sources.empty() || state_->sources.front() != kGlobalFileName)
        return Diagnostic{std::string(kGlobalFileName) + " missing", 1, kGlobalFileName};
    if (index >= state_->sources.size())
        return std::nullopt;
    // Linking uses up its copies of the own shapes; the originals stay for the next check.
    std::vector<ClassShape> own = state_->own;
    LoadedProject& project = state_->project;
    linkShapes(project, state_->sources, own);
    std::optional<Diagnostic> error;
    checkLoadedFile(project, state_->sources, index, vocabulary, error);
    if (!error && project.error && project.error->file == state_->sources[index])
        error = project.error;
    return error;
}

std::optional<Diagnostic> checkSourceOf(const std::vector<SourceText>& files, std::size_t index,
                                        const Vocabulary& vocabulary) {
    return ProjectChecker(files).check(index, vocabulary);
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
