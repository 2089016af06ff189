// Keys pressed in the editor view: the menu bar's keys reach the menu bar, and no
// key of the editor component silently cuts, swaps or re-cases lines.
#include "support/ide_fixture.h"

#include <QTest>

struct KeyCase {
    const char* name;
    std::vector<std::pair<Qt::Key, Qt::KeyboardModifiers>> keys;
    const char* expected; // the text after typing "x" at the start and the keys
};

void PrintTo(const KeyCase& c, std::ostream* os) { *os << c.name; }

class EditorKeys : public IdeFixture, public ::testing::WithParamInterface<KeyCase> {};

TEST_P(EditorKeys, KeysDoWhatTheMenusSay) {
    Global& g = start();
    g.ProjectOpen(makeProject("Keys", {{"Global.NSObject.klvr", "one\ntwo\n"}}));
    KLTextView* view = g.mytextview();
    ASSERT_TRUE(g.mycode->SomeDocumentOpened());
    g.mymainwindow->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(g.mymainwindow));
    view->setFocus();
    view->setCursorPosition(0, 0);
    QTest::keyClick(view, Qt::Key_X);
    for (const auto& [key, modifiers] : GetParam().keys)
        QTest::keyClick(view, key, modifiers);
    EXPECT_EQ(view->text(), QString::fromUtf8(GetParam().expected));
}

const auto Ctrl = Qt::ControlModifier;
const auto CtrlShift = Qt::ControlModifier | Qt::ShiftModifier;
INSTANTIATE_TEST_SUITE_P(
    Menus, EditorKeys,
    ::testing::Values(KeyCase{"CtrlLDoesNotCutTheLine", {{Qt::Key_L, Ctrl}}, "xone\ntwo\n"},
                      KeyCase{"CtrlTDoesNotSwapLines", {{Qt::Key_Down, {}}, {Qt::Key_T, Ctrl}}, "xone\ntwo\n"},
                      KeyCase{"CtrlShiftLDoesNotDeleteTheLine", {{Qt::Key_L, CtrlShift}}, "xone\ntwo\n"},
                      KeyCase{"CtrlZUndoes", {{Qt::Key_Z, Ctrl}}, "one\ntwo\n"},
                      KeyCase{"CtrlShiftZRedoes", {{Qt::Key_Z, Ctrl}, {Qt::Key_Z, CtrlShift}}, "xone\ntwo\n"},
                      KeyCase{"CtrlYRedoes", {{Qt::Key_Z, Ctrl}, {Qt::Key_Y, Ctrl}}, "xone\ntwo\n"},
                      KeyCase{"SelectAllThenCutEmpties", {{Qt::Key_A, Ctrl}, {Qt::Key_X, Ctrl}}, ""}),
    [](const auto& info) { return std::string(info.param.name); });
