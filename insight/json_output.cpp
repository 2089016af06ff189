#include "insight/json_output.h"

#include <QChar>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <unistd.h>

namespace {

constexpr std::size_t chunkSize = 1 << 20;
const char hexDigits[] = "0123456789abcdef";

// The escape of an ASCII character that cannot stand in a JSON string as it is, or
// nothing for one that can.
char* escapeAscii(char* to, char16_t c) {
    *to++ = '\\';
    switch (c) {
    case '"': *to++ = '"'; break;
    case '\\': *to++ = '\\'; break;
    case '\n': *to++ = 'n'; break;
    case '\r': *to++ = 'r'; break;
    case '\t': *to++ = 't'; break;
    default:
        *to++ = 'u';
        *to++ = '0';
        *to++ = '0';
        *to++ = hexDigits[c >> 4];
        *to++ = hexDigits[c & 15];
    }
    return to;
}

bool plainAscii(char16_t c) { return c >= 0x20 && c < 0x80 && c != '"' && c != '\\'; }

// U+FEFF is written escaped: some readers (Qt's among them) drop it, unescaped, at the
// start of a string, as if it marked the byte order of the whole text.
char* escapeByteOrderMark(char* to) {
    for (char c : std::string_view("\\ufeff"))
        *to++ = c;
    return to;
}

} // namespace

void JsonOutput::number(qint64 value) {
    room(24);
    next_ = std::to_chars(next_, next_ + 24, value).ptr;
}

void JsonOutput::newChunk(std::size_t atLeast) {
    if (chunkBegin_)
        used_.push_back(std::size_t(next_ - chunkBegin_));
    const std::size_t size = std::max(chunkSize, atLeast);
    chunks_.push_back({std::make_unique_for_overwrite<char[]>(size)});
    chunkBegin_ = next_ = chunks_.back().begin();
    limit_ = chunkBegin_ + size;
}

std::string_view JsonOutput::chunk(std::size_t i) const {
    const std::size_t used = i < used_.size() ? used_[i] : std::size_t(next_ - chunkBegin_);
    return {chunks_[i].begin(), used};
}

std::size_t JsonOutput::size() const {
    std::size_t total = 0;
    for (std::size_t i = 0; i < chunks_.size(); ++i)
        total += chunk(i).size();
    return total;
}

bool writeBytes(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t n = ::write(fd, bytes.data(), bytes.size());
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        bytes.remove_prefix(std::size_t(n));
    }
    return true;
}

bool JsonOutput::writeTo(int fd) const {
    for (std::size_t i = 0; i < chunks_.size(); ++i)
        if (!writeBytes(fd, chunk(i)))
            return false;
    return true;
}

QByteArray JsonOutput::toByteArray() const {
    QByteArray bytes;
    bytes.reserve(qsizetype(size()));
    for (std::size_t i = 0; i < chunks_.size(); ++i)
        bytes.append(chunk(i).data(), qsizetype(chunk(i).size()));
    return bytes;
}

char* JsonOutput::escape(char* to, std::string_view text) {
    const std::size_t size = text.size();
    for (std::size_t i = 0; i < size; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        if (byte == 0xEF && text.substr(i, 3) == "\xEF\xBB\xBF") {
            to = escapeByteOrderMark(to);
            i += 2;
        } else if (byte >= 0x80 || plainAscii(byte)) { // other UTF-8 bytes are kept as they are
            *to++ = char(byte);
        } else {
            to = escapeAscii(to, byte);
        }
    }
    return to;
}

char* JsonOutput::escape(char* to, std::u16string_view text) {
    const std::size_t size = text.size();
    for (std::size_t i = 0; i < size; ++i) {
        const char32_t c = text[i];
        if (c < 0x80) {
            if (plainAscii(char16_t(c)))
                *to++ = char(c);
            else
                to = escapeAscii(to, char16_t(c));
        } else if (c < 0x800) {
            *to++ = char(0xC0 | (c >> 6));
            *to++ = char(0x80 | (c & 0x3F));
        } else if (QChar::isHighSurrogate(c) && i + 1 < size && QChar::isLowSurrogate(text[i + 1])) {
            const char32_t full = QChar::surrogateToUcs4(char16_t(c), text[++i]);
            *to++ = char(0xF0 | (full >> 18));
            *to++ = char(0x80 | ((full >> 12) & 0x3F));
            *to++ = char(0x80 | ((full >> 6) & 0x3F));
            *to++ = char(0x80 | (full & 0x3F));
        } else if (c == 0xFEFF) {
            to = escapeByteOrderMark(to);
        } else {
            // A lone surrogate cannot be written as UTF-8: it becomes U+FFFD.
            const char32_t code = QChar::isSurrogate(c) ? 0xFFFD : c;
            *to++ = char(0xE0 | (code >> 12));
            *to++ = char(0x80 | ((code >> 6) & 0x3F));
            *to++ = char(0x80 | (code & 0x3F));
        }
    }
    return to;
}
