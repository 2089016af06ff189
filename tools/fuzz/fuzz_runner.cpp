// Compiles arbitrary bytes as a Global class and runs it with a step limit, so that
// endless loops end; runtime errors are expected, crashes and sanitizer reports not.
#include "tools/lang/diagnostic.h"
#include "tools/lang/interpreter.h"
#include "tools/lang/parser.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    klvr::CompileContext context;
    context.unknownNamesAreErrors = false;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    try {
        const klvr::ClassUnit unit = klvr::compileClass(text, "Global.NSObject.klvr", context);
        klvr::Interpreter::Options options;
        options.maxSteps = 20000;
        options.maxCallDepth = 20;
        options.maxBlockDepth = 1000;  // the fuzzer's stack is the usual one
        options.print = [](const QString& line) { (void)line.size(); };
        klvr::Interpreter interpreter(unit, std::move(options));
        interpreter.run();
    } catch (const klvr::LanguageError& error) {
        if (error.diagnostic.line < 0 || error.diagnostic.message.empty())
            __builtin_trap();
    }
    return 0;
}
