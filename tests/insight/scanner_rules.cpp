// The scanner's rules on the cases that define them, each checked on its own.
#include "insight/declaration_scanner.h"

#include <gtest/gtest.h>

namespace {

QStringList titles(const DeclarationList& list) {
    QStringList out;
    for (const DeclarationEntry& row : list.rows)
        out << row.title;
    return out;
}

QStringList names(const DeclarationList& list) {
    QStringList out;
    for (qsizetype i = 0; i < list.entryCount(); ++i)
        out << list.entry(i).name;
    return out;
}

} // namespace

TEST(ScannerRules, DeclarationsOnTheFirstLineOrALastLineWithoutLineBreakAreNotListed) {
    // The first line's Dim is still a local.
    const DeclarationLists firstLine = scanDeclarations(u"Dim first As Integer\nSub Foo()\nEnd Sub\n");
    EXPECT_EQ(firstLine.list(DeclarationKind::Dim).entryCount(), 0);
    EXPECT_EQ(names(firstLine.all), QStringList{"Foo"});
    EXPECT_EQ(firstLine.locals.value(".first", "<none>"), "Integer");
    EXPECT_EQ(scanDeclarations(u"Sub Foo()\n").all.entryCount(), 0);
    // The last line without a line break.
    const DeclarationLists lists = scanDeclarations(u"x\nSub Foo()\nSub Last()");
    EXPECT_EQ(names(lists.list(DeclarationKind::Sub)), QStringList{"Foo"});
    EXPECT_EQ(lists.lineSeparatorsType, QStringList{"Foo"});
    EXPECT_EQ(lists.lineSeparators, QList<qint64>{1});
    // With a final line break it is listed.
    EXPECT_EQ(scanDeclarations(u"x\nSub Foo()\nSub Last()\n").all.entryCount(), 2);
}

TEST(ScannerRules, LowerCaseKeywordIsListedButItsParametersAreNot) {
    const DeclarationLists lists = scanDeclarations(u"\npublic sub Foo(a As Integer)\nEnd Sub\n");
    ASSERT_EQ(lists.list(DeclarationKind::Sub).entryCount(), 1);
    const DeclarationEntry& e = lists.list(DeclarationKind::Sub).entry(0);
    EXPECT_EQ(e.visibility, "Public");
    EXPECT_EQ(e.kind, "Sub");
    EXPECT_EQ(e.name, "Foo");
    EXPECT_EQ(e.parameters, "(a As Integer)");
    EXPECT_EQ(e.line, 2);
    EXPECT_FALSE(lists.locals.contains("Foo.a"));
    EXPECT_TRUE(lists.locals.isEmpty());
}

TEST(ScannerRules, KindListGroupsByPrefixWhileAllIsInLineOrder) {
    const DeclarationLists lists = scanDeclarations(u"\nSub Foo()\nPublic Sub Bar()\nSub Baz()\n");
    EXPECT_EQ(titles(lists.list(DeclarationKind::Sub)), (QStringList{"Sub (3)", "", "Foo()", "Baz()", "Bar()"}));
    EXPECT_EQ(titles(lists.all), (QStringList{"All (3)", "", "Foo()", "Bar()", "Baz()"}));
    EXPECT_EQ(lists.lineSeparatorsType, (QStringList{"Foo", "Baz", "Bar"}));
    EXPECT_EQ(lists.lineSeparators, (QList<qint64>{0, 27, 10}));
    EXPECT_EQ(lists.all.rows[0].tag, 0);
    EXPECT_EQ(lists.all.rows[1].row, DeclarationEntry::Row::Separator);
    EXPECT_EQ(lists.all.selectedRow, 0);
    EXPECT_EQ(lists.all.entry(0).tag, 1);
    EXPECT_EQ(lists.all.entry(0).image, "Sub.png");
}

TEST(ScannerRules, KindWithParametersNeedsAnOpeningParenthesisLaterInTheText) {
    EXPECT_EQ(scanDeclarations(u"\nSub Foo\nEnd Sub\n").all.entryCount(), 0);
    // Any "(" later in the text will do, even on another line.
    const DeclarationLists later = scanDeclarations(u"\nSub Foo\nx = f(1)\n");
    ASSERT_EQ(later.all.entryCount(), 1);
    EXPECT_EQ(later.all.entry(0).name, "Foo");
    EXPECT_EQ(later.all.entry(0).parameters, "");
    // Kinds without parameter lists do not care.
    EXPECT_EQ(scanDeclarations(u"\nDim counter\n").list(DeclarationKind::Dim).entryCount(), 1);
}

