// Completion through a started IDE: Global's two questions over a real project, the
// pop-up of a real editor view typed into, and answers that follow re-scans.
#include "insight/completion.h"
#include "insight/parser.h"
#include "resolution_project.h"
#include "support/ide_fixture.h"

#include <QTest>

namespace rp = resolution_project;

namespace {

const QString marker = QString::fromUtf16(completionNoContextMarker);

Value members(const QStringList& completions) {
    Value map = Value::dictionary();
    for (const QString& completion : completions)
        map.entries().insert(completion.section('(', 0, 0), Value(QStringList{"", completion, "Integer"}));
    return map;
}

class Completion : public IdeFixture {
protected:
    void SetUp() override {
        IdeFixture::SetUp();
        Global& g = start();
        g.addFunction("MsgBox", "MsgBox(text)");
        g.addFunction("Len", "Len(s)");
        g.addConst("PI");
        g.addClass("NSString", members({"length", "characterAtIndex(index)"}));
        g.addObject("App", members({"terminate", "hide"}));
        project = makeProject("Shop", rp::files);
        g.ProjectOpen(project);
        g.ProjectOpenCode("Basket.NSObject.klvr");
        view = g.mytextview();
        ASSERT_TRUE(view);
    }
    // The view's cursor at a 1-based line of Basket, `column` characters in.
    void placeCursor(int line, int column = 1) { view->setCursorPosition(line - 1, column); }
    // A new line (view line 6) typed at the end of Run's body, as a user types it.
    void typeInRun(const char* keys) {
        view->setCursorPosition(5, int(view->text(5).size()) - 1);
        QTest::keyClick(view, Qt::Key_Return);
        QTest::keyClicks(view, keys);
    }

