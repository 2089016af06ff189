// The find engine over plain text: table-driven, one row per situation.
#include "editor/find_engine.h"

#include <gtest/gtest.h>

namespace {

enum class Op { Forward, Backward };

struct FindRow {
    const char* name;
    QString text;
    QString needle;
    Op op;
    qint64 from; // forward: search from; backward: search before
    FindScope scope;
    bool ignoreCase;
    qint64 expectedStart; // -1: not found
};

} // namespace

class FindEngineTable : public ::testing::TestWithParam<FindRow> {};

TEST_P(FindEngineTable, FindsWhatItShould) {
    const FindRow& row = GetParam();
    const FindMatch m = row.op == Op::Forward
                            ? find_engine::findForward(row.text, row.needle, row.from, row.scope, row.ignoreCase)
                            : find_engine::findBackward(row.text, row.needle, row.from, row.scope, row.ignoreCase);
    EXPECT_EQ(m.start, row.expectedStart) << row.name;
    if (m.found()) {
        EXPECT_EQ(m.length, row.needle.size());
        EXPECT_LE(m.end(), row.scope.end < 0 ? row.text.size() : row.scope.end) << "match leaves the scope";
    }
}

const QString abc = QStringLiteral("abc ABC abc");
const QString umlauts = QStringLiteral("Größe 😀 größe GRÖSSE");

INSTANTIATE_TEST_SUITE_P(
    Rows, FindEngineTable,
    ::testing::Values(
        FindRow{"next after start", abc, "abc", Op::Forward, 1, {}, false, 8},
        FindRow{"next ignoring case", abc, "abc", Op::Forward, 1, {}, true, 4},
        FindRow{"next at the very start", abc, "abc", Op::Forward, 0, {}, false, 0},
        FindRow{"next wraps at the end", abc, "abc", Op::Forward, 11, {}, false, 0},
        FindRow{"next from past the end wraps", abc, "abc", Op::Forward, 99, {}, false, 0},
        FindRow{"previous before the end", abc, "abc", Op::Backward, 11, {}, false, 8},
        FindRow{"previous ignoring case", abc, "ABC", Op::Backward, 8, {}, true, 4},
        FindRow{"previous wraps at the start", abc, "abc", Op::Backward, 0, {}, false, 8},
        FindRow{"previous needs the whole match before", abc, "abc", Op::Backward, 10, {}, false, 0},
        FindRow{"not found", abc, "xyz", Op::Forward, 0, {}, true, -1},
        FindRow{"empty needle finds nothing", abc, "", Op::Forward, 0, {}, false, -1},
        FindRow{"needle longer than text", "ab", "abc", Op::Forward, 0, {}, false, -1},
        FindRow{"scope: only inside", abc, "abc", Op::Forward, 0, {3, 8}, true, 4},
        FindRow{"scope: wraps inside", abc, "abc", Op::Forward, 8, {3, 8}, true, 4},
        FindRow{"scope: a match crossing its end is none", abc, "abc", Op::Forward, 0, {3, 6}, true, -1},
        FindRow{"scope: previous inside", abc, "abc", Op::Backward, 11, {0, 7}, true, 4},
        FindRow{"scope: empty scope", abc, "abc", Op::Forward, 0, {4, 4}, true, -1},
        FindRow{"non-ASCII: positions count UTF-16 units", umlauts, "größe", Op::Forward, 1, {}, false, 9},
        FindRow{"non-ASCII: case folded", umlauts, "GRÖßE", Op::Forward, 1, {}, true, 9},
        FindRow{"surrogate pair counted as two", umlauts, "😀", Op::Forward, 0, {}, false, 6},
        FindRow{"previous over an emoji", umlauts, "Größe", Op::Backward, 20, {}, true, 9}),
    [](const ::testing::TestParamInfo<FindRow>& info) { return "row" + std::to_string(info.index); });

TEST(FindEngine, AllMatchesDoNotOverlapAndStayInScope) {
    EXPECT_EQ(find_engine::allMatches("aaaa", "aa", {}, false), (QList<qint64>{0, 2}));
    EXPECT_EQ(find_engine::allMatches("aaa", "aa", {}, false), (QList<qint64>{0}));
    EXPECT_EQ(find_engine::allMatches("xAx ax", "ax", {}, true), (QList<qint64>{1, 4}));
    EXPECT_EQ(find_engine::allMatches("xAx ax", "ax", {}, false), (QList<qint64>{4}));
    EXPECT_EQ(find_engine::allMatches("ab ab ab", "ab", {1, 7}, false), (QList<qint64>{3}));
    EXPECT_TRUE(find_engine::allMatches("ab", "", {}, false).isEmpty());
    // A scope beyond the text is clipped, never read past.
    EXPECT_EQ(find_engine::allMatches("ab", "b", {-5, 99}, false), (QList<qint64>{1}));
}

TEST(FindEngine, IsMatchChecksExactlyTheRange) {
    EXPECT_TRUE(find_engine::isMatch("xFoo", "foo", 1, 3, true));
    EXPECT_FALSE(find_engine::isMatch("xFoo", "foo", 1, 3, false));
    EXPECT_FALSE(find_engine::isMatch("xFoo", "foo", 1, 2, true));
    EXPECT_FALSE(find_engine::isMatch("xFoo", "foo", 2, 3, true));
    EXPECT_FALSE(find_engine::isMatch("xFoo", "foo", -1, 3, true));
}