TEST(ScannerRules, DimEntryKeepsItsCommentInTheTitleButNotInTheType) {
    const DeclarationLists lists = scanDeclarations(u"\nDim x As Integer = 5 ' counter\n");
    ASSERT_EQ(lists.list(DeclarationKind::Dim).entryCount(), 1);
    const DeclarationEntry& e = lists.list(DeclarationKind::Dim).entry(0);
    EXPECT_EQ(e.title, "x As Integer = 5 ' counter");
    EXPECT_EQ(e.name, "x");
    EXPECT_EQ(e.parameters, "");
    EXPECT_EQ(e.type, "Integer");
    EXPECT_EQ(e.visibility, "Private");
}

TEST(ScannerRules, ClassLevelDimIsNoLocalButAnIndentedOneIs) {
    const DeclarationLists classLevel = scanDeclarations(u"\nSub Foo()\nDim x As Integer\nEnd Sub\n");
    EXPECT_TRUE(classLevel.locals.isEmpty());
    EXPECT_EQ(classLevel.list(DeclarationKind::Dim).entryCount(), 1);
    for (const char16_t* indented : {u"\nSub Foo()\n Dim x As Integer\nEnd Sub\n",
                                     u"\nSub Foo()\n\tDim x As Integer\nEnd Sub\n"}) {
        const DeclarationLists lists = scanDeclarations(indented);
        EXPECT_EQ(lists.locals, (QHash<QString, QString>{{"Foo.x", "Integer"}}));
        EXPECT_EQ(lists.list(DeclarationKind::Dim).entryCount(), 0);
    }
    // Hiding class-level Dims minds letter case: a "dim " line is not hidden, so the
    // second "Dim " on it declares a local; on a "Dim " line only the first is hidden.
    const DeclarationLists mixed =
        scanDeclarations(u"\nSub Foo()\nPublic Dim y As T\ndim a, Dim b As V\nDim c, Dim d As W\n");
    EXPECT_EQ(mixed.locals, (QHash<QString, QString>{{"Foo.a,", "V"}, {"Foo.Dim", "W"}}));
    EXPECT_EQ(mixed.list(DeclarationKind::Dim).entryCount(), 3);
}

TEST(ScannerRules, FunctionEntryKeepsItsParametersAndType) {
    const DeclarationLists lists = scanDeclarations(u"\nFunction F(s As String, n) As Integer\nEnd Function\n");
    ASSERT_EQ(lists.list(DeclarationKind::Function).entryCount(), 1);
    const DeclarationEntry& e = lists.list(DeclarationKind::Function).entry(0);
    EXPECT_EQ(e.parameters, "(s As String, n)");
    EXPECT_EQ(e.type, "Integer");
}

TEST(ScannerRules, CrLfFilesGiveTheSameLinesAndNoCarriageReturns) {
    const QString lf = "Class\nPublic Function Sum(a As Integer) As Integer ' adds\n Dim t As Long\nEnd Function\n"
                       "Dim x As Integer\n";
    QString crlf = lf;
    crlf.replace("\n", "\r\n");
    const DeclarationLists a = scanDeclarations(lf);
    const DeclarationLists b = scanDeclarations(crlf);
    ASSERT_EQ(b.all.entryCount(), 2);
    for (qsizetype i = 0; i < 2; ++i) {
        EXPECT_EQ(a.all.entry(i).line, b.all.entry(i).line);
        EXPECT_EQ(a.all.entry(i).title, b.all.entry(i).title);
        EXPECT_EQ(a.all.entry(i).type, b.all.entry(i).type);
        EXPECT_FALSE(b.all.entry(i).title.contains('\r'));
    }
    EXPECT_EQ(b.all.entry(0).title, "Sum(a As Integer) As Integer ' adds");
    EXPECT_EQ(b.all.entry(1).line, 5);
    EXPECT_EQ(b.locals, a.locals);
    EXPECT_EQ(b.locals.value("Sum.t"), "Long");
}

TEST(ScannerRules, HeadingsCountEntriesAndEmptyTextGivesEmptyLists) {
    const DeclarationLists empty = scanDeclarations(u"");
    EXPECT_EQ(titles(empty.all), (QStringList{"All (0)", ""}));
    EXPECT_EQ(titles(empty.list(DeclarationKind::Dim)), (QStringList{"Dim (0)", ""}));
    EXPECT_TRUE(empty.lineSeparators.isEmpty());
    EXPECT_TRUE(empty.locals.isEmpty());

    QString text = "\n";
    for (int i = 0; i < 12; ++i)
        text += QString("Const C%1 = %1\n").arg(i);
    const DeclarationLists twelve = scanDeclarations(text);
    EXPECT_EQ(twelve.all.rows[0].title, "All (12)");
    EXPECT_EQ(twelve.list(DeclarationKind::Const).rows[0].title, "Const (12)");
    EXPECT_EQ(twelve.list(DeclarationKind::Const).entry(11).type, "");
}

