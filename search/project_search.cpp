#include "search/project_search.h"

#include "editor/document_file.h"
#include "insight/every_core.h"
#include "insight/source_text.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <string_view>

namespace project_search {

namespace {

constexpr std::array<unsigned char, 256> kAsciiLower = [] {
    std::array<unsigned char, 256> table{};
    for (int i = 0; i < 256; ++i)
        table[size_t(i)] = (i >= 'A' && i <= 'Z') ? (unsigned char)(i + 32) : (unsigned char)i;
    return table;
}();

// The first occurrence of `needle` at or after `from`, letters compared regardless of
// ASCII case (`needle` is ASCII and already lower case); npos when none.
size_t findAsciiIgnoringCase(std::string_view hay, std::string_view needle, size_t from) {
    const size_t m = needle.size();
    if (m == 0 || hay.size() < m)
        return std::string_view::npos;
    const auto* h = reinterpret_cast<const unsigned char*>(hay.data());
    const auto* n = reinterpret_cast<const unsigned char*>(needle.data());
    const unsigned char first = n[0];
    const unsigned char firstUpper = (first >= 'a' && first <= 'z') ? first - 32 : first;
    const size_t last = hay.size() - m;
    for (size_t i = from; i <= last; ++i) {
        const unsigned char c = h[i];
        if (c != first && c != firstUpper)
            continue;
        size_t k = 1;
        while (k < m && kAsciiLower[h[i + k]] == n[k])
            ++k;
        if (k == m)
            return i;
    }
    return std::string_view::npos;
}

// How common a byte is in source text (higher: more common): blanks and lower-case
// letters by their frequency in English; upper-case letters, digits and punctuation
// are rare.
int commonness(unsigned char c) {
    static constexpr std::string_view byFrequency = "zqxjkvbpygfwmucldrhsnioate ";
    const size_t at = byFrequency.find(char(c));
    return at == std::string_view::npos ? 0 : int(at) + 1;
}

// Finds a needle by looking for its rarest byte with memchr, then comparing the rest.
class LiteralFinder {
public:
    explicit LiteralFinder(std::string_view needle) : needle_(needle) {
        for (size_t i = 1; i < needle.size(); ++i)
            if (commonness((unsigned char)needle[i]) < commonness((unsigned char)needle[rare_]))
                rare_ = i;
    }
    // The first occurrence at or after `from`, or npos.
    size_t find(std::string_view hay, size_t from) const {
        const size_t m = needle_.size();
        while (from + m <= hay.size()) {
            const void* hit = std::memchr(hay.data() + from + rare_, needle_[rare_], hay.size() - m + 1 - from);
            if (!hit)
                return std::string_view::npos;
            const size_t start = size_t(static_cast<const char*>(hit) - hay.data()) - rare_;
            if (std::memcmp(hay.data() + start, needle_.data(), m) == 0)
                return start;
            from = start + 1;
        }
        return std::string_view::npos;
    }

private:
    std::string_view needle_;
    size_t rare_ = 0;
};

// UTF-16 units of valid UTF-8 bytes: one per character, two for those beyond the basic plane.
qint64 utf16Length(std::string_view bytes) {
    qint64 units = 0;
    for (const char ch : bytes) {
        const auto c = static_cast<unsigned char>(ch);
        units += (c & 0xC0) != 0x80;
        units += c >= 0xF0;
    }
    return units;
}

bool isCommentLine(auto line) {
    size_t i = 0;
    while (i < line.size() && (line[i] == ' ' || line[i] == '\t'))
        ++i;
    return i < line.size() && line[i] == '\'';
}

// The first line break in text[from, to), or `to`.
template <class View> size_t nextBreak(View text, size_t from, size_t to) {
    if constexpr (sizeof(typename View::value_type) == 1) {
        const void* at = from < to ? std::memchr(text.data() + from, '\n', to - from) : nullptr;
        return at ? size_t(static_cast<const char*>(at) - text.data()) : to;
    } else {
        while (from < to && text[from] != u'\n')
            ++from;
        return from;
    }
}

// Walks the occurrences that `next(from)` finds in `text` (a byte or UTF-16 view) and
// records their lines; `lineOf(start, end)` makes the text of a line.
template <class View, class Next, class LineOf>
void collect(View text, Next next, Options options, LineOf lineOf, QList<Match>& out) {
    constexpr auto npos = View::npos;
    qint64 line = 1;
    size_t counted = 0; // line breaks are counted up to here
    size_t lineStart = 0, lineEnd = npos;
    QString lineText;
    bool comment = false;
    size_t columnAt = 0; // the column is counted up to here
    qint64 column = 0;
    for (size_t at = next(0); at != npos; at = next(at + 1)) {
        if (lineEnd == npos || at > lineEnd) { // a new line
            // The line breaks from the end of the previous occurrence's line on.
            if (lineEnd != npos) {
                ++line;
                lineStart = lineEnd + 1;
                counted = lineStart;
            }
            for (size_t i = nextBreak(text, counted, at); i < at; i = nextBreak(text, i + 1, at)) {
                ++line;
                lineStart = i + 1;
            }
            counted = at;
            lineEnd = text.find('\n', at);
            size_t shown = lineEnd == npos ? text.size() : lineEnd;
            if (shown > lineStart && text[shown - 1] == '\r')
                --shown;
            const View whole = text.substr(lineStart, shown - lineStart);
            comment = options.skipCommentLines && isCommentLine(whole);
            lineText = comment ? QString() : lineOf(whole);
            if (lineEnd == npos)
                lineEnd = text.size();
            columnAt = lineStart;
            column = 0;
        }
        if (comment)
            continue;
        // Columns are counted on from the previous occurrence of the line, so that a
        // long line with many occurrences is walked once.
        if constexpr (sizeof(typename View::value_type) == 1)
            column += utf16Length(text.substr(columnAt, at - columnAt));
        else
            column += qint64(at - columnAt);
        columnAt = at;
        out.append({line, column, lineText});
    }
}

void searchDecoded(std::u16string_view text, const QString& needle, Options options, QList<Match>& out) {
    const QString haystack = QString::fromRawData(reinterpret_cast<const QChar*>(text.data()), qsizetype(text.size()));
    const Qt::CaseSensitivity cs = options.ignoreCase ? Qt::CaseInsensitive : Qt::CaseSensitive;
    auto next = [&](size_t from) {
        const qsizetype at = haystack.indexOf(needle, qsizetype(from), cs);
        return at < 0 ? std::u16string_view::npos : size_t(at);
    };
    auto lineOf = [](std::u16string_view line) {
        return QString(reinterpret_cast<const QChar*>(line.data()), qsizetype(line.size()));
    };
    collect(text, next, options, lineOf, out);
}

void searchUtf8(std::string_view text, const QString& needle, Options options, QList<Match>& out) {
    const QByteArray needleBytes = needle.toUtf8();
    const bool asciiNeedle = isAscii({needleBytes.constData(), size_t(needleBytes.size())});
    auto lineOf = [](std::string_view line) { return QString::fromUtf8(line.data(), qsizetype(line.size())); };
    const std::string_view n(needleBytes.constData(), size_t(needleBytes.size()));
    // Bytes compare as characters do when letter case matters (a needle that does not
    // come back from UTF-8 unchanged holds a lone surrogate and is searched decoded), and
    // when it does not for an ASCII needle in a text without letters folding to ASCII.
    if (!options.ignoreCase && QString::fromUtf8(needleBytes) == needle) {
        const LiteralFinder finder(n);
        auto next = [&](size_t from) { return finder.find(text, from); };
        collect(text, next, options, lineOf, out);
        return;
    }
    if (options.ignoreCase && asciiNeedle && scannableAsBytes(text)) {
        const QByteArray lower = needleBytes.toLower();
        const std::string_view l(lower.constData(), size_t(lower.size()));
        auto next = [&](size_t from) { return findAsciiIgnoringCase(text, l, from); };
        collect(text, next, options, lineOf, out);
        return;
    }
    const QString decoded = QString::fromUtf8(text.data(), qsizetype(text.size()));
    searchDecoded({reinterpret_cast<const char16_t*>(decoded.utf16()), size_t(decoded.size())}, needle, options, out);
}

// Reads the file `name` of the open folder `folderFd` into `bytes`, whose allocation is
// reused; false when it cannot be read (missing, a folder, no permission).
bool readFileAt(int folderFd, const QByteArray& name, QByteArray& bytes) {
    const int fd = ::openat(folderFd, name.constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return false;
    if (bytes.size() < 65536)
        bytes.resize(65536);
    qsizetype used = 0;
    bool ok = true;
    for (;;) {
        if (used == bytes.size())
            bytes.resize(2 * bytes.size());
        const ssize_t n = ::read(fd, bytes.data() + used, size_t(bytes.size() - used));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0) {
            ok = n == 0;
            break;
        }
        used += n;
    }
    ::close(fd);
    // The allocation stays; only the length shrinks to what was read.
    bytes.truncate(used);
    return ok;
}

bool isAsciiText(const QString& text) {
    for (const QChar c : text)
        if (c.unicode() >= 0x80)
            return false;
    return true;
}

} // namespace

QString problemWith(const QString& needle) {
    if (needle.isEmpty())
        return QStringLiteral("Nothing to find");
    if (needle.contains(QLatin1Char('\n')) || needle.contains(QLatin1Char('\r')))
        return QStringLiteral("Line breaks cannot be searched for");
    return QString();
}

QStringList sourceFiles(const QStringList& folderEntries) {
    QStringList names;
    for (const QString& name : folderEntries) {
        if (!name.endsWith(QLatin1String(".klvr")) || name.size() == 5)
            continue;
        if (name.endsWith(QLatin1String("Global.NSObject.klvr")))
            names.insert(0, name);
        else
            names.append(name);
    }
    return names;
}

QStringList sourceFilesOf(const QString& folder) {
    const QDir dir(folder);
    if (!dir.exists())
        return {};
    return sourceFiles(dir.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name));
}

