// The view's file: loading and decoding, saving on the writer thread in order and only
// over the file the view knows, and the insertions that keep the file's form.
#include "editor/kltextview.h"

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QMutex>
#include <QThreadPool>

struct KLTextView::FileState {
    QMutex mutex; // guards the three fields below
    std::optional<DiskStamp> stamp;
    quint64 fingerprint = 0;
    std::function<void(const QByteArray&)> beforeWrite;
};

bool KLTextView::load(const QString& path) {
    const std::optional<QByteArray> bytes = document_file::readAll(path);
    if (!bytes)
        return false;
    const DiskStamp stamp = DiskStamp::of(path);
    const document_file::Decoded decoded = document_file::decode(*bytes);
    adoptFile(decoded);

    // The text goes in as one change of the whole text, not an edit the owner needs
    // the text of (also NUL bytes).
    setReadOnly(false);
    loading_ = true;
    SendScintilla(SCI_CLEARALL);
    SendScintilla(SCI_APPENDTEXT, static_cast<unsigned long>(decoded.utf8.size()), decoded.utf8.constData());
    loading_ = false;
    pendingInsertLength_ = 0;
    SendScintilla(SCI_MARKERDELETEALL, -1);
    SendScintilla(SCI_EMPTYUNDOBUFFER);
    SendScintilla(SCI_SETSAVEPOINT);
    SendScintilla(SCI_GOTOPOS, 0);
    path_ = path;
    scope_ = {};
    lastMatch_ = {-1, -1};
    queuedChangeCount_ = -1;
    fileReadOnly_ = !document_file::whyNotWritable(path).isEmpty();
    setReadOnly(fileReadOnly_);
    setDiskState(stamp, document_file::fingerprint(*bytes));
    return true;
}

void KLTextView::adoptFile(const document_file::Decoded& decoded) {
    encoding_ = decoded.encoding;
    byteOrderMark_ = decoded.byteOrderMark;
    setEolMode(decoded.lineEnds == LineEnds::Crlf ? EolWindows : decoded.lineEnds == LineEnds::Cr ? EolMac : EolUnix);
}

QByteArray KLTextView::editorBytes() const {
    const long length = SendScintilla(SCI_GETLENGTH);
    const auto* data = static_cast<const char*>(SendScintillaPtrResult(SCI_GETCHARACTERPOINTER));
    return data ? QByteArray(data, length) : QByteArray();
}

QByteArray KLTextView::documentBytes() const {
    const QByteArray text = editorBytes();
    // Text that the encoding cannot hold is refused as it is typed; should some reach
    // the view all the same, a save refuses to write it and these are the view's bytes.
    return document_file::encode(text, encoding_, byteOrderMark_).value_or(text);
}

bool KLTextView::usesCrlf() const { return eolMode() == EolWindows; }

QString KLTextView::lineEndName() const {
    switch (eolMode()) {
    case EolWindows:
        return QStringLiteral("CRLF");
    case EolMac:
        return QStringLiteral("CR");
    default:
        return QStringLiteral("LF");
    }
}

QString KLTextView::encodingName() const { return document_file::encodingName(encoding_, byteOrderMark_); }

bool KLTextView::needsSave() const { return isModified() && queuedChangeCount_ != changeCount_; }

DiskStamp KLTextView::diskStamp() const {
    if (!fileState_)
        return {};
    QMutexLocker guard(&fileState_->mutex);
    return fileState_->stamp.value_or(DiskStamp());
}

quint64 KLTextView::diskFingerprint() const {
    if (!fileState_)
        return 0;
    QMutexLocker guard(&fileState_->mutex);
    return fileState_->fingerprint;
}

void KLTextView::setDiskState(const DiskStamp& stamp, quint64 fingerprint) {
    if (!fileState_)
        fileState_ = std::make_shared<FileState>();
    QMutexLocker guard(&fileState_->mutex);
    fileState_->stamp = stamp;
    fileState_->fingerprint = fingerprint;
}

bool KLTextView::save(const QString& path) {
    const bool written = queueWrite(path).get();
    // The writer posted its report before it answered: deliver it now, so the save
    // point and saveFinished() belong to this call.
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
    return written;
}

std::shared_future<bool> KLTextView::saveInBackground(const QString& path) { return queueWrite(path); }

