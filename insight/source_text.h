#pragma once
// Reading a source file for the scanner: the whole file as stored, decoded as UTF-8
// only when it holds anything besides ASCII (pure ASCII is scanned as bytes).

#include <QByteArray>
#include <QString>
#include <optional>
#include <string_view>

// The bytes of the file, or nothing when it cannot be read (missing, a folder, no
// permission).
std::optional<QByteArray> readSourceBytes(const QString& path);

// The text of the file decoded as UTF-8, or nothing when it cannot be read.
std::optional<QString> readSourceText(const QString& path);

// Whether every byte is below 128, so that the bytes are the text's UTF-16 units.
bool isAscii(std::string_view bytes);

// Calls `use` with the text of `bytes` as a std::string_view when they are pure ASCII,
// else as a std::u16string_view of their UTF-8 decoding; returns what `use` returns.
template <class Use> auto withSourceText(const QByteArray& bytes, Use use) {
    const std::string_view ascii(bytes.constData(), size_t(bytes.size()));
    if (isAscii(ascii))
        return use(ascii);
    const QString text = QString::fromUtf8(bytes);
    return use(std::u16string_view(reinterpret_cast<const char16_t*>(text.utf16()), size_t(text.size())));
}