FileMatches searchBytes(const QByteArray& fileBytes, const QString& needle, Options options) {
    FileMatches result;
    if (!problemWith(needle).isEmpty())
        return result;
    const std::string_view raw(fileBytes.constData(), size_t(fileBytes.size()));
    // An ASCII text has the same bytes in both encodings: a file without them holds no
    // occurrence, and most files are passed over after this one look.
    if (!options.ignoreCase && isAsciiText(needle)) {
        const QByteArray n = needle.toLatin1();
        const std::string_view view(n.constData(), size_t(n.size()));
        if (LiteralFinder(view).find(raw, 0) == std::string_view::npos)
            return result;
    }
    if (raw.find('\0') != std::string_view::npos) {
        result.state = FileState::Binary;
        return result;
    }
    if (isAscii(raw)) {
        searchUtf8(raw, needle, options, result.matches);
        return result;
    }
    const document_file::Decoded decoded = document_file::decode(fileBytes);
    searchUtf8({decoded.utf8.constData(), size_t(decoded.utf8.size())}, needle, options, result.matches);
    return result;
}

QList<FileMatches> search(const QString& folder, const QStringList& names, const QString& needle,
                          Options options, const FileDone& done) {
    QList<FileMatches> files(names.size());
    FileMatches* out = files.data(); // each thread writes only its own files' entries
    // The files are opened relative to the folder, so that the folder's path is not
    // walked again for each of them.
    const int folderFd = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    forEachOnEveryCore(names.size(), [&](qsizetype i) {
        thread_local QByteArray bytes;
        if (folderFd >= 0 && readFileAt(folderFd, QFile::encodeName(names[i]), bytes))
            out[i] = searchBytes(bytes, needle, options);
        else
            out[i].state = FileState::Unreadable;
        out[i].name = names[i];
        if (done)
            done(i, out[i]);
    });
    if (folderFd >= 0)
        ::close(folderFd);
    return files;
}

std::optional<QByteArray> replacedBytes(const QByteArray& fileBytes, const QString& needle,
                                        const QString& replacement, bool ignoreCase) {
    const document_file::Decoded decoded = document_file::decode(fileBytes);
    QString text = QString::fromUtf8(decoded.utf8);
    // Line breaks in the replacement are the file's own, as in the editor.
    const QString with = document_file::withLineEnds(replacement, decoded.lineEnds);
    if (problemWith(needle).isEmpty())
        text.replace(needle, with, ignoreCase ? Qt::CaseInsensitive : Qt::CaseSensitive);
    return document_file::encode(text.toUtf8(), decoded.encoding, decoded.byteOrderMark);
}

qsizetype matchCount(const QList<FileMatches>& files) {
    qsizetype count = 0;
    for (const FileMatches& file : files)
        count += file.matches.size();
    return count;
}

} // namespace project_search
