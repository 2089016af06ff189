#pragma once
// The framing of the language server's input: messages of "Content-Length: N" headers,
// an empty line and N bytes of JSON. Bytes are fed as they arrive, in pieces of any
// size; each whole message, and each header block that cannot be read, comes out as an
// event. A header block without a usable length is dropped up to its empty line, so
// the reader finds the next message after garbage.

#include <QByteArray>
#include <QList>
#include <QString>

namespace lsp {

struct ReaderEvent {
    enum class Kind { Message, BadHeader };
    Kind kind = Kind::Message;
    QByteArray body; // the JSON of a message
    QString why;     // what was wrong with a header
};

class MessageReader {
public:
    // Longest header block and body taken; a longer body is skipped unread.
    static constexpr qsizetype maxHeaderBytes = 64 * 1024;
    static constexpr qint64 maxBodyBytes = qint64(512) << 20;

    void feed(const char* data, qsizetype size, QList<ReaderEvent>& events);
    // Whether a message has begun but not ended.
    bool midMessage() const { return !buffer_.isEmpty() || bodyLength_ >= 0 || skip_ > 0; }

private:
    QByteArray buffer_;
    qint64 bodyLength_ = -1; // the length of the body being read, -1 while in a header
    qint64 skip_ = 0;        // bytes of a refused body still to drop
};

} // namespace lsp
