// libFuzzer target for the language server's input: the framing reader, fed the bytes
// in pieces whose size the input chooses, must give the same events as fed whole; and
// every message body, read as a list of edits, is applied to a document whose line
// index must then equal that of its text read afresh.
#include "lsp/message_reader.h"
#include "lsp/text_document.h"

#include <cstdint>
#include <cstdlib>

namespace {

void check(bool condition) {
    if (!condition)
        std::abort();
}

// Edits of 5 bytes each: start line and character, end line and character (signed
// bytes, so past-the-end and negative ones occur), then the inserted text's length;
// the text follows (as Latin-1, with "\r" and "\n" likely).
void applyEdits(const QByteArray& body) {
    lsp::TextDocument document(QStringLiteral("a\r\nb\nc\r"));
    qsizetype at = 0;
    while (at + 5 <= body.size()) {
        const auto byte = [&](qsizetype i) { return qsizetype(qint8(body[at + i])); };
        const lsp::TextPosition start{byte(0), byte(1)}, end{byte(2), byte(3)};
        const qsizetype length = qMin<qsizetype>(quint8(body[at + 4]) % 16, body.size() - at - 5);
        document.replace(start, end, QString::fromLatin1(body.mid(at + 5, length)));
        at += 5 + length;
        const lsp::TextDocument fresh(document.text());
        check(document.lineCount() == fresh.lineCount());
        for (qsizetype line = 0; line < fresh.lineCount(); ++line)
            check(document.lineText(line) == fresh.lineText(line));
        const lsp::TextPosition p = document.positionAt(document.offsetAt(start));
        check(document.offsetAt(p) == document.offsetAt(start));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0)
        return 0;
    const qsizetype piece = 1 + data[0] % 64;
    const char* bytes = reinterpret_cast<const char*>(data + 1);
    const qsizetype length = qsizetype(size - 1);

    QList<lsp::ReaderEvent> whole;
    lsp::MessageReader().feed(bytes, length, whole);
    lsp::MessageReader reader;
    QList<lsp::ReaderEvent> pieces;
    for (qsizetype at = 0; at < length; at += piece)
        reader.feed(bytes + at, qMin(piece, length - at), pieces);
    check(pieces.size() == whole.size());
    for (qsizetype i = 0; i < whole.size(); ++i) {
        check(pieces[i].kind == whole[i].kind && pieces[i].body == whole[i].body);
        if (whole[i].kind == lsp::ReaderEvent::Kind::Message)
            applyEdits(whole[i].body);
    }
    return 0;
}
