// In-process timings of the checker (one 1,000-line class, as the project generator
// writes them) and of the runner (a counting loop). Compare the checker's lines per
// second with `ctags -R` on a generated project (see docs/PERFORMANCE.md).
#include "tools/lang/interpreter.h"
#include "tools/lang/parser.h"
#include "tools/lang/vocabulary.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

std::string generatedClass(int lines) {
    std::string text = "' generated\nDim counter As Integer\nDim label As String\n\n";
    int n = 4, k = 0;
    while (n + 30 < lines) {
        const std::string id = std::to_string(k++);
        text += "Public Function Compute" + id + "(a As Integer, b As Integer) As Integer\n"
                "  Dim total As Integer = 0\n  Dim text As String = \"value: \"\n"
                "  For i = a To b Step 1\n    If i Mod 3 = 0 Then\n      total = total + i * 2\n"
                "    Else If i Mod 5 = 0 Then\n      total = total - 1\n    Else\n"
                "      total = total + Len(text) + counter\n    End If\n  Next\n"
                "  While total > 1000\n    total = total \\ 2\n  Wend\n"
                "  text = text & Str(total) + Left(\"abcdef\", 3)\n  Helper" + id + " total, text\n"
                "  Return total\nEnd Function\n\nSub Helper" + id + "(n As Integer, s As String)\n"
                "  Select Case n\n    Case 1, 2\n      counter = counter + n\n    Case Else\n"
                "      label = UCase(s) + Mid(s, 1, 2)\n  End Select\nEnd Sub\n\n";
        n += 30;
    }
    return text;
}

void BM_CheckClass(benchmark::State& state) {
    const std::string text = generatedClass(static_cast<int>(state.range(0)));
    const klvr::Vocabulary vocabulary;
    klvr::CompileContext context;
    context.vocabulary = &vocabulary;
    for (auto _ : state)
        benchmark::DoNotOptimize(klvr::compileClass(text, "c.NSObject.klvr", context));
    state.SetItemsProcessed(state.iterations() * state.range(0));  // lines
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(BM_CheckClass)->Arg(1000);

void BM_RunCountingLoop(benchmark::State& state) {
    const std::string text = "\nEvent AwakeFromNib()\n  Dim s As Integer\n  For i = 1 To " + std::to_string(state.range(0)) +
                             "\n    s = s + i Mod 7\n  Next\nEnd Event\n";
    klvr::CompileContext context;
    const klvr::ClassUnit unit = klvr::compileClass(text, "Global.NSObject.klvr", context);
    for (auto _ : state) {
        klvr::Interpreter interpreter(unit, {});
        interpreter.run();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));  // iterations of the loop
}
BENCHMARK(BM_RunCountingLoop)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
