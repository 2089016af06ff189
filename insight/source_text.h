#pragma once
// Reading a source file for the scanner: the whole file as stored, decoded as UTF-8
// only when it holds anything besides ASCII (pure ASCII is scanned as bytes).

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <optional>
#include <string_view>

// Which file a path named and which version of it was read: a changed file has a
// different size or modification time (or is another file altogether).
struct FileIdentity {
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = -1;
    qint64 modifiedNanoseconds = 0;
    qint64 changedNanoseconds = 0;

    bool operator==(const FileIdentity&) const = default;
};

// The identity of the file at `path` now, or nothing when there is none.
std::optional<FileIdentity> fileIdentity(const QString& path);

// The bytes of the file, or nothing when it cannot be read (missing, a folder, no
// permission). `identity`, when given, receives the identity of what was read.
std::optional<QByteArray> readSourceBytes(const QString& path, FileIdentity* identity = nullptr);

// The same into `bytes`, whose allocation is reused when it is large enough (a thread
// reading many files keeps touching the same memory). False when it cannot be read.
bool readSourceBytesInto(const QString& path, QByteArray& bytes, FileIdentity* identity = nullptr);

// Whether every byte is below 128, so that the bytes are the text's UTF-16 units.
bool isAscii(std::string_view bytes);

// Whether the bytes can be scanned as they are: ASCII, or valid UTF-8 holding neither
// LATIN SMALL LETTER LONG S nor KELVIN SIGN, the two letters that match ASCII ones when
// letter case is ignored, and not starting with a byte order mark (decoding drops it).
// Anything else is decoded first.
bool scannableAsBytes(std::string_view bytes);

// The text of a file's bytes as the editor shows it: UTF-8 without a byte order mark, or
// Windows-1252 when the bytes are not UTF-8, so that names, positions and searches agree
// with the code pane's.
QString decodedSourceText(const QByteArray& bytes);

// Calls `use` with the text of `bytes` as a std::string_view when they can be scanned as
// they are, else as a std::u16string_view of their decoding (decodedSourceText); returns
// what `use` returns.
template <class Use> auto withSourceText(const QByteArray& bytes, Use use) {
    const std::string_view raw(bytes.constData(), size_t(bytes.size()));
    if (scannableAsBytes(raw))
        return use(raw);
    const QString text = decodedSourceText(bytes);
    return use(std::u16string_view(reinterpret_cast<const char16_t*>(text.utf16()), size_t(text.size())));
}