    QString project;
    KLTextView* view = nullptr;
};

struct CandidateCase {
    const char* name;
    int line;
    const char* expression;
    QStringList candidates;
};

class Candidates : public Completion, public ::testing::WithParamInterface<CandidateCase> {};

TEST_P(Candidates, FollowTheExpressionBeforeTheCursor) {
    placeCursor(GetParam().line);
    const QString expression = GetParam().expression ? QString::fromUtf8(GetParam().expression) : marker;
    EXPECT_EQ(global->KLVR_TextView_GetCompletion(view, expression), GetParam().candidates);
    EXPECT_EQ(global->__TextView_GetCompletion(view, expression), GetParam().candidates);
}

const QStringList basketIdentifiers = {"x", "total", "Run(n As Integer)", "items", "vault", "größe", "Add(k As Integer)"};

INSTANTIATE_TEST_SUITE_P(
    Expressions, Candidates,
    ::testing::Values(
        CandidateCase{"NoContextFunctionsConstantsThenOwnClass", 2, nullptr,
                      QStringList{"MsgBox(text)", "Len(s)", "PI"} + basketIdentifiers},
        CandidateCase{"MeOffersPrivateMembersToo", 2, "me", basketIdentifiers},
        CandidateCase{"GlobalMemberOfAVocabularyClass", 2, "text", {"length", "characterAtIndex(index)"}},
        CandidateCase{"PredefinedObject", 2, "App", {"terminate", "hide"}},
        CandidateCase{"ProjectClassPublicMembers", 2, "me.items", {"first", "crate", "Put(item As Basket)"}},
        CandidateCase{"ThreeClassesDeep", 2, "items.crate", {"tag", "Weight()"}},
        CandidateCase{"ClassWithOnlyPrivateMembers", 2, "vault", {}},
        CandidateCase{"LocalOfAVocabularyType", 6, "total", {}},
        CandidateCase{"CommentWithPoints", 2, "' see me", {}},
        CandidateCase{"UnterminatedString", 2, "\"me", {}}),
    [](const auto& info) { return std::string(info.param.name); });

struct TextCase {
    const char* name;
    const char* word;
    const char* text;
};

class CompletionText : public Completion, public ::testing::WithParamInterface<TextCase> {};

TEST_P(CompletionText, IsTheVocabularysTextForTheWholeWord) {
    placeCursor(2);
    EXPECT_EQ(global->__TextView_GetCompletion2(view, GetParam().word), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Words, CompletionText,
                         ::testing::Values(TextCase{"FunctionInUpperCase", "MSGBOX", "MsgBox(text)"},
                                           TextCase{"MemberOfAVocabularyClass", "text.characterAtIndex",
                                                    "characterAtIndex(index)"},
                                           TextCase{"FunctionNameAfterAPoint", "text.msgbox", ""},
                                           TextCase{"MemberOfAProjectClass", "me.items", ""},
                                           TextCase{"UnknownWord", "nobody", ""}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(Completion, TypingMePointOpensTheOwnClassAndEnterInsertsWithParentheses) {
    typeInRun("me.");
    EXPECT_TRUE(view->isListActive());
    EXPECT_EQ(view->shownCompletions(), basketIdentifiers);
    QTest::keyClicks(view, "A");
    EXPECT_EQ(view->shownCompletions(), QStringList{"Add(k As Integer)"});
    QTest::keyClick(view, Qt::Key_Return);
    EXPECT_FALSE(view->isListActive());
    EXPECT_EQ(view->text(6).trimmed(), "me.Add()");
    int line = 0, column = 0;
    view->getCursorPosition(&line, &column);
    EXPECT_EQ(column, view->text(6).indexOf("()") + 1); // between the parentheses
}

TEST_F(Completion, ThreeLettersOpenTheListItNarrowsAndEscapeClosesIt) {
    typeInRun("ms");
    EXPECT_FALSE(view->isListActive());
    QTest::keyClicks(view, "g");
    EXPECT_EQ(view->shownCompletions(), QStringList{"MsgBox(text)"});
    QTest::keyClick(view, Qt::Key_Escape);
    EXPECT_FALSE(view->isListActive());
    QTest::keyClicks(view, ".");
    EXPECT_FALSE(view->isListActive()); // "msg" has no type
    QTest::keyClick(view, Qt::Key_Return);
    QTest::keyClicks(view, "me.items.crate.");
    EXPECT_EQ(view->shownCompletions(), (QStringList{"tag", "Weight()"}));
    QTest::keyClicks(view, "w");
    EXPECT_EQ(view->shownCompletions(), QStringList{"Weight()"});
    QTest::keyClick(view, Qt::Key_Backspace);
    EXPECT_EQ(view->shownCompletions(), (QStringList{"tag", "Weight()"}));
    QTest::keyClick(view, Qt::Key_Tab);
    EXPECT_EQ(view->text(7).trimmed(), "me.items.crate.tag");
    // Neither a comment nor a quoted text opens the list.
    QTest::keyClick(view, Qt::Key_Return);
    QTest::keyClicks(view, "Print(\"me.");
    EXPECT_FALSE(view->isListActive());
    QTest::keyClicks(view, "\") ' see me.");
    EXPECT_FALSE(view->isListActive());
}

TEST_F(Completion, ExactCaseMatchesComeFirstAWholeFunctionNameOffersItsTextAndDelegateCallsReachTheView) {
    EXPECT_EQ(KLTextView::filterCandidates({"Total", "tOTAL", "total", "other"}, "to"),
              (QStringList{"total", "Total", "tOTAL"}));
    typeInRun("msgbox");
    QTest::keyClick(view, Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(view->shownCompletions(), QStringList{"MsgBox(text)"});
    QTest::keyClick(view, Qt::Key_Escape);
    // Delegate calls are handed back to the view.
    view->setText(view->text() + "\nle");
    view->setCursorPosition(view->lines() - 1, 2);
    const qint64 end = view->position();
    EXPECT_EQ(global->textView_completions_forPartialWordRange_indexOfSelectedItem(view, {"fallback"}, end - 2, 2),
              QStringList{"Len(s)"});
    EXPECT_EQ(global->textView_willChangeSelectionFromCharacterRange_toCharacterRange(view, 0, 0, 5, 2),
              (QList<qint64>{5, 2}));
    EXPECT_TRUE(global->textView_shouldChangeTextInRange(view, 0, 0, "x"));
}

TEST_F(Completion, AnswersFollowTheLastScanOfEachFile) {
    placeCursor(2);
    // A member added to another class is offered once that file is scanned again.
    writeFile(project + "/Crate.NSObject.klvr", "\nPublic Dim tag As NSString\nPublic Sub Seal()\nEnd Sub\n");
    EXPECT_EQ(global->KLVR_TextView_GetCompletion(view, "items.crate"), (QStringList{"tag", "Weight()"}));
    global->myparser->ParseFile(project + "/Crate.NSObject.klvr");
    EXPECT_EQ(global->KLVR_TextView_GetCompletion(view, "items.crate"), (QStringList{"tag", "Seal()"}));
    // A class created in the project is offered once it is listed and scanned.
    writeFile(project + "/Lid.NSObject.klvr", "\nPublic Dim color As NSString\n");
    writeFile(project + "/Crate.NSObject.klvr", "\nPublic Dim lid As Lid\n");
    global->myparser->ParseFile(project + "/Crate.NSObject.klvr");
    EXPECT_EQ(global->KLVR_TextView_GetCompletion(view, "items.crate.lid"), QStringList{});
    global->projectFiles << "Lid.NSObject.klvr";
    global->myparser->ParseFile(project + "/Lid.NSObject.klvr");
    EXPECT_EQ(global->KLVR_TextView_GetCompletion(view, "items.crate.lid"), QStringList{"color"});
}

TEST_F(Completion, TenKeysInARowLeaveOnePauseTimerRunning) {
    placeCursor(6, 0);
    std::vector<std::weak_ptr<KLTimer>> timers;
    for (const char key : QByteArray("abcdefghij")) {
        QTest::keyClick(view, key);
        timers.push_back(global->tTextDidChange);
    }
    for (size_t i = 0; i + 1 < timers.size(); ++i) {
        const auto timer = timers[i].lock();
        EXPECT_TRUE(!timer || !timer->isActive()) << "timer of key " << i;
    }
    ASSERT_TRUE(global->tTextDidChange && global->tTextDidChange->isActive());
    EXPECT_DOUBLE_EQ(global->tTextDidChange->intervalSeconds(), 1.0);
    global->tTextDidChangeFired();
    EXPECT_FALSE(global->tTextDidChange->isActive());
    ASSERT_TRUE(global->mycode->tUpdateTimer);
    EXPECT_TRUE(global->mycode->tUpdateTimer->isActive()); // the code pane's work was handed over
}

TEST_F(Completion, TheParserAnswersForAViewFromItsFileAndCursor) {
    const parser& scans = *global->myparser;
    const QString basket = project + "/Basket.NSObject.klvr";
    placeCursor(6);
    EXPECT_EQ(scans.GetCurrentScope(basket, view->position()), "Run");
    EXPECT_EQ(scans.FindType(view, "total", false), "Integer");
    EXPECT_EQ(scans.FindType(view, "me.items.crate.tag", true), "Crate");
    placeCursor(2);
    EXPECT_EQ(scans.FindType(view, "total", false), "String");
    EXPECT_EQ(scans.FindLocalVariable(basket, "Run", "n"), "Integer");
    EXPECT_EQ(scans.FindClassVariable(basket, "x", "Public"), "");
    EXPECT_EQ(scans.FindGlobalVariable("text"), "NSString");
    EXPECT_EQ(scans.GetCustomClassIdentifiers(view, "Crate"), (QStringList{"tag", "Weight()"}));
    EXPECT_EQ(scans.FindType(nullptr, "me", false), "");
}

} // namespace
