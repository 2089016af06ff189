#include "lsp/message_reader.h"

namespace lsp {

namespace {

// The value of a "Content-Length:" header among `lines`; -1 when none is usable. The
// name is found anywhere in its line, so bytes left over from a message whose length
// was too short do not hide the next header.
qint64 contentLength(const QByteArray& block, QString& why) {
    static const QByteArray name = QByteArrayLiteral("content-length:");
    qint64 length = -1;
    for (const QByteArray& line : block.split('\n')) {
        const qsizetype at = line.toLower().indexOf(name);
        if (at < 0)
            continue;
        bool ok = false;
        const qint64 value = line.mid(at + name.size()).trimmed().toLongLong(&ok);
        if (!ok || value < 0) {
            why = QStringLiteral("Content-Length is not a number of bytes");
            return -1;
        }
        length = value;
    }
    if (length < 0 && why.isEmpty())
        why = QStringLiteral("Content-Length missing");
    return length;
}

} // namespace

void MessageReader::feed(const char* data, qsizetype size, QList<ReaderEvent>& events) {
    if (skip_ > 0) {
        const qsizetype dropped = qsizetype(qMin<qint64>(skip_, size));
        skip_ -= dropped;
        data += dropped;
        size -= dropped;
    }
    buffer_.append(data, size);
    qsizetype pos = 0;
    for (;;) {
        if (skip_ > 0) {
            const qsizetype dropped = qsizetype(qMin<qint64>(skip_, buffer_.size() - pos));
            skip_ -= dropped;
            pos += dropped;
            if (skip_ > 0)
                break;
        }
        if (bodyLength_ >= 0) {
            if (buffer_.size() - pos < bodyLength_)
                break;
            events.append({ReaderEvent::Kind::Message, buffer_.mid(pos, qsizetype(bodyLength_)), {}});
            pos += qsizetype(bodyLength_);
            bodyLength_ = -1;
            continue;
        }
        const qsizetype end = buffer_.indexOf("\r\n\r\n", pos);
        if (end < 0) {
            if (buffer_.size() - pos > maxHeaderBytes) {
                events.append({ReaderEvent::Kind::BadHeader, {}, QStringLiteral("header too long")});
                // Keep the last bytes: they may begin the end of the next header.
                pos = buffer_.size() - 3;
            }
            break;
        }
        QString why;
        const qint64 length = contentLength(buffer_.mid(pos, end - pos), why);
        pos = end + 4;
        if (length < 0) {
            events.append({ReaderEvent::Kind::BadHeader, {}, why});
        } else if (length > maxBodyBytes) {
            events.append({ReaderEvent::Kind::BadHeader, {}, QStringLiteral("message too large")});
            skip_ = length;
        } else {
            bodyLength_ = length;
        }
    }
    buffer_.remove(0, pos);
}

} // namespace lsp
