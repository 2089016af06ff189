// The line field and the sampling of the cursor for the position history.
#include "editor/code.h"
#include "editor/kltextview.h"
#include "frame/global.h"

#include <QLineEdit>

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
