#include "insight/source_text.h"

#include "editor/document_file.h"

#include <QFile>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

FileIdentity identityOf(const struct stat& info) {
    return {quint64(info.st_dev), quint64(info.st_ino), qint64(info.st_size),
            qint64(info.st_mtim.tv_sec) * 1000000000 + info.st_mtim.tv_nsec,
            qint64(info.st_ctim.tv_sec) * 1000000000 + info.st_ctim.tv_nsec};
}

// Closes the descriptor on every way out.
class Descriptor {
public:
    explicit Descriptor(int fd) : fd_(fd) {}
    ~Descriptor() {
        if (fd_ >= 0)
            ::close(fd_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int get() const { return fd_; }

private:
    int fd_;
};

} // namespace

std::optional<FileIdentity> fileIdentity(const QString& path) {
    struct stat info;
    if (::stat(QFile::encodeName(path).constData(), &info) != 0)
        return std::nullopt;
    return identityOf(info);
}

// Plain system calls: a project opening reads a thousand files, and the four calls here
// cost a fraction of a QFile's bookkeeping.
bool readSourceBytesInto(const QString& path, QByteArray& bytes, FileIdentity* identity) {
    if (path.isEmpty())
        return false;
    const Descriptor fd(::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC));
    if (fd.get() < 0)
        return false;
    struct stat info;
    if (::fstat(fd.get(), &info) != 0 || S_ISDIR(info.st_mode))
        return false;
    if (identity)
        *identity = identityOf(info);
    // The size is a first guess: a file that is not regular, or grows while it is read,
    // is read to its end.
    bytes.resize(qsizetype(S_ISREG(info.st_mode) ? info.st_size + 1 : 65536));
    qsizetype used = 0;
    for (;;) {
        if (used == bytes.size())
            bytes.resize(2 * bytes.size());
        const ssize_t n = ::read(fd.get(), bytes.data() + used, size_t(bytes.size() - used));
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0)
            return false;
        if (n == 0)
            break;
        used += n;
    }
    bytes.truncate(used);
    return true;
}

std::optional<QByteArray> readSourceBytes(const QString& path, FileIdentity* identity) {
    QByteArray bytes;
    if (!readSourceBytesInto(path, bytes, identity))
        return std::nullopt;
    return bytes;
}

bool isAscii(std::string_view bytes) {
    const char* at = bytes.data();
    const char* end = at + bytes.size();
    std::uint64_t high = 0;
    for (; end - at >= 32; at += 32) {
        std::uint64_t words[4];
        std::memcpy(words, at, sizeof words);
        high |= words[0] | words[1] | words[2] | words[3];
        if (high & 0x8080808080808080ull)
            return false;
    }
    for (; at < end; ++at)
        high |= std::uint8_t(*at);
    return (high & 0x8080808080808080ull) == 0;
}

bool scannableAsBytes(std::string_view bytes) {
    // Decoding drops a byte order mark at the start, which moves every position by one.
    if (bytes.substr(0, 3) == "\xEF\xBB\xBF")
        return false;
    const auto* at = reinterpret_cast<const unsigned char*>(bytes.data());
    const auto* const end = at + bytes.size();
    auto continuation = [](unsigned char c) { return (c & 0xC0) == 0x80; };
    while (at < end) {
        // Runs of ASCII eight bytes at a time.
        while (end - at >= 8) {
            std::uint64_t word;
            std::memcpy(&word, at, 8);
            if (word & 0x8080808080808080ull)
                break;
            at += 8;
        }
        if (at == end)
            break;
        const unsigned char c = *at;
        if (c < 0x80) {
            ++at;
        } else if (c >= 0xC2 && c < 0xE0) {
            if (end - at < 2 || !continuation(at[1]))
                return false;
            if (c == 0xC5 && at[1] == 0xBF) // LATIN SMALL LETTER LONG S
                return false;
            at += 2;
        } else if (c >= 0xE0 && c < 0xF0) {
            if (end - at < 3 || !continuation(at[1]) || !continuation(at[2]))
                return false;
            if ((c == 0xE0 && at[1] < 0xA0) || (c == 0xED && at[1] >= 0xA0)) // overlong, surrogate
                return false;
            if (c == 0xE2 && at[1] == 0x84 && at[2] == 0xAA) // KELVIN SIGN
                return false;
            at += 3;
        } else if (c >= 0xF0 && c < 0xF5) {
            if (end - at < 4 || !continuation(at[1]) || !continuation(at[2]) || !continuation(at[3]))
                return false;
            if ((c == 0xF0 && at[1] < 0x90) || (c == 0xF4 && at[1] >= 0x90)) // overlong, beyond U+10FFFF
                return false;
            at += 4;
        } else {
            return false;
        }
    }
    return true;
}

QString decodedSourceText(const QByteArray& bytes) {
    return QString::fromUtf8(document_file::decode(bytes).utf8);
}