std::shared_future<bool> KLTextView::queueWrite(const QString& path) {
    using document_file::WriteResult;
    using document_file::WriteStatus;
    auto done = std::make_shared<std::promise<bool>>();
    std::shared_future<bool> result = done->get_future().share();
    // The view's own file is written only over what the view last read or wrote;
    // another path (a copy) is written as it is.
    std::shared_ptr<FileState> state = !path.isEmpty() && path == path_ ? fileState_ : nullptr;
    const QByteArray text = editorBytes();
    const TextEncoding encoding = encoding_;
    const bool mark = byteOrderMark_;
    const qint64 snapshot = changeCount_;
    queuedChangeCount_ = changeCount_;
    queueOnWriter([this, path, text, encoding, mark, snapshot, state, done] {
        WriteResult written;
        const std::optional<QByteArray> bytes = document_file::encode(text, encoding, mark);
        if (!bytes) {
            written.error = QStringLiteral("the text holds characters that %1 cannot hold")
                                .arg(document_file::encodingName(encoding, mark));
        } else {
            std::optional<DiskStamp> expected;
            std::function<void(const QByteArray&)> beforeWrite;
            if (state) {
                QMutexLocker guard(&state->mutex);
                expected = state->stamp;
                beforeWrite = state->beforeWrite;
            }
            if (beforeWrite)
                beforeWrite(*bytes);
            written = document_file::writeChecked(path, *bytes, expected);
            if (state && written.status == WriteStatus::Written) {
                QMutexLocker guard(&state->mutex);
                state->stamp = written.stamp;
                state->fingerprint = document_file::fingerprint(*bytes);
            }
        }
        // Posted before the future is fulfilled, so a waiter that then delivers posted
        // events sees the state that belongs to this write.
        QMetaObject::invokeMethod(
            this,
            [this, snapshot, written] {
                if (written.status == WriteStatus::Written) {
                    // The text is unmodified only if nothing changed since it was taken.
                    if (changeCount_ == snapshot)
                        SendScintilla(SCI_SETSAVEPOINT);
                } else if (queuedChangeCount_ == snapshot) {
                    queuedChangeCount_ = -1; // not written: the next pass tries again
                }
                emit saveFinished(int(written.status), written.error);
            },
            Qt::QueuedConnection);
        done->set_value(written.status == WriteStatus::Written);
    });
    return result;
}

void KLTextView::replaceAllAsOneStep(const QByteArray& fileBytes) {
    const document_file::Decoded decoded = document_file::decode(fileBytes);
    adoptFile(decoded);
    const bool readOnly = isReadOnly();
    setReadOnly(false);
    SendScintilla(SCI_BEGINUNDOACTION);
    SendScintilla(SCI_SETTARGETRANGE, 0, SendScintilla(SCI_GETLENGTH));
    SendScintilla(SCI_REPLACETARGET, static_cast<unsigned long>(decoded.utf8.size()), decoded.utf8.constData());
    SendScintilla(SCI_ENDUNDOACTION);
    setReadOnly(readOnly);
}

QString KLTextView::toDocumentLineEnds(const QString& text) const {
    return document_file::withLineEnds(text, eolMode() == EolWindows ? LineEnds::Crlf
                                             : eolMode() == EolMac  ? LineEnds::Cr
                                                                    : LineEnds::Lf);
}

void KLTextView::insertAsOneStep(qint64 utf16Position, const QString& text) {
    const QByteArray bytes = toDocumentLineEnds(keepEncodable(text)).toUtf8();
    SendScintilla(SCI_BEGINUNDOACTION);
    SendScintilla(SCI_INSERTTEXT, long(bytesFromUtf16(utf16Position)), bytes.constData());
    SendScintilla(SCI_ENDUNDOACTION);
}

void KLTextView::queueOnWriter(std::function<void()> job) {
    if (!writer_) {
        writer_ = std::make_unique<QThreadPool>();
        writer_->setMaxThreadCount(1); // one writer: writes of this view stay in order
    }
    writer_->start(std::move(job));
}

void KLTextView::waitForWriter() {
    if (writer_)
        writer_->waitForDone();
}

void KLTextView::setBeforeWrite(std::function<void(const QByteArray& bytes)> beforeWrite) {
    QMutexLocker guard(&fileState_->mutex);
    fileState_->beforeWrite = std::move(beforeWrite);
}

void KLTextView::convertToUtf8() {
    encoding_ = TextEncoding::Utf8;
    byteOrderMark_ = false;
}

QString KLTextView::keepEncodable(const QString& inserted) {
    const QString refused = document_file::unencodable(inserted, encoding_);
    if (refused.isEmpty())
        return inserted;
    QString kept;
    for (qsizetype i = 0; i < inserted.size(); ++i) {
        const qsizetype n = inserted[i].isHighSurrogate() && i + 1 < inserted.size() ? 2 : 1;
        if (!refused.contains(QStringView(inserted).mid(i, n)))
            kept += QStringView(inserted).mid(i, n);
        i += n - 1;
    }
    // Told after the event that brought them, so a question can be asked then.
    QMetaObject::invokeMethod(
        this, [this, refused] { emit charactersRefused(refused); }, Qt::QueuedConnection);
    return kept;
}

void KLTextView::inputMethodEvent(QInputMethodEvent* event) {
    if (encoding_ != TextEncoding::Utf8 && !event->commitString().isEmpty()) {
        const QString kept = keepEncodable(event->commitString());
        if (kept != event->commitString()) {
            QInputMethodEvent filtered(event->preeditString(), event->attributes());
            filtered.setCommitString(kept, event->replacementStart(), event->replacementLength());
            QsciScintilla::inputMethodEvent(&filtered);
            return;
        }
    }
    QsciScintilla::inputMethodEvent(event);
}

QByteArray KLTextView::fromMimeData(const QMimeData* source, bool& rectangular) const {
    const QByteArray text = QsciScintilla::fromMimeData(source, rectangular);
    if (encoding_ == TextEncoding::Utf8)
        return text;
    return const_cast<KLTextView*>(this)->keepEncodable(QString::fromUtf8(text)).toUtf8();
}
