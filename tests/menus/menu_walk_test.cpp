// Every menu command, chosen with no project open and with one open: nothing fails,
// and no modal window or dialog is left behind.
#include "support/ide_fixture.h"

#include <QApplication>
#include <QDialog>
#include <QMenuBar>
#include <QTimer>

namespace {
// Every command item of a menu and its submenus, rebuilding each menu as it would
// be before opening.
void collect(QMenu* menu, QList<QPointer<QAction>>& items) {
    emit menu->aboutToShow();
    for (QAction* item : menu->actions()) {
        if (item->menu())
            collect(item->menu(), items);
        else if (!item->isSeparator())
            items.append(item);
    }
}
} // namespace

class MenuWalk : public IdeFixture, public ::testing::WithParamInterface<bool> {};

TEST_P(MenuWalk, EveryCommandRunsAndLeavesNoModalWindow) {
    const bool withProject = GetParam();
    writeFile(bundlePath() + "/Contents/Resources/Examples/Hello/Global.NSObject.klvr", "\n");
    Global& g = start();
    if (withProject)
        g.ProjectOpen(makeProject("Walked", {{"Global.NSObject.klvr", "Sub Main\nEnd Sub\n"},
                                             {"other.NSObject.klvr", "Dim x As Integer\n"},
                                             {"Resources/Extra.xib", "<x/>"}}));
    // A command that opens a modal window would wait for the user forever: such a
    // window is closed and remembered.
    QStringList modals;
    QTimer closer;
    QObject::connect(&closer, &QTimer::timeout, [&modals] {
        if (QWidget* modal = QApplication::activeModalWidget()) {
            modals << modal->windowTitle();
            modal->close();
        }
    });
    closer.start(50);
    int chosen = 0;
    for (QMenu* menu : g.menuBar()->findChildren<QMenu*>(Qt::FindDirectChildrenOnly)) {
        QList<QPointer<QAction>> items;
        collect(menu, items);
        for (const QPointer<QAction>& item : items) {
            // Quitting ends the test program's window; Examples would replace the project.
            if (!item || !item->isEnabled() || item->objectName() == "menu_Quit" ||
                (withProject && item->objectName() == "menu_Examples"))
                continue;
            SCOPED_TRACE(item->text().toStdString());
            item->trigger();
            ++chosen;
            QApplication::processEvents();
            EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
        }
    }
    g.Stop();
    EXPECT_GT(chosen, withProject ? 40 : 20);
    EXPECT_EQ(modals, QStringList());
    for (QWidget* window : QApplication::topLevelWidgets()) {
        const bool modalDialog = qobject_cast<QDialog*>(window) && window->isVisible() && window->isModal();
        EXPECT_FALSE(modalDialog) << window->windowTitle().toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Menus, MenuWalk, ::testing::Values(false, true),
                         [](const auto& info) { return info.param ? "WithProject" : "WithoutProject"; });
