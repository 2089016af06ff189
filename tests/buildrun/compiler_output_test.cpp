// Cutting a compiler error line into message, file and line, and recognising failures
// of the platform compiler in standard output.
#include "buildrun/compiler_output.h"

#include <gtest/gtest.h>

namespace {
struct CutCase {
    const char* name;
    const char* chunk;
    CompilerError expected;
};

const CutCase kCuts[] = {
    {"Plain", "Kelvaro: Syntax error in line 7 in file code.NSObject.klvr\n",
     {"Syntax error in line 7 in file code.NSObject.klvr", "Syntax error", "code.NSObject.klvr", 7}},
    {"OnlyTheFirstLineCounts",
     "Kelvaro: A in line 1 in file a.klvr\nKelvaro: B in line 2 in file b.klvr\n",
     {"A in line 1 in file a.klvr", "A", "a.klvr", 1}},
    {"FileWithBlanksAndDots", "Kelvaro: End If expected before Sub Paint in line 120 in file My Window.NSWindow.klvr\n",
     {"End If expected before Sub Paint in line 120 in file My Window.NSWindow.klvr",
      "End If expected before Sub Paint", "My Window.NSWindow.klvr", 120}},
    {"CarriageReturnBeforeTheLineBreak", "Kelvaro: X in line 3 in file a.klvr\r\n",
     {"X in line 3 in file a.klvr", "X", "a.klvr", 3}},
    {"NoLineBreakEndsTheFileAtTheEnd", "Kelvaro: X in line 3 in file a.klvr",
     {"X in line 3 in file a.klvr", "X", "a.klvr", 3}},
    {"NoFile", "Kelvaro: Global.NSObject.klvr missing\n", {"Global.NSObject.klvr missing", "Global.NSObject.klvr missing", "", 0}},
    {"LineWithoutFile", "Kelvaro: X in line 12\n", {"X in line 12", "X", "", 12}},
    {"FileWithoutLine", "Kelvaro: X in file a.klvr\n", {"X in file a.klvr", "X", "a.klvr", 0}},
    {"LineThatIsNoNumber", "Kelvaro: X in line many in file a.klvr\n", {"X in line many in file a.klvr", "X", "a.klvr", 0}},
    {"MessageMentioningAFile", "Kelvaro: Unknown identifier file in line 4 in file b.klvr\n",
     {"Unknown identifier file in line 4 in file b.klvr", "Unknown identifier file", "b.klvr", 4}},
    {"OnlyThePrefix", "Kelvaro:", {"", "", "", 0}},
};

class CuttingAnError : public ::testing::TestWithParam<CutCase> {};

TEST_P(CuttingAnError, GivesMessageFileAndLine) {
    const CutCase& c = GetParam();
    const CompilerError got = cutCompilerError(QString::fromUtf8(c.chunk));
    EXPECT_EQ(got.text, c.expected.text);
    EXPECT_EQ(got.message, c.expected.message);
    EXPECT_EQ(got.file, c.expected.file);
    EXPECT_EQ(got.line, c.expected.line);
}

INSTANTIATE_TEST_SUITE_P(Table, CuttingAnError, ::testing::ValuesIn(kCuts),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(PlatformCompilerFailure, IsRecognisedByItsMarkersWithMatchingCase) {
    const std::pair<const char*, bool> cases[] = {
        {"2 errors generated.\n", true},      {"1 error generated.\n", true},
        {"clang: error: linker failed\n", true}, {"Clang: Error: x\n", false},
        {"2 Errors Generated.\n", false},     {"Build succeeded (Release)\n", false},
        {"errors generated\n", false},        {"", false}};
    for (const auto& [chunk, failed] : cases)
        EXPECT_EQ(showsPlatformCompilerFailure(QString::fromUtf8(chunk)), failed) << chunk;
}
} // namespace
