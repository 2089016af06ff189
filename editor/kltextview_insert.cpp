// Insertions the editing commands make (snippets, shortcut words): one undo step each,
// written in the file's own line endings and encoding.
#include "editor/kltextview.h"

bool KLTextView::replaceSelectionAsOneStep(const QString& text) {
    if (isReadOnly()) {
        emit readOnlyEditAttempted();
        return false;
    }
    const QByteArray bytes = toDocumentLineEnds(keepEncodable(text)).toUtf8();
    SendScintilla(SCI_BEGINUNDOACTION);
    SendScintilla(SCI_REPLACESEL, bytes.constData());
    SendScintilla(SCI_ENDUNDOACTION);
    return true;
}
