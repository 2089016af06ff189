// The menu bar's own commands: About, plug-ins, preferences, the Edit basics, Close
// and Quit.
#include "frame/about_window.h"
#include "frame/global.h"
#include "frame/mainwindow.h"
#include "editor/code.h"
#include "editor/kltextview.h"

#include <QApplication>
#include <QGuiApplication>
#include <QLineEdit>
#include <QScreen>

void Global::About(const Value&) {
    KLVR_TRACE("About");
    if (!AboutWindow)
        AboutWindow = new AboutBox(BuildDate ? BuildDate->text() : QString());
    const QScreen* screen = QGuiApplication::primaryScreen();
    const QRect area = screen ? screen->availableGeometry() : QRect(0, 0, 1440, 900);
    AboutWindow->move(area.center() - QPoint(AboutWindow->width() / 2, AboutWindow->height() / 2));
    AboutWindow->show();
    AboutWindow->raise();
}

void Global::Plugins(const Value&) { KLVR_MSGBOX(QStringLiteral("Kelvaro"), QStringLiteral("No plug-ins available yet.")); }

void Global::OpenPreferences(const Value&) { KLVR_MSGBOX(QStringLiteral("There are no preferences editable yet."), QString()); }

namespace {
// The Edit commands act on the line field that has the focus (the search fields, the
// line field of a panel), else on the shown editor view.
template <typename OnField, typename OnView>
void editCommand(Global* global, OnField onField, OnView onView) {
    if (auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget())) {
        onField(field);
        return;
    }
    if (KLTextView* view = global->mytextview())
        onView(view);
}
} // namespace

void Global::Undo(const Value&) {
    editCommand(this, [](QLineEdit* f) { f->undo(); }, [](KLTextView* v) { v->undo(); });
}
void Global::Redo(const Value&) {
    editCommand(this, [](QLineEdit* f) { f->redo(); }, [](KLTextView* v) { v->redo(); });
}
void Global::Cut(const Value&) {
    editCommand(this, [](QLineEdit* f) { f->cut(); }, [](KLTextView* v) { v->cut(); });
}
void Global::Copy(const Value&) {
    editCommand(this, [](QLineEdit* f) { f->copy(); }, [](KLTextView* v) { v->copy(); });
}
void Global::Paste(const Value&) {
    editCommand(this, [](QLineEdit* f) { f->paste(); }, [](KLTextView* v) { v->paste(); });
}
void Global::SelectAll(const Value&) {
    editCommand(this, [](QLineEdit* f) { f->selectAll(); }, [](KLTextView* v) { v->selectAll(); });
}

void Global::CloseDocument(const Value&) {
    KLVR_TRACE("CloseDocument");
    if (!ProjectIsLoaded() || !mycode || !mycode->SomeDocumentOpened())
        return;
    const QString path = KLVR_KLTEXTVIEW_FILENAME(mycode->currentView());
    if (!path.isEmpty())
        ProjectCloseCode(path);
}

void Global::Quit(const Value&) {
    KLVR_TRACE("Quit");
    if (mymainwindow)
        mymainwindow->close(); // saves first; the window ends the application
    else
        QApplication::quit();
}
