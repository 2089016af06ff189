// The line field, the sampling of the cursor for the position history, Back and the
// go-to-line dialog.
#include "editor/code.h"
#include "editor/kltextview.h"
#include "frame/global.h"
#include "frame/mainwindow.h"
#include "ui_gotoline.h"

#include <QGuiApplication>
#include <QLineEdit>
#include <QScreen>

void Global::UpdateLine(KLTextView* view) {
    if (mycode && mycode->line && view)
        mycode->line->setText(QStringLiteral(" Ln ") + QString::number(KLVR_KLTEXTVIEW_LINE(view)));
}

void Global::dotLastPosition() {
    KLVR_TRACE("dotLastPosition");
    KLVR_NSTIMER_STOP(tLastPosition);
    qint64 line = KLVR_INTEGER(ProjectCurrentLine());
    if (line != nLastPositionLine2) {
        sLastPositionFile = KLVR_FILENAME(ProjectCurrentFilename());
        nLastPositionLine = line;
    }
    nLastPositionLine2 = line;
}

void Global::global_back() {
    KLVR_TRACE("global_back");
    if (sLastPositionFile.isEmpty())
        return;
    qint64 line = nLastPositionLine;
    ProjectOpenCode(ProjectPath + QLatin1Char('/') + sLastPositionFile);
    if (line != 0)
        ProjectCurrentCodeGotoLine(line);
}

void Global::LastPosition(const Value&) { global_back(); }

void Global::GoToLine(const Value&) {
    KLVR_TRACE("GoToLine");
    if (!ProjectIsLoaded())
        return;
    if (!GoToLineWindow) {
        auto* window = new QWidget(nullptr, Qt::Dialog);
        Ui::GoToLine form;
        form.setupUi(window);
        window->setParent(mymainwindow, Qt::Dialog); // goes with the main window
        GoToLineWindow = window;
        GoToLineNumber = form.GoToLineNumber;
        connect(form.ok, &QPushButton::clicked, this, [this] { GoToLineOK(); });
        connect(form.cancel, &QPushButton::clicked, this, [this] { GoToLineCancel(); });
        connect(form.GoToLineNumber, &QLineEdit::returnPressed, this, [this] { GoToLineOK(); });
    }
    GoToLineNumber->setText(QString());
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        GoToLineWindow->move(screen->availableGeometry().center() - GoToLineWindow->rect().center());
    GoToLineWindow->show();
    GoToLineNumber->setFocus();
}

void Global::GoToLineOK(const Value&) {
    KLVR_TRACE("GoToLineOK");
    GoToLineWindow->hide();
    const QString text = GoToLineNumber->text();
    if (text.isEmpty() || !mycode)
        return;
    // What the text converts to; far beyond any file it is the last line, never an overflow.
    const qint64 n = qBound<qint64>(-1, KLVR_INTEGER(Value(text)), qint64(1) << 40);
    mycode->gotoline(n + 1);
}

void Global::GoToLineCancel(const Value&) {
    if (GoToLineWindow)
        GoToLineWindow->hide();
}