TEST(ScannerRules, NamesTypesAndOddTitles) {
    const DeclarationLists lists = scanDeclarations(
        u"\nDim counter\nConst MAX = 10\nIBOutlet button As NSButton\nDelegate D(a As X) As Y ' d\n"
        u"Function G() As Array(Of X)\nSub H) x (\nDim v as integer\n");
    const DeclarationList& all = lists.all;
    ASSERT_EQ(all.entryCount(), 7);
    EXPECT_EQ(all.entry(0).name, "counter"); // neither blank nor "(": the whole title
    EXPECT_EQ(all.entry(1).type, "");
    EXPECT_EQ(all.entry(2).type, "NSButton");
    EXPECT_EQ(all.entry(2).kind, "IBOutlet");
    EXPECT_EQ(all.entry(3).parameters, "(a As X)");
    EXPECT_EQ(all.entry(3).type, "Y");
    EXPECT_EQ(all.entry(4).type, "Array");
    EXPECT_EQ(all.entry(5).name, "H)");
    EXPECT_EQ(all.entry(5).parameters, ""); // ")" before "(" encloses nothing
    EXPECT_EQ(all.entry(6).type, "integer"); // " as " found ignoring case
}

TEST(ScannerRules, ScopeStartsFollowKindThenPrefixThenPosition) {
    const DeclarationLists lists = scanDeclarations(
        u"\nIBAction Click(s)\nPublic Sub P()\nFunction F()\nSub S()\nEvent E()\nAction A()\nDelegate D()\n");
    EXPECT_EQ(lists.lineSeparatorsType, (QStringList{"S", "P", "F", "A", "E", "D", "Click"}));
    EXPECT_EQ(names(lists.all), (QStringList{"Click", "P", "F", "S", "E", "A", "D"}));
}

struct LocalsCase {
    const char* name;
    const char16_t* text;
    QHash<QString, QString> locals; // "Scope.name" -> type
};

class ScannerLocals : public ::testing::TestWithParam<LocalsCase> {};

TEST_P(ScannerLocals, AreKeyedByScopeAndNameWithTheirType) {
    EXPECT_EQ(scanDeclarations(GetParam().text).locals, GetParam().locals);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ScannerLocals,
    ::testing::Values(
        LocalsCase{"ParametersWithAndWithoutAs", u"\nFunction F(s As String, n) As Integer\nEnd Function\n",
                   {{"F.s", "String"}, {"F.n", "NSObject"}}},
        LocalsCase{"ParameterTypeIsNotCutAfterAs", u"\nSub G(n As Integer = 5)\n", {{"G.n", "Integer = 5"}}},
        LocalsCase{"QuotedApostropheDoesNotCutTheParameterList",
                   u"\nSub Greet(n As Integer, s As String = \"it's\", m As Double) ' greets\nEnd Sub\n",
                   {{"Greet.n", "Integer"}, {"Greet.s", "String ="}, {"Greet.m", "Double"}}},
        LocalsCase{"QuotedApostropheInALocalDim", u"\nSub A()\n  Dim t As String = \"don't\" ' note\n",
                   {{"A.t", "String"}}},
        LocalsCase{"PrefixParameterScanEndsAtALineWithoutParentheses",
                   u"\nSub A(x As T)\nSub B\nSub C(y As U)\nFunction F(z)\n", {{"A.x", "T"}, {"F.z", "NSObject"}}},
        LocalsCase{"ScopeBeforeTheLineAndEmptyLinesJoined",
                   u"  Dim early As A\nSub S()\n\n Dim a As T\n  Dim b As U ' c\nEnd Sub\nFunction F() As X\n"
                   u" Dim a As V\n Dim last As W",
                   {{".early", "A"}, {"S.a", "T"}, {"S.b", "U"}, {"F.a", "V"}}},
        LocalsCase{"ParametersReplaceALocalOfTheSameKey",
                   u"\nSub S(a As Param)\n Dim a As Local\n Dim b As One\n Dim b As Two\n",
                   {{"S.a", "Param"}, {"S.b", "Two"}}}),
    [](const auto& info) { return std::string(info.param.name); });
