// The main window at its default size and at 800 by 600: every toolbar item and every
// navigator shows whole, none overlaps another.
#include "support/ide_fixture.h"

#include <QComboBox>
#include <QStyleOptionComboBox>
#include <QTest>
#include <QToolBar>

namespace {
// A class with many declarations of every kind, so the navigators' titles are long.
QByteArray crowdedClass() {
    QByteArray text = "\n";
    for (int i = 0; i < 12; ++i)
        text += "Function f" + QByteArray::number(i) + "() As Integer\nEnd Function\nSub s" + QByteArray::number(i) +
                "()\nEnd Sub\nDim d" + QByteArray::number(i) + " As Integer\nConst c" + QByteArray::number(i) +
                " = 1\nAction a" + QByteArray::number(i) + "()\nEnd Action\nEvent e" + QByteArray::number(i) +
                "()\nEnd Event\nIBOutlet o" + QByteArray::number(i) + " As NSButton\nIBAction b" +
                QByteArray::number(i) + "()\nEnd IBAction\nDelegate g" + QByteArray::number(i) +
                "()\nEnd Delegate\n";
    return text;
}

// The width a pop-up needs to show its current title whole, with its frame and arrow.
int titleWidth(const QComboBox* popUp) {
    QStyleOptionComboBox option;
    option.initFrom(popUp);
    option.frame = popUp->hasFrame();
    const QFontMetrics metrics = popUp->fontMetrics();
    const QSize text(metrics.horizontalAdvance(popUp->currentText()), metrics.height());
    return popUp->style()->sizeFromContents(QStyle::CT_ComboBox, &option, text, popUp).width();
}

// The widgets of a row that must show whole: (name, geometry in the window, width it needs).
struct Shown {
    QString name;
    QRect rect;
    int needed;
};

QStringList problems(const QList<Shown>& items, const QRect& area) {
    QStringList found;
    for (qsizetype i = 0; i < items.size(); ++i) {
        if (items[i].rect.width() < items[i].needed)
            found << QStringLiteral("%1 is cut (%2 of %3)").arg(items[i].name).arg(items[i].rect.width()).arg(items[i].needed);
        if (!area.contains(items[i].rect))
            found << items[i].name + " leaves its row";
        for (qsizetype j = i + 1; j < items.size(); ++j)
            if (items[i].rect.intersects(items[j].rect))
                found << items[i].name + " overlaps " + items[j].name;
    }
    return found;
}
} // namespace

class WindowLayout : public IdeFixture, public ::testing::WithParamInterface<QSize> {};

TEST_P(WindowLayout, ToolbarItemsAndNavigatorsShowWhole) {
    Global& g = start();
    g.ProjectOpen(makeProject("Layout", {{"Global.NSObject.klvr", crowdedClass()}}));
    g.mymainwindow->showNormal();
    g.mymainwindow->resize(GetParam());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(g.mymainwindow));
    QApplication::processEvents();
    QWidget* window = g.mymainwindow;
    const auto inWindow = [window](QWidget* w) { return QRect(w->mapTo(window, QPoint(0, 0)), w->size()); };

    QList<Shown> navigators;
    for (QComboBox* navigator : {g.mycode->alllist.data(), g.mycode->sublist.data(), g.mycode->functionlist.data(),
                                 g.mycode->actionlist.data(), g.mycode->eventlist.data(), g.mycode->Dimlist.data(),
                                 g.mycode->constlist.data(), g.mycode->propertylist.data(),
                                 g.mycode->iboutletlist.data(), g.mycode->ibactionlist.data()}) {
        ASSERT_TRUE(navigator->isVisible()) << navigator->objectName().toStdString();
        navigators.append({navigator->objectName() + " (" + navigator->currentText() + ")", inWindow(navigator),
                           navigator->sizeHint().width()});
    }
    EXPECT_EQ(g.mycode->functionlist->currentText().toStdString(), "Function (12)");
    EXPECT_EQ(problems(navigators, inWindow(g.mycode)).join("; ").toStdString(), "");

    QList<Shown> tools;
    for (QAction* item : g.mymainwindow->mytoolbar->actions()) {
        QWidget* view = g.mymainwindow->mytoolbar->widgetForAction(item);
        if (!view || item->isSeparator() || !item->isVisible() || item->objectName().isEmpty())
            continue;
        EXPECT_TRUE(view->isVisible()) << item->objectName().toStdString() << " is pushed out of the toolbar";
        // A pop-up must show its title and its arrow; the other items their minimum.
        if (auto* popUp = view->findChild<QComboBox*>())
            tools.append({item->objectName() + " (" + popUp->currentText() + ")", inWindow(popUp), titleWidth(popUp)});
        else
            tools.append({item->objectName(), inWindow(view), view->minimumSizeHint().width()});
    }
    EXPECT_EQ(tools.size(), 12);
    EXPECT_EQ(problems(tools, inWindow(g.mymainwindow->mytoolbar)).join("; ").toStdString(), "");
}

INSTANTIATE_TEST_SUITE_P(Menus, WindowLayout, ::testing::Values(Global::mainWindowFrame(QRect(0, 0, 1280, 800)).size(), QSize(800, 600)),
                         [](const auto& info) { return info.param.width() == 800 ? "Size800x600" : "DefaultSize"; });
