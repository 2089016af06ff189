// Compiler errors: taking the user to the file and line an error names, remembering
// the last error and returning to it, and the two log panels.
#include "buildrun/compiler_output.h"
#include "buildrun/log_panel.h"
#include "frame/global.h"
#include "frame/mainwindow.h"

#include <QApplication>

void Global::ShowError(const QString& text) {
    KLVR_TRACE("ShowError");
    const CompilerError error = cutCompilerError(text);
    if (bIBDelayedShow && mymainwindow) {
        mymainwindow->raise();
        mymainwindow->activateWindow();
    }
    bIBDelayedShow = false;
    ShowLastError(error.text, error.file, error.line);
    const QString path = ProjectPath + QLatin1Char('/') + error.file;
    if (!error.file.isEmpty() && KLVR_NSFILEMANAGER_EXISTSFILE(path)) {
        ProjectOpenCode(path);
        ProjectCurrentCodeGotoLine(error.line);
        ProjectStatusBar(error.text);
        compilerLogPanel->hide();
        KLVR_MSGBOX(error.text, QString());
    } else {
        KLVR_MSGBOX(QStringLiteral("Internal Error. Please report back to us."), error.text);
    }
}

void Global::ShowInternalError(const Value& text) {
    KLVR_TRACE("ShowInternalError");
    ShowLastError(text.toString(), QString(), 0);
    if (text.isNil())
        KLVR_MSGBOX(QStringLiteral("Nil"), QString());
    KLVR_MSGBOX(QStringLiteral("Internal Error -> Objective-C compiler failure. Please report back to us."),
                QStringLiteral("Please send us the log from the Compiler Window."));
}

void Global::ShowLastError(const QString& text, const QString& file, qint64 line) {
    sLastErrorText = text;
    sLastErrorFile = file;
    nLastErrorLine = line;
}

void Global::LastError(const Value&) { global_lasterror(); }

void Global::global_lasterror() {
    KLVR_TRACE("global_lasterror");
    if (sLastErrorFile.isEmpty())
        return;
    ProjectOpenCode(ProjectPath + QLatin1Char('/') + sLastErrorFile);
    if (nLastErrorLine != 0)
        ProjectCurrentCodeGotoLine(nLastErrorLine);
    ProjectStatusBar(sLastErrorText);
}

void Global::CompilerLogPanel(const Value&) { global_compilerlogpanel(); }

void Global::global_compilerlogpanel() {
    compilerLogPanel->show();
    compilerLogPanel->raise();
}

void Global::RunLogPanel(const Value&) { global_runlogpanel(); }

void Global::global_runlogpanel() {
    runLogPanel->show();
    runLogPanel->raise();
}
