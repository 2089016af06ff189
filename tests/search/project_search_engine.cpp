// The project search engine on one file's bytes: lines, columns, letter case, comment
// lines, encodings and files that are not text.
#include "search/project_search.h"

#include <gtest/gtest.h>

using project_search::Options;

namespace {

struct EngineCase {
    const char* name;
    QByteArray bytes;
    QString needle;
    Options options;
    QStringList expected; // "LINE:COLUMN:TEXT", COLUMN 0-based
};

QStringList found(const project_search::FileMatches& file) {
    QStringList rows;
    for (const project_search::Match& m : file.matches)
        rows << QStringLiteral("%1:%2:%3").arg(m.line).arg(m.column).arg(m.lineText);
    return rows;
}

class Engine : public ::testing::TestWithParam<EngineCase> {};

TEST_P(Engine, ListsEveryOccurrenceWithItsLine) {
    const EngineCase& c = GetParam();
    EXPECT_EQ(found(project_search::searchBytes(c.bytes, c.needle, c.options)), c.expected);
}

const Options kCase{false, false}, kNoCase{true, false}, kSkipComments{false, true};

INSTANTIATE_TEST_SUITE_P(
    Cases, Engine,
    ::testing::Values(
        EngineCase{"TwoOnOneLineShareTheLine", "x\nDim a, Dim b\n", "Dim", kCase, {"2:0:Dim a, Dim b", "2:7:Dim a, Dim b"}},
        EngineCase{"OverlappingOccurrences", "aaaa", "aa", kCase, {"1:0:aaaa", "1:1:aaaa", "1:2:aaaa"}},
        EngineCase{"LastLineWithoutLineBreak", "a\n\nend foo", "foo", kCase, {"3:4:end foo"}},
        EngineCase{"CaseMatters", "Dim dim\n", "dim", kCase, {"1:4:Dim dim"}},
        EngineCase{"CaseIgnored", "Dim dim\n", "DIM", kNoCase, {"1:0:Dim dim", "1:4:Dim dim"}},
        EngineCase{"KelvinSignFoldsToK", "\xe2\x84\xaa" "ey\n", "key", kNoCase, {"1:0:\u212Aey"}},
        EngineCase{"NonAsciiNeedleIgnoringCase", "\xc3\x89" "cole \xc3\xa9" "cole", "\u00e9COLE", kNoCase,
                   {"1:0:\u00c9cole \u00e9cole", "1:6:\u00c9cole \u00e9cole"}},
        EngineCase{"ColumnsCountUtf16Units", "\xc3\xa9\xf0\x9f\x98\x80x foo", "foo", kCase,
                   {"1:5:\u00e9\U0001F600x foo"}},
        EngineCase{"Windows1252File", "caf\xe9 foo\n", "foo", kCase, {"1:5:caf\u00e9 foo"}},
        EngineCase{"Windows1252NeedleBeyondAscii", "caf\xe9 foo\n", "\u00e9 f", kCase, {"1:3:caf\u00e9 foo"}},
        EngineCase{"ByteOrderMarkIsNotText", "\xef\xbb\xbf" "foo", "foo", kCase, {"1:0:foo"}},
        EngineCase{"CrLfLinesShowWithoutTheirEnd", "a\r\nfoo\r\n", "foo", kCase, {"2:0:foo"}},
        EngineCase{"CommentLinesSkipped", " \t' foo\nx = 1 ' foo\n'foo", "foo", kSkipComments, {"2:8:x = 1 ' foo"}},
        EngineCase{"CommentLinesKeptWithoutTheOption", "' foo\n", "foo", kCase, {"1:2:' foo"}},
        EngineCase{"BinaryFileIsNotSearched", QByteArray("foo\0foo", 7), "foo", kCase, {}},
        EngineCase{"EmptyNeedleFindsNothing", "abc", "", kCase, {}},
        EngineCase{"NeedleWithLineBreakFindsNothing", "a\nb", "a\nb", kCase, {}}),
    [](const ::testing::TestParamInfo<EngineCase>& info) { return std::string(info.param.name); });

TEST(EngineFiles, StatesAndTheIdesFileOrder) {
    EXPECT_EQ(project_search::searchBytes(QByteArray("a\0", 2), "a", {}).state, project_search::FileState::Binary);
    EXPECT_EQ(project_search::sourceFiles({"a.NSObject.klvr", "b.txt", "Global.NSObject.klvr", "c.NSObject.klvr"}),
              (QStringList{"Global.NSObject.klvr", "a.NSObject.klvr", "c.NSObject.klvr"}));
    const auto files = project_search::search("/nonexistent-folder", {"x.klvr"}, "a", {});
    ASSERT_EQ(files.size(), 1);
    EXPECT_EQ(files[0].state, project_search::FileState::Unreadable);
    EXPECT_FALSE(project_search::problemWith("").isEmpty());
    EXPECT_FALSE(project_search::problemWith("a\rb").isEmpty());
    EXPECT_TRUE(project_search::problemWith("a b").isEmpty());
}

TEST(EngineFiles, TenMegabyteLineWithManyOccurrencesSharesOneLineText) {
    QByteArray line(10 << 20, 'x');
    for (int i = 0; i < 1000; ++i)
        line.replace(i * 10000, 3, "foo");
    const auto file = project_search::searchBytes(line + "\nfoo", "foo", {});
    ASSERT_EQ(file.matches.size(), 1001);
    EXPECT_EQ(file.matches[999].column, 9990000);
    EXPECT_TRUE(file.matches[0].lineText.isSharedWith(file.matches[999].lineText));
    EXPECT_EQ(file.matches[1000].line, 2);
}

} // namespace
