// Feeds arbitrary bytes to the checker as one class file. Every input must end in a
// compiled class or a LanguageError; anything else (a crash, a sanitizer report, a
// hang) is a finding.
#include "tools/lang/diagnostic.h"
#include "tools/lang/parser.h"
#include "tools/lang/vocabulary.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const klvr::Vocabulary vocabulary;
    static const std::unordered_set<std::string> globalPublics = {"shared", "counter"};
    klvr::CompileContext context;
    context.vocabulary = &vocabulary;
    context.globalPublics = &globalPublics;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    try {
        klvr::compileClass(text, "Fuzz.NSObject.klvr", context);
    } catch (const klvr::LanguageError& error) {
        if (error.diagnostic.line < 1 || error.diagnostic.message.empty())
            __builtin_trap();  // every error names a line and says something
    }
    klvr::publicMemberNames(text);
    return 0;
}
