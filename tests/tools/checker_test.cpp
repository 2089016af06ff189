// The checker's verdicts on single class files: every error names the right line with
// a short message, and every shape the IDE's templates insert passes.
#include "tools/lang/diagnostic.h"
#include "tools/lang/parser.h"
#include "tools/lang/vocabulary.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <unordered_set>

namespace {

struct Verdict {
    bool ok = true;
    std::string message;
    int line = 0;
};

Verdict check(const std::string& text) {
    static const klvr::Vocabulary vocabulary;
    static const std::unordered_set<std::string> globalPublics = {"sharedcounter"};
    static const std::unordered_set<std::string> classes = {"global", "helper"};
    klvr::CompileContext context;
    context.vocabulary = &vocabulary;
    context.globalPublics = &globalPublics;
    context.projectClasses = &classes;
    try {
        klvr::compileClass(text, "a.NSObject.klvr", context);
    } catch (const klvr::LanguageError& error) {
        EXPECT_EQ(error.diagnostic.file, "a.NSObject.klvr");
        return {false, error.diagnostic.message, error.diagnostic.line};
    }
    return {};
}

struct ErrorCase {
    const char* name;
    std::string text;
    std::string message;
    int line;
};

class CheckerErrors : public ::testing::TestWithParam<ErrorCase> {};

TEST_P(CheckerErrors, ReportsTheFirstErrorWithItsLine) {
    const ErrorCase& c = GetParam();
    const Verdict v = check(c.text);
    ASSERT_FALSE(v.ok) << c.text;
    EXPECT_EQ(v.message, c.message);
    EXPECT_EQ(v.line, c.line);
}

std::string nestedIfs(int depth) {
    std::string text = "\nSub Deep()\n";
    for (int i = 0; i < depth; ++i)
        text += "If True Then\n";
    for (int i = 0; i < depth; ++i)
        text += "End If\n";
    return text + "End Sub\n";
}

std::string longSum(int terms) {
    std::string text = "\nSub Long()\n  Dim x As Integer = 1";
    for (int i = 1; i < terms; ++i)
        text += " + 1";
    return text + "\nEnd Sub\n";
}

INSTANTIATE_TEST_SUITE_P(
    Table, CheckerErrors,
    ::testing::Values(
        ErrorCase{"MissingEndSubAtEnd", "\nEvent AwakeFromNib()\nEnd Event\nSub Foo()\n  Print(\"x\")\n", "End Sub expected", 5},
        ErrorCase{"MissingEndSubBeforeNext", "\nSub A()\n  Print(1)\n\nSub B()\nEnd Sub\n", "End Sub expected before Sub B", 5},
        ErrorCase{"DeclarationNestedInMethod", "\nSub A()\n  If True Then\n  Public Function F() As Integer\n", "End If expected before Function F", 4},
        ErrorCase{"WrongMethodEnd", "\nFunction F() As Integer\n  Return 1\nEnd Sub\n", "End Function expected", 4},
        ErrorCase{"StrayNext", "\nEvent AwakeFromNib()\n  Alert(\"Hello\")\n  Next\nEnd Event\n", "Next without For", 4},
        ErrorCase{"StrayNextOutsideMethods", "\nNext\n", "Next without For", 2},
        ErrorCase{"StrayWend", "\nSub A()\n  Wend\nEnd Sub\n", "Wend without While", 3},
        ErrorCase{"StrayEndIf", "\nSub A()\n  For i = 1 To 2\n  End If\nEnd Sub\n", "End If without If", 4},
        ErrorCase{"StrayElse", "\nSub A()\n  Else\nEnd Sub\n", "Else without If", 3},
        ErrorCase{"StrayCase", "\nSub A()\n  Case 1\nEnd Sub\n", "Case without Select Case", 3},
        ErrorCase{"StrayLoop", "\nSub A()\n  Loop\nEnd Sub\n", "Loop without Do", 3},
        ErrorCase{"StrayEndSub", "\nEnd Sub\n", "End Sub without Sub", 2},
        ErrorCase{"UnclosedIfAtEndSub", "\nSub A()\n  If True Then\n    Print(1)\nEnd Sub\n", "End If expected", 5},
        ErrorCase{"UnclosedForAtEndSub", "\nSub A()\n  For i = 1 To 3\nEnd Sub\n", "Next expected", 4},
        ErrorCase{"NextClosesForWithIfOpen", "\nSub A()\n  For i = 1 To 3\n    If i = 2 Then\n  Next\nEnd Sub\n", "End If expected", 5},
        ErrorCase{"UnclosedWhileAtEnd", "\nSub A()\n  While True\n", "Wend expected", 3},
        ErrorCase{"SecondElse", "\nSub A()\n  If True Then\n  Else\n  Else\n  End If\nEnd Sub\n", "Else without If", 5},
        ErrorCase{"StatementOutsideMethod", "Dim x As Integer\nx = 1\n", "Statement outside a method", 2},
        ErrorCase{"UnknownVariable", "\nEvent AwakeFromNib()\n  Dim count As Integer\n  countr = count + 1\nEnd Event\n", "Unknown identifier countr", 4},
        ErrorCase{"UnknownInExpression", "\nSub A()\n  Print(Len(nme))\nEnd Sub\n", "Unknown identifier nme", 3},
        ErrorCase{"UnknownStatementCall", "\nSub A()\n  Foo 1, 2\nEnd Sub\n", "Unknown identifier Foo", 3},
        ErrorCase{"UnknownBeforeDot", "\nSub A()\n  wnd.show\nEnd Sub\n", "Unknown identifier wnd", 3},
        ErrorCase{"LocalOfOtherMethod", "\nSub A()\n  Dim t As Integer\nEnd Sub\nSub B()\n  t = 2\nEnd Sub\n", "Unknown identifier t", 6},
        ErrorCase{"UnusedBeforeDim", "\nSub A()\n  t = 2\n  Dim t As Integer\nEnd Sub\n", "Unknown identifier t", 3},
        ErrorCase{"OpenString", "\nSub A()\n  Print(\"abc)\nEnd Sub\n", "Closing quote expected", 3},
        ErrorCase{"InvalidCharacter", "\nSub A()\n  x = 1 # 2\nEnd Sub\n", "Invalid character", 3},
        ErrorCase{"BinaryBytes", std::string("\nSub A()\n\x01\x02\xff\nEnd Sub\n", 19), "Invalid character", 3},
        ErrorCase{"MissingThen", "\nSub A()\n  If 1 = 1\n  End If\nEnd Sub\n", "Then expected", 3},
        ErrorCase{"MissingTo", "\nSub A()\n  For i = 1 3\n  Next\nEnd Sub\n", "To expected", 3},
        ErrorCase{"MissingOperand", "\nSub A()\n  Print(1 +)\nEnd Sub\n", "Expression expected before )", 3},
        ErrorCase{"OpenParenthesis", "\nSub A()\n  Print((1 + 2)\nEnd Sub\n", "Closing parenthesis expected", 3},
        ErrorCase{"TrailingTokens", "\nSub A()\n  Dim x As Integer = 1 2\nEnd Sub\n", "End of statement expected", 3},
        ErrorCase{"ExitForOutsideFor", "\nSub A()\n  Exit For\nEnd Sub\n", "Exit For outside For", 3},
        ErrorCase{"NameMissing", "\nSub (a As Integer)\nEnd Sub\n", "Name expected after Sub", 2},
        ErrorCase{"CaseExpected", "\nSub A()\n  Select Case 1\n    Print(1)\n  End Select\nEnd Sub\n", "Case expected", 4},
        ErrorCase{"TooDeep", nestedIfs(300), "Blocks nested too deeply", 2 + klvr::kMaxBlockDepth},
        ErrorCase{"TooManyParentheses", "\nSub A()\n  Print(" + std::string(150, '(') + "1" + std::string(150, ')') + ")\nEnd Sub\n",
                  "Expression too deeply nested", 3},
        ErrorCase{"TooLong", longSum(400), "Expression too long", 3},
        ErrorCase{"ColonSeparator", "\nSub A()\n  Print(1) : Print(2)\nEnd Sub\n", "End of statement expected", 3},
        ErrorCase{"UnclosedTry", "\nSub A()\n  Try\n  Catch\nEnd Sub\n", "End Try expected", 5},
        ErrorCase{"StrayCatch", "\nSub A()\n  Catch e\nEnd Sub\n", "Catch without Try", 3},
        ErrorCase{"StrayEndWith", "\nSub A()\n  End With\nEnd Sub\n", "End With without With", 3},
        ErrorCase{"ContinueOutsideLoop", "\nSub A()\n  Continue While\nEnd Sub\n", "Continue While outside While", 3},
        ErrorCase{"DotOutsideWith", "\nSub A()\n  .x = 1\nEnd Sub\n", "Statement expected before .", 3},
        ErrorCase{"StringNeverEntersTheMessage", "\nSub A()\n  \"x in line 9 in file y\"\nEnd Sub\n", "Statement expected before a string", 3},
        ErrorCase{"LongNameIsShortened", "\nSub A()\n  " + std::string(100, 'n') + " = 1\nEnd Sub\n",
                  "Unknown identifier " + std::string(64, 'n') + "...", 3},
        ErrorCase{"CrLfLines", "\r\nSub A()\r\n  Next\r\nEnd Sub\r\n", "Next without For", 3}),
    [](const ::testing::TestParamInfo<ErrorCase>& info) { return std::string(info.param.name); });

TEST(Checker, AcceptsTheTemplatesTheEditorInsertsAndTheLanguageAsWritten) {
    const std::string texts[] = {
        // The declaration templates exactly as inserted, and the statement templates with
        // their placeholders filled in.
        "\nSub NAME(ARGUMENT As id)\n  \nEnd Sub\n"
        "\nFunction NAME2(ARGUMENT As id) As id\n  Return Nil\nEnd Function\n"
        "\nAction NAME3()\n  \nEnd IBAction\n"
        "\nDim NAME4 As id\n"
        "\nConst NAME5 As id\n"
        "\nEvent NAME6()\n  \nEnd Event\n"
        "\nDelegate NAME7() As id\n  Return Nil\nEnd Delegate\n"
        "\nIBOutlet NAME8 As id\n"
        "\nIBAction NAME9(sender As id)\n\nEnd IBAction\n"
        "\nEvent Statements()\n"
        "\nIf NAME4 Then\n  \nEnd If\n"
        "\nIf NAME4 Then\n  \nElse\n  \nEnd If\n"
        "\nIf NAME4 Then\n  \nElse\n  \nElse If NAME5 Then\n  \nEnd If\n"
        "\nFor VARIABLE = 1 To 10\n  \nNext\n"
        "End Event\n",
        "Dim first As Integer ' a declaration on the very first line\n"
        "Public Dim shared As String = \"it's \"\"quoted\"\"\"\n"
        "Private Const LIMIT = 10\n"
        "Declare Class \"WebFrame\"\n"
        "Declare Framework \"Webkit\" \"#import <Webkit/Webkit>\" ' a comment\n"
        "\n"
        "public sub lower(a as integer, ByVal b, Optional c As String = \"x\")\n"
        "  DIM t AS INTEGER = A + B\n"
        "  print(T & c)\n"
        "End SUB\n"
        "Function Twice(n As Integer) As Integer\n"
        "  Return n * 2\n"
        "End Function\n"
        "Event AwakeFromNib()\n"
        "  Dim w As WebFrame\n"
        "  Dim list As New NSMutableArray\n"
        "  w.loadRequest list.objectAtIndex(0), self.window\n"
        "  lower 1, 2\n"
        "  lower(1, 2, \"y\")\n"
        "  If Twice(2) = 4 And Not False Then Print(\"ok\") Else Print(\"no\")\n"
        "  For i = 10 To 1 Step -1\n"
        "    If i = 5 Then Exit For\n"
        "  Next i\n"
        "  Do Until first > LIMIT\n"
        "    first = first + 1\n"
        "  Loop\n"
        "  Select Case first\n"
        "    Case 1, 2\n"
        "    Case 3 To 5\n"
        "    Case Is >= 6\n"
        "    Case Else\n"
        "  End Select\n"
        "  sharedCounter = Helper.count + Len(shared)\n"
        "  While first > 0\n"
        "    first = first \\ 2 Mod 7\n"
        "  End While\n"
        "  Alert(\"\xc3\xa9t\xc3\xa9 \xff\xfe\") ' bytes that are not UTF-8 in a string\n"
        "  If w Is Nil Or Not w Is Nil Then Print(\"nil\")\n"
        "  Try\n    Throw New NSException\n  Catch e As NSException\n    Print(e.reason)\n  Finally\n    Stop\n  End Try\n"
        "  With w\n    .setTitle \"t\"\n    first = .title\n  End With\n"
        "  Static calls As Integer\n  Call lower(1, 2)\n"
        "  For j = 1 To 2\n    Continue For\n  Next\n"
        "End Event",  // no line break at the end
    };
    for (const std::string& text : texts) {
        const Verdict v = check(text);
        EXPECT_TRUE(v.ok) << v.message << " in line " << v.line;
    }
}

TEST(Checker, PublicMembersAreCollectedFromAnyText) {
    const auto names = klvr::publicMemberNames(
        "Public Dim a, b As Integer\nPublic Sub Go()\n  Public Dim hidden\nEnd Sub\nPrivate Sub Quiet()\nEnd Sub\n\x00\xff");
    EXPECT_EQ(names, (std::unordered_set<std::string>{"a", "b", "go"}));
}

TEST(Vocabulary, ReadsEachPropertyListTheWayItsContentIsLaidOut) {
    const std::string dir = ::testing::TempDir() + "/klvr_vocabulary";
    std::filesystem::create_directories(dir);
    const auto write = [&](const char* name, const std::string& body) {
        std::ofstream(dir + "/" + name) << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>" << body
                                        << "</dict></plist>\n";
    };
    write("keyword.plist", "<key>k1</key><string>Raise</string>");
    write("type.plist", "<key>t1</key><string>NSRect</string>");
    write("const.plist", "<key>c1</key><string>NSNotFound</string>");
    write("function.plist", "<key>ReadString</key><string>ReadString(path As String)</string>");
    write("class.plist", "<key>NSApplication</key><dict><key>run</key><array><string>a</string></array></dict>");
    write("object.plist", "<key>application</key><dict/>");
    std::ofstream(dir + "/broken.plist") << "not a property list";
    klvr::Vocabulary vocabulary;
    EXPECT_EQ(vocabulary.loadPropertyLists(dir), 6);
    for (const char* word : {"raise", "nsrect", "nsnotfound", "readstring", "nsapplication", "application"})
        EXPECT_TRUE(vocabulary.contains(word)) << word;
    EXPECT_FALSE(vocabulary.contains("k1"));  // keys of the word lists are not words
    EXPECT_FALSE(vocabulary.contains("run"));  // members are only reached after a "."
    EXPECT_EQ(klvr::Vocabulary().loadPropertyLists(dir + "/missing"), 0);
}

}  // namespace
