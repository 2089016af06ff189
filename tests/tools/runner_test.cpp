// Programs run in-process: what they print, and which runtime errors stop them at
// which line.
#include "tools/lang/diagnostic.h"
#include "tools/lang/interpreter.h"
#include "tools/lang/parser.h"

#include <gtest/gtest.h>

#include <QStringList>

#include <string>

namespace {

struct Outcome {
    QStringList output;
    std::string error;  // message of the runtime or compile error
    int line = 0;
};

// Bounded, so that endless loops and recursion end in their errors.
Outcome run(const std::string& text) {
    Outcome outcome;
    klvr::CompileContext context;
    context.unknownNamesAreErrors = false;
    try {
        const klvr::ClassUnit unit = klvr::compileClass(text, "Global.NSObject.klvr", context);
        klvr::Interpreter::Options options;
        options.maxSteps = 1000000;
        options.maxCallDepth = 500;
        options.maxBlockDepth = 20000;  // the test runs on the usual stack
        options.print = [&](const QString& line) { outcome.output << line; };
        klvr::Interpreter(unit, std::move(options)).run();
    } catch (const klvr::LanguageError& error) {
        outcome.error = error.diagnostic.message;
        outcome.line = error.diagnostic.line;
    }
    return outcome;
}

std::string program(const std::string& body, const std::string& more = "") {
    return "\nEvent AwakeFromNib()\n" + body + "End Event\n" + more;
}

struct RunnerCase {
    const char* name;
    std::string text;
    QStringList output;
    std::string error = "";  // "" when the program runs to its end
    int line = 0;
};

void PrintTo(const RunnerCase& c, std::ostream* out) { *out << c.name; }

class Runner : public ::testing::TestWithParam<RunnerCase> {};

TEST_P(Runner, PrintsItsLinesAndStopsAtTheFailingLine) {
    const RunnerCase& c = GetParam();
    const Outcome o = run(c.text);
    EXPECT_EQ(o.output, c.output);
    EXPECT_EQ(o.error, c.error);
    EXPECT_EQ(o.line, c.line);
}

// The string functions' calls shared by two rows below.
const std::string kStringCalls =
    "  Dim s As String = \"  Hello World  \"\n"
    "  Print(Len(s) & \"|\" & Trim(s) & \"|\" & UCase(\"abc\") & LCase(\"DeF\"))\n"
    "  Print(Left(\"abcdef\", 2) & \"|\" & Right(\"abcdef\", 2) & \"|\" & Left(\"ab\", 10) & \"|\" & Left(\"ab\", -1) & \"|\")\n"
    "  Print(Mid(\"abcdef\", 2) & \"|\" & Mid(\"abcdef\", 1, 3) & \"|\" & Mid(\"abc\", 9, 2) & \"|\" & Mid(\"abc\", -4, 2))\n"
    "  Print(InStr(\"Hello\", \"l\") & \" \" & InStr(\"Hello\", \"l\", 3) & \" \" & InStr(\"Hello\", \"z\") & \" \" & InStr(\"Hello\", \"L\", 0, False) & \" \" & InStr(\"Hello\", \"L\"))\n"
    "  Print(Val(\" 12abc\") + 1 & \" \" & Val(\"2.5e1\") & \" \" & Val(\"x\") & \" \" & Str(1.5) & \" \" & Val(\"-7\"))\n";
const QStringList kStringLines = {"15|Hello World|ABCdef", "ab|ef|ab||", "cdef|bcd||ab", "2 3 -1 2 -1", "13 25 0 1.5 -7"};

INSTANTIATE_TEST_SUITE_P(
    Table, Runner,
    ::testing::Values(
        RunnerCase{"NewProjectPrintsHello", "\nEvent AwakeFromNib()\n  Alert(\"Hello\")\nEnd Event\n", {"Hello"}},
        RunnerCase{"FibonacciRecursiveAndIterative",
                   program("  Dim i As Integer\n"
                           "  For i = 0 To 12 Step 4\n"
                           "    Print(Str(i) + \": \" + Str(Fib(i)) + \" \" + Str(FibLoop(i)))\n"
                           "  Next\n"
                           "  Print(FibLoop(90))\n",
                           "Function Fib(n As Integer) As Integer\n"
                           "  If n < 2 Then Return n\n"
                           "  Return Fib(n - 1) + Fib(n - 2)\n"
                           "End Function\n"
                           "Function FibLoop(n As Integer) As Integer\n"
                           "  Dim a As Integer = 0, b As Integer = 1, t As Integer\n"
                           "  While n > 0\n"
                           "    t = a + b\n    a = b\n    b = t\n    n = n - 1\n"
                           "  Wend\n"
                           "  Return a\n"
                           "End Function\n"),
                   {"0: 0 0", "4: 3 3", "8: 21 21", "12: 144 144", "2880067194370816120"}},
        RunnerCase{"StringFunctionsAndTheirEdges",
                   program(kStringCalls + "  Print(\"say \"\"hi\"\"\" & \"\xc3\xa9\" & Len(\"\xc3\xa9\"))\n"),
                   kStringLines + QStringList{QString::fromUtf8("say \"hi\"\xc3\xa9" "1")}},
        // The concatenation ends at the comment: the next line is a statement of its own.
        RunnerCase{"CommentEndsTheStatement", program(kStringCalls + "  Print(\"say \"\"hi\"\"\" & 'comment\n  \"\")\n"), {},
                   "Expression expected", 9},
        RunnerCase{"ArithmeticAndConversions",
                   program("  Dim n As Integer = 7.5\n"
                           "  Dim d As Double = 7\n"
                           "  Dim b As Boolean = 3\n"
                           "  Dim t As String = 12\n"
                           "  Print(n & \" \" & d / 2 & \" \" & 7 \\ 2 & \" \" & -7 Mod 3 & \" \" & 2 ^ 10 & \" \" & b & \" \" & t + 1)\n"
                           "  Print(1 + 2 * 3 - -1 & \" \" & (1 + 2) * 3 & \" \" & (5 > 3 And 2 > 1) & \" \" & Not True & \" \" & (1 = 1.0))\n"
                           "  Print(\"a\" < \"b\" Or 1 / 0 = 1)\n"  // Or stops before dividing by zero
                           "  Dim v\n  Print((v Is Nil) & (0 Is Nil) & (Nil Is Nil) & (2 Is 2))\n"
                           "  Try\n    Print(\"try\")\n  Catch e\n    Print(\"catch\")\n  Finally\n    Print(\"finally\")\n  End Try\n"),
                   {"8 3.5 3 -1 1024 True 121", "8 9 True False True", "True", "TrueFalseTrueTrue", "try", "finally"}},
        RunnerCase{"ControlFlow",
                   program("  Dim i As Integer, s As String\n"
                           "  For i = 10 To 1 Step -3\n    s = s & i & \",\"\n  Next\n"
                           "  Print(s & \" after \" & i)\n"
                           "  For i = 1 To 100\n    If i = 4 Then Exit For\n  Next\n"
                           "  Print(i)\n"
                           "  For x = 0.5 To 1.6 Step 0.5\n    Print(x)\n  Next\n"
                           "  Do\n    i = i - 1\n  Loop Until i <= 0\n"
                           "  Do While i < 3\n    i = i + 1\n    If i = 2 Then Exit Do\n  Loop\n"
                           "  Print(i)\n"
                           "  If i = 1 Then\n    Print(\"one\")\n  ElseIf i = 2 Then\n    Print(\"two\")\n  Else\n    Print(\"many\")\n  End If\n"
                           "  Select Case \"b\"\n    Case \"a\"\n      Print(\"A\")\n    Case \"b\", \"c\"\n      Print(\"B or C\")\n  End Select\n"
                           "  Select Case 42\n    Case 1 To 9\n      Print(\"small\")\n    Case Is > 40\n      Print(\"big\")\n    Case Else\n      Print(\"?\")\n  End Select\n"
                           "  Print(Sign(-5) & Sign(0) & Sign(9))\n"
                           "  Count 3\n"
                           "  End\n"
                           "  Print(\"not reached\")\n",
                           "Function Sign(n As Integer) As String\n"
                           "  If n < 0 Then\n    Return \"-\"\n  Else If n = 0 Then\n    Return \"0\"\n  End If\n  Return \"+\"\n"
                           "End Function\n"
                           "Sub Count(n As Integer, Optional prefix As String = \"#\")\n"
                           "  While True\n    If n = 0 Then Exit Sub\n    Print(prefix & n)\n    n = n - 1\n  Wend\n"
                           "End Sub\n"),
                   {"10,7,4,1, after -2", "4", "0.5", "1", "1.5", "2", "two", "B or C", "big", "-0+", "#3", "#2", "#1"}},
        // The caller has fewer locals than the callee's slot of `a`: a default read from
        // the wrong frame would not even be inside it.
        RunnerCase{"DefaultValuesSeeTheParametersBeforeThem",
                   program("  Show 5\n  Show 5, 1\n", "Sub Show(a As Integer, Optional b As Integer = a * 2)\n  Print(a + b)\nEnd Sub\n"),
                   {"15", "6"}},
        RunnerCase{"FieldsGetTheirStartValuesBeforeTheFirstEvent",
                   "Dim greeting As String = \"hi \" & Name()\nConst LIMIT = 3\nDim counter As Integer\n" +
                       program("  counter = counter + LIMIT\n  Bump\n  Print(greeting & counter)\n",
                               "Function Name() As String\n  Return \"there\"\nEnd Function\n"
                               "Sub Bump()\n  counter = counter * 2\nEnd Sub\n"),
                   {"hi there6"}},
        RunnerCase{"UnsupportedCodeThatIsNotReachedDoesNotStopTheProgram",
                   program("  If False Then\n    NSApp.terminate Nil\n  End If\n  Print(\"done\")\n"), {"done"}},
        RunnerCase{"ProgramWithoutAwakeFromNibRunsOnlyItsStartValues",
                   "Dim x As Integer = Show()\nFunction Show() As Integer\n  Print(\"start\")\n  Return 1\nEnd Function\n", {"start"}},
        RunnerCase{"DivisionByZero", program("  Dim z As Integer\n  Print(1)\n  Print(5 \\ z)\n"), {"1"}, "Division by zero", 5},
        RunnerCase{"MismatchAfterCall", program("  Print(Seven() - \"x\")\n", "Function Seven() As Integer\n  Return 7\nEnd Function\n"), {},
                   "Type mismatch", 3},
        RunnerCase{"ErrorInsideCallee", program("  Print(Bad())\n", "Function Bad() As Integer\n  Dim b As Boolean\n  Return -b\nEnd Function\n"),
                   {}, "Type mismatch", 7},
        RunnerCase{"WrongArgumentCount", program("  Two 1\n", "Sub Two(a, b)\nEnd Sub\n"), {}, "Wrong number of arguments for Two", 3},
        RunnerCase{"BuiltinArgumentCount", program("  Print(Left(\"x\"))\n"), {}, "Wrong number of arguments for Left", 3},
        RunnerCase{"EndlessRecursion", program("  Forever 1\n", "Sub Forever(n As Integer)\n  Forever n + 1\nEnd Sub\n"), {},
                   "Too many nested calls", 6},
        RunnerCase{"EndlessLoopHitsTheStepLimit", program("  While True\n  Wend\n"), {}, "Step limit reached", 3},
        RunnerCase{"ObjectMembersFailWhenReached", program("  Print(\"before\")\n  NSApp.terminate Nil\n"), {"before"},
                   "NSApp is not supported by the runner", 4},
        RunnerCase{"LibraryNameFailsWhenReached", program("  Print(1)\n  NSApp = 2\n"), {"1"}, "NSApp is not supported by the runner", 4},
        RunnerCase{"ConversionOverflow", program("  Dim n As Integer = 1e300\n"), {}, "Overflow", 3}),
    [](const ::testing::TestParamInfo<RunnerCase>& info) { return std::string(info.param.name); });

}  // namespace
