#include "insight/scan_json.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <vector>

namespace {

// Appends to a QByteArray through a raw cursor, growing it in large steps. Appending
// piece by piece through QByteArray's own operations cost more than the scan itself
// on a large file.
class JsonWriter {
public:
    explicit JsonWriter(QByteArray& out) : out_(out), used_(out.size()) { base_ = out_.data(); }
    ~JsonWriter() { out_.resize(used_); }
    JsonWriter(const JsonWriter&) = delete;
    JsonWriter& operator=(const JsonWriter&) = delete;

    template <std::size_t N> void literal(const char (&text)[N]) {
        ensure(N - 1);
        std::memcpy(base_ + used_, text, N - 1);
        used_ += N - 1;
    }

    qsizetype size() const { return used_; }

    // Appends a copy of bytes already written, [from, to).
    void repeat(qsizetype from, qsizetype to) {
        ensure(to - from);
        std::memmove(base_ + used_, base_ + from, size_t(to - from));
        used_ += to - from;
    }

    void number(qint64 value) {
        ensure(24);
        used_ = std::to_chars(base_ + used_, base_ + used_ + 24, value).ptr - base_;
    }

    void string(QStringView text) {
        static const char hex[] = "0123456789abcdef";
        ensure(6 * text.size() + 2); // the most one UTF-16 unit can take, escaped
        char* w = base_ + used_;
        *w++ = '"';
        const char16_t* chars = text.utf16();
        const qsizetype size = text.size();
        for (qsizetype i = 0; i < size; ++i) {
            const char32_t c = chars[i];
            if (c < 0x80) {
                if (c >= 0x20 && c != '"' && c != '\\') {
                    *w++ = char(c);
                    continue;
                }
                *w++ = '\\';
                switch (c) {
                case '"': *w++ = '"'; break;
                case '\\': *w++ = '\\'; break;
                case '\n': *w++ = 'n'; break;
                case '\r': *w++ = 'r'; break;
                case '\t': *w++ = 't'; break;
                default:
                    *w++ = 'u';
                    *w++ = '0';
                    *w++ = '0';
                    *w++ = hex[c >> 4];
                    *w++ = hex[c & 15];
                }
            } else if (c < 0x800) {
                *w++ = char(0xC0 | (c >> 6));
                *w++ = char(0x80 | (c & 0x3F));
            } else if (QChar::isHighSurrogate(c) && i + 1 < size && QChar::isLowSurrogate(chars[i + 1])) {
                const char32_t full = QChar::surrogateToUcs4(char16_t(c), chars[++i]);
                *w++ = char(0xF0 | (full >> 18));
                *w++ = char(0x80 | ((full >> 12) & 0x3F));
                *w++ = char(0x80 | ((full >> 6) & 0x3F));
                *w++ = char(0x80 | (full & 0x3F));
            } else {
                // A lone surrogate cannot be written as UTF-8: it becomes U+FFFD.
                const char32_t code = QChar::isSurrogate(c) ? 0xFFFD : c;
                *w++ = char(0xE0 | (code >> 12));
                *w++ = char(0x80 | ((code >> 6) & 0x3F));
                *w++ = char(0x80 | (code & 0x3F));
            }
        }
        *w++ = '"';
        used_ = w - base_;
    }

private:
    void ensure(qsizetype more) {
        if (used_ + more <= out_.size())
            return;
        out_.resize(std::max(2 * out_.size(), used_ + more + 65536));
        base_ = out_.data();
    }

    QByteArray& out_;
    qsizetype used_;
    char* base_;
};

void writeEntry(JsonWriter& json, const DeclarationEntry& e) {
    json.literal("{\"title\":");
    json.string(e.title);
    json.literal(",\"line\":");
    json.number(e.line);
    json.literal(",\"visibility\":");
    json.string(e.visibility);
    json.literal(",\"kind\":");
    json.string(e.kind);
    json.literal(",\"name\":");
    json.string(e.name);
    json.literal(",\"parameters\":");
    json.string(e.parameters);
    json.literal(",\"type\":");
    json.string(e.type);
    json.literal("}");
}

// Where each entry of the All list was written, so that the kind lists, which hold
// the same entries, copy those bytes instead of encoding every string a second time.
struct WrittenEntry {
    qint64 line;
    qsizetype from;
    qsizetype to;
};

std::vector<WrittenEntry> writeAllEntries(JsonWriter& json, const DeclarationList& all) {
    std::vector<WrittenEntry> written;
    written.reserve(size_t(all.entryCount()));
    json.literal("[");
    for (qsizetype i = 0; i < all.entryCount(); ++i) {
        if (i)
            json.literal(",");
        const qsizetype from = json.size();
        writeEntry(json, all.entry(i));
        written.push_back({all.entry(i).line, from, json.size()});
    }
    json.literal("]");
    return written;
}

// A kind list: each entry is found in All by its line (All is in ascending line
// order and no two entries share a line).
void writeKindEntries(JsonWriter& json, const DeclarationList& list, const std::vector<WrittenEntry>& all) {
    json.literal("[");
    for (qsizetype i = 0; i < list.entryCount(); ++i) {
        if (i)
            json.literal(",");
        const DeclarationEntry& e = list.entry(i);
        const auto found = std::lower_bound(all.begin(), all.end(), e.line,
                                            [](const WrittenEntry& w, qint64 line) { return w.line < line; });
        if (found != all.end() && found->line == e.line)
            json.repeat(found->from, found->to);
        else
            writeEntry(json, e);
    }
    json.literal("]");
}

} // namespace

void appendJsonString(QByteArray& out, QStringView text) {
    JsonWriter json(out);
    json.string(text);
}

void appendScanResultJson(QByteArray& out, const QString& path, const DeclarationLists& lists) {
    JsonWriter json(out);
    json.literal("{\"path\":");
    json.string(path);
    json.literal(",\"lists\":{\"All\":");
    const std::vector<WrittenEntry> all = writeAllEntries(json, lists.all);
    for (DeclarationKind kind : allDeclarationKinds()) {
        json.literal(",");
        json.string(declarationKindInfo(kind).word);
        json.literal(":");
        writeKindEntries(json, lists.list(kind), all);
    }
    json.literal("},\"lineSeparators\":[");
    for (qsizetype i = 0; i < lists.lineSeparators.size(); ++i) {
        if (i)
            json.literal(",");
        json.number(lists.lineSeparators[i]);
    }
    json.literal("],\"lineSeparatorsType\":[");
    for (qsizetype i = 0; i < lists.lineSeparatorsType.size(); ++i) {
        if (i)
            json.literal(",");
        json.string(lists.lineSeparatorsType[i]);
    }
    json.literal("],\"locals\":{");
    bool first = true;
    for (auto it = lists.locals.cbegin(); it != lists.locals.cend(); ++it) {
        if (!first)
            json.literal(",");
        first = false;
        json.string(it.key());
        json.literal(":");
        json.string(it.value());
    }
    json.literal("}}");
}
