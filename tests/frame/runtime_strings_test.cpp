// The string operations' positions, -1 and case flags, on which every searching
// caller relies.
#include "frame/runtime.h"

#include <gtest/gtest.h>

TEST(RuntimeStrings, SearchesGiveZeroBasedPositionsAndMinusOneWhenAbsent) {
    const QString name = QStringLiteral("Global.NSObject.klvr");
    EXPECT_EQ(KLVR_INSTR(name, ".", 0, true), 6);
    EXPECT_EQ(KLVR_INSTR(name, ".", 7, true), 15);
    EXPECT_EQ(KLVR_INSTRREV(name, ".", -1, true), 15);
    EXPECT_EQ(KLVR_INSTRREV(name, ".", 14, true), 6);
    EXPECT_EQ(KLVR_INSTR("Global", ".", 0, true), -1);
    EXPECT_EQ(KLVR_INSTRREV("Global", ".", -1, true), -1);
    // A start of -1 searches from the beginning; a start past the end finds nothing.
    EXPECT_EQ(KLVR_INSTR(name, "G", -1, true), 0);
    EXPECT_EQ(KLVR_INSTR(name, "G", 99, true), -1);
    // A multi-character text at the very end is found from the end.
    EXPECT_EQ(KLVR_INSTRREV(name, "klvr", -1, true), 16);
}

TEST(RuntimeStrings, CaseFlagSelectsExactOrCaseBlindComparison) {
    EXPECT_EQ(KLVR_INSTR("\nsub foo()", "\nSub ", 0, true), -1);
    EXPECT_EQ(KLVR_INSTR("\nsub foo()", "\nSub ", 0, false), 0);
    EXPECT_EQ(KLVR_COUNT("a\nb\nc", "\n", false), 2);
    EXPECT_EQ(KLVR_COUNT("AbAB", "ab", false), 2);
    EXPECT_EQ(KLVR_COUNT("AbAB", "ab", true), 0);
    EXPECT_EQ(KLVR_COUNT("abc", "", true), 0);
    EXPECT_TRUE(KLVR_CONTAINS("Hello", "ELL", false));
    EXPECT_FALSE(KLVR_CONTAINS("Hello", "ELL", true));
    EXPECT_TRUE(KLVR_STARTSWITH("Global.NSObject.klvr", "global", false));
    EXPECT_TRUE(KLVR_ENDSWITH("a.KLVR", "klvr", false));
    EXPECT_FALSE(KLVR_ENDSWITH("a.KLVR", "klvr", true));
    EXPECT_EQ(KLVR_REPLACE("a b c", " ", "\\ ", true), QStringLiteral("a\\ b\\ c"));
    EXPECT_EQ(KLVR_REPLACE("Foo foo FOO", "foo", "x", false), QStringLiteral("x x x"));
    EXPECT_EQ(KLVR_REPLACE("abc", "", "x", false), QStringLiteral("abc"));
}

TEST(RuntimeStrings, CuttingHandlesNegativeAndOversizedCounts) {
    EXPECT_EQ(KLVR_MID("Global.NSObject", 7, -1), QStringLiteral("NSObject"));
    EXPECT_EQ(KLVR_MID("Global.NSObject", 7, -5), QStringLiteral("NSObject"));
    EXPECT_EQ(KLVR_MID("abc", 1, 1), QStringLiteral("b"));
    EXPECT_EQ(KLVR_MID("abc", 5, 2), QString());
    EXPECT_EQ(KLVR_MID("abc", -3, 2), QStringLiteral("ab"));
    EXPECT_EQ(KLVR_LEFT("counter", -1), QStringLiteral("counter"));
    EXPECT_EQ(KLVR_LEFT("counter", 3), QStringLiteral("cou"));
    EXPECT_EQ(KLVR_LEFT("ab", 10), QStringLiteral("ab"));
    EXPECT_EQ(KLVR_RIGHT("klvr", -1), QString());
    EXPECT_EQ(KLVR_RIGHT("a.klvr", 4), QStringLiteral("klvr"));
    EXPECT_EQ(KLVR_LEN(""), 0);
    // Positions count UTF-16 code units, as every other part of the system does.
    EXPECT_EQ(KLVR_LEN(QStringLiteral("ä😀")), 3);
    EXPECT_EQ(KLVR_INSTR(QStringLiteral("ä😀x"), "x", 0, true), 3);
}

TEST(RuntimeStrings, TrimKeepsLineBreaksAndOtherHelpersFollowTheirTables) {
    EXPECT_EQ(KLVR_TRIM("\nSub "), QStringLiteral("\nSub"));
    EXPECT_EQ(KLVR_TRIM(" \t x \t"), QStringLiteral("x"));
    EXPECT_EQ(KLVR_TRIM("   "), QString());
    EXPECT_EQ(KLVR_SPACE(3, " "), QStringLiteral("   "));
    EXPECT_EQ(KLVR_SPACE(-2, " "), QString());
    EXPECT_EQ(KLVR_SPLIT("a,b,,c", ","), (QStringList{"a", "b", "", "c"}));
    EXPECT_EQ(KLVR_FILENAME("/Users/me/Hello/Global.NSObject.klvr"), QStringLiteral("Global.NSObject.klvr"));
    EXPECT_EQ(KLVR_FILENAME("/Users/me/Hello/"), QStringLiteral("Hello"));
    EXPECT_EQ(KLVR_FILEEXTENSION("/p/x.klvr.bak"), QStringLiteral("bak"));
    EXPECT_EQ(KLVR_FILEEXTENSION("/p.d/Makefile"), QString());
    EXPECT_EQ(KLVR_LCASE("MsgBox"), QStringLiteral("msgbox"));
    EXPECT_EQ(KLVR_UCASE("end sub"), QStringLiteral("END SUB"));
}

TEST(RuntimeStrings, CommandLinesSplitAtUnescapedBlanksOnly) {
    EXPECT_EQ(klvrSplitCommandLine("/opt/my\\ tools/run -Clean /tmp/My\\ App"),
              (QStringList{"/opt/my tools/run", "-Clean", "/tmp/My App"}));
    EXPECT_EQ(klvrSplitCommandLine("  a   b  "), (QStringList{"a", "b"}));
    EXPECT_EQ(klvrSplitCommandLine("a\\\\b"), (QStringList{"a\\b"}));
    EXPECT_EQ(klvrSplitCommandLine("'$(rm -rf x)';echo"), (QStringList{"'$(rm", "-rf", "x)';echo"}));
    EXPECT_TRUE(klvrSplitCommandLine("").isEmpty());
}
