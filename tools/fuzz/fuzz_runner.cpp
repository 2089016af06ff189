// Runs arbitrary bytes as a program with a step limit, so that endless loops end;
// runtime errors are expected, crashes and sanitizer reports not. A line starting
// with '== begins another class file, named by the rest of that line when it reads
// as <Class>.<SuperClass>.klvr, so programs of several classes, derived classes and
// cycles of inheritance come out of mutation too.
#include "tools/lang/diagnostic.h"
#include "tools/lang/objects.h"
#include "tools/lang/project.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

bool isClassFileName(std::string_view name) {
    const std::size_t first = name.find('.'), last = name.rfind('.');
    if (first == 0 || first == std::string_view::npos || first == last || name.substr(last) != ".klvr")
        return false;
    for (char c : name)
        if (!(std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '.'))
            return false;
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool budget = [] {
        klvr::setCollectionBudget(std::size_t{64} << 20);  // far below the fuzzer's memory limit
        return true;
    }();
    (void)budget;
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    std::vector<klvr::SourceText> files{{"Global.NSObject.klvr", std::string()}};
    std::size_t pos = 0;
    while (pos <= input.size()) {
        const std::size_t end = std::min(input.find('\n', pos), input.size());
        const std::string_view line = input.substr(pos, end - pos);
        if (line.substr(0, 3) == "'==") {
            std::string name(line.substr(3));
            if (!isClassFileName(name))
                name = "C" + std::to_string(files.size()) + ".NSObject.klvr";
            files.push_back({name, std::string()});
        } else {
            files.back().text.append(line).push_back('\n');
        }
        pos = end + 1;
    }
    klvr::Interpreter::Options options;
    options.maxSteps = 20000;
    options.maxCallDepth = 20;
    options.maxBlockDepth = 1000;  // the fuzzer's stack is the usual one
    options.print = [](const QString& line) { (void)line.size(); };
    try {
        const auto error = klvr::runSources(files, std::move(options));
        if (error && (error->line < 0 || error->message.empty()))
            __builtin_trap();
    } catch (const klvr::LanguageError& error) {
        if (error.diagnostic.line < 0 || error.diagnostic.message.empty())
            __builtin_trap();
    }
    return 0;
}
