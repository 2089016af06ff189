#pragma once
// A source file as the editor holds it: the encoding of its bytes, whether they start
// with a byte order mark, and what the file on disk looked like when the editor last
// read or wrote it. Plain code over bytes and files; no widgets, safe on any thread.
//
// Encodings. A file that is valid UTF-8 is UTF-8. Any other file is Windows-1252, the
// 8-bit encoding that careful editors fall back to: every one of its 256 byte values
// stands for one character (the five values the code page leaves open stand for the
// control characters of the same number), so decoding and encoding again gives back
// every byte, and a file is never written in a mix of two encodings.

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <optional>

enum class TextEncoding { Utf8, Windows1252 };
// How new lines are written in a file: as its first line break is (LF without any).
enum class LineEnds { Lf, Crlf, Cr };

// What identifies the content of a file on disk without reading it.
struct DiskStamp {
    bool exists = false;
    qint64 size = -1;
    qint64 modifiedNs = 0; // modification time, nanoseconds since the epoch
    quint64 inode = 0;
    bool operator==(const DiskStamp&) const = default;
    // The stamp of the file at `path` now (exists == false when there is none).
    static DiskStamp of(const QString& path);
};

namespace document_file {

// The file's bytes as the editor holds them: UTF-8 without the byte order mark.
struct Decoded {
    QByteArray utf8;
    TextEncoding encoding = TextEncoding::Utf8;
    bool byteOrderMark = false;
    LineEnds lineEnds = LineEnds::Lf;
};
Decoded decode(const QByteArray& fileBytes);

// The bytes a save writes for text held as UTF-8 (the inverse of decode); nullopt
// when the text holds a character the encoding cannot (nothing is written then).
std::optional<QByteArray> encode(const QByteArray& utf8, TextEncoding encoding, bool byteOrderMark);

// `text` with every line break (LF, CRLF or CR) written as `lineEnds`.
QString withLineEnds(const QString& text, LineEnds lineEnds);

// The characters of `text` that `encoding` cannot hold, each once, in order.
QString unencodable(QStringView text, TextEncoding encoding);

// "UTF-8", "UTF-8 with BOM", "Windows-1252".
QString encodingName(TextEncoding encoding, bool byteOrderMark);

// A cheap fingerprint of a file's bytes, to tell a touched file from a changed one.
quint64 fingerprint(const QByteArray& bytes);

enum class WriteStatus {
    Written,
    ChangedOnDisk, // the file is not what the editor last read or wrote: nothing written
    DeletedOnDisk, // the file the editor read is gone: it is not created again
    Failed,        // the write itself failed (read-only file, full disk, no folder...)
};
struct WriteResult {
    WriteStatus status = WriteStatus::Failed;
    QString error;   // why a write failed, for the user
    DiskStamp stamp; // the file's stamp after a write
};

// Writes `bytes` to `path` atomically (a crash leaves the old file or the new one),
// provided the disk still holds the file `expected` describes. A file without write
// permission is never replaced. `expected` with exists == false means a new file.
WriteResult writeChecked(const QString& path, const QByteArray& bytes, const std::optional<DiskStamp>& expected);

// Why the editor may not write the file at `path` ("" when it may): a file without
// write permission, or a folder in which no new file can be made to replace it.
QString whyNotWritable(const QString& path);

// Reads a whole file; nullopt when it cannot be read.
std::optional<QByteArray> readAll(const QString& path);

} // namespace document_file
