// Printing the view: the text as coloured on screen, with a heading of the project and
// the class on every page.
#include "editor/kltextview.h"

#include <QPainter>
#include <QPrintDialog>
#include <Qsci/qsciprinter.h>

namespace {

class HeadedPrinter : public QsciPrinter {
public:
    explicit HeadedPrinter(QString heading) : heading_(std::move(heading)) {}

    void formatPage(QPainter& painter, bool drawing, QRect& area, int pageNumber) override {
        const QString text = heading_ + QStringLiteral("    ") + QString::number(pageNumber);
        const QFontMetrics metrics(painter.font());
        const int height = metrics.height();
        if (drawing)
            painter.drawText(area.left(), area.top() + metrics.ascent(), text);
        // The text starts below the heading and a gap of half a line.
        area.setTop(area.top() + height + height / 2);
    }

private:
    QString heading_;
};

} // namespace

QString KLTextView::printHeading(const QString& projectName, const QString& className) {
    return projectName + QStringLiteral(" - ") + className;
}

bool KLTextView::printTo(QPrinter& printer, const QString& projectName, const QString& className) {
    // QsciPrinter paginates Scintilla's text; it draws onto the printer it is given
    // as its own device, so the request is copied onto one.
    HeadedPrinter headed(printHeading(projectName, className));
    headed.setOutputFormat(printer.outputFormat());
    headed.setOutputFileName(printer.outputFileName());
    headed.setPrinterName(printer.printerName());
    headed.setPageLayout(printer.pageLayout());
    headed.setCopyCount(printer.copyCount());
    headed.setWrapMode(WrapWord);
    return headed.printRange(this) > 0;
}

bool KLTextView::printShowingPrintPanel(const QString& projectName, const QString& className, bool showPanel) {
    QPrinter printer(QPrinter::HighResolution);
    if (showPanel) {
        QPrintDialog dialog(&printer, this);
        if (dialog.exec() != QDialog::Accepted)
            return false;
    }
    return printTo(printer, projectName, className);
}
