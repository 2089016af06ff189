// The live diagnostics' marks in the editor view: an indicator under the text of each
// line with an error, a mark in the symbol margin, and the message as a tooltip.
#include "editor/kltextview.h"

#include <QHelpEvent>
#include <QToolTip>

namespace {

// Numbers apart from the view's other markers (breakpoints 1, separators 2); the view
// uses no other indicator.
constexpr int DiagnosticMarker = 3;
constexpr int DiagnosticIndicator = 9;
constexpr int SymbolMarginIndex = 1;
// The underline covers at most this many bytes of a line: on a very long line only its
// start is marked, so the mark costs what it costs on a short line.
constexpr long UnderlineBytes = 4096;

// Shows the message of the line under the mouse as its tooltip.
class DiagnosticTips : public QObject {
public:
    explicit DiagnosticTips(KLTextView* view) : QObject(view), view_(view) {}

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() != QEvent::ToolTip)
            return false;
        const auto* help = static_cast<QHelpEvent*>(event);
        const long position = view_->SendScintilla(QsciScintilla::SCI_POSITIONFROMPOINT, long(help->pos().x()),
                                                   long(help->pos().y()));
        const QString message =
            view_->diagnosticAt(view_->SendScintilla(QsciScintilla::SCI_LINEFROMPOSITION, position) + 1);
        if (message.isEmpty()) {
            QToolTip::hideText();
            return false;
        }
        QToolTip::showText(help->globalPos(), message, view_->viewport());
        return true;
    }

private:
    KLTextView* view_;
};

} // namespace

void KLTextView::configureDiagnostics() {
    diagnosticsConfigured_ = true;
    SendScintilla(SCI_MARKERDEFINE, DiagnosticMarker, SC_MARK_SHORTARROW);
    SendScintilla(SCI_MARKERSETBACK, DiagnosticMarker, QColor(0xd0, 0x20, 0x20));
    SendScintilla(SCI_MARKERSETFORE, DiagnosticMarker, QColor(0x90, 0x10, 0x10));
    SendScintilla(SCI_SETMARGINMASKN, SymbolMarginIndex,
                  SendScintilla(SCI_GETMARGINMASKN, SymbolMarginIndex) | (1 << DiagnosticMarker));
    SendScintilla(SCI_INDICSETSTYLE, DiagnosticIndicator, INDIC_SQUIGGLE);
    SendScintilla(SCI_INDICSETFORE, DiagnosticIndicator, QColor(0xe0, 0x10, 0x10));
    viewport()->installEventFilter(new DiagnosticTips(this));
}

void KLTextView::setLineDiagnostics(const QList<LiveDiagnostic>& diagnostics) {
    if (!diagnosticsConfigured_)
        configureDiagnostics();
    QList<LiveDiagnostic> current;
    for (const DiagnosticMark& mark : std::as_const(diagnosticMarks_))
        current.append({int(SendScintilla(SCI_MARKERLINEFROMHANDLE, mark.handle)) + 1, mark.message});
    if (current == diagnostics)
        return; // the same marks: nothing to redraw
    SendScintilla(SCI_SETINDICATORCURRENT, DiagnosticIndicator);
    for (const DiagnosticMark& mark : std::as_const(diagnosticMarks_)) {
        const long lineNo = SendScintilla(SCI_MARKERLINEFROMHANDLE, mark.handle);
        if (lineNo < 0)
            continue;
        const long start = SendScintilla(SCI_POSITIONFROMLINE, lineNo);
        SendScintilla(SCI_INDICATORCLEARRANGE, start, SendScintilla(SCI_GETLINEENDPOSITION, lineNo) - start);
        SendScintilla(SCI_MARKERDELETEHANDLE, mark.handle);
    }
    diagnosticMarks_.clear();
    const long lineCount = SendScintilla(SCI_GETLINECOUNT);
    for (const LiveDiagnostic& diagnostic : diagnostics) {
        const long lineNo = qBound(0L, long(diagnostic.line) - 1, lineCount - 1);
        // Under the line's text, from its first non-blank character.
        const long start = SendScintilla(SCI_GETLINEINDENTPOSITION, lineNo);
        const long end = qMin(long(SendScintilla(SCI_GETLINEENDPOSITION, lineNo)), start + UnderlineBytes);
        if (end > start)
            SendScintilla(SCI_INDICATORFILLRANGE, start, end - start);
        diagnosticMarks_.append({int(SendScintilla(SCI_MARKERADD, lineNo, DiagnosticMarker)), diagnostic.message});
    }
}

QString KLTextView::diagnosticAt(qint64 line) const {
    for (const DiagnosticMark& mark : diagnosticMarks_)
        if (SendScintilla(SCI_MARKERLINEFROMHANDLE, mark.handle) + 1 == line)
            return mark.message;
    return QString();
}

QList<qint64> KLTextView::diagnosticLines() const {
    QList<qint64> lines;
    for (const DiagnosticMark& mark : diagnosticMarks_)
        lines << SendScintilla(SCI_MARKERLINEFROMHANDLE, mark.handle) + 1;
    return lines;
}
