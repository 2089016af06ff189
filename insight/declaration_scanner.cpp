// One pass over the line breaks of the text finds every declaration, the scope starts,
// the parameter lists and the local Dim lines. What it finds is recorded as views into
// the text; nothing is turned into Qt strings until a caller asks for lists.
//
// A large text can be cut into parts at line breaks and the parts scanned at the same
// time. Little crosses a cut: the line count (added afterwards), the scope a part's
// first locals belong to (filled in afterwards), and whether a prefix's parameter scan
// ended in an earlier part (later parameters are then dropped). A cut is made only at a
// line break whose previous character is not a line break, so the local line before
// the cut ends exactly at it.
#include "insight/declaration_scanner.h"

#include "insight/source_text.h"

#include <QStringView>

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <thread>
#include <unordered_map>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

template <class Char> using View = std::basic_string_view<Char>;

char16_t asciiLower(char16_t c) { return (c >= u'A' && c <= u'Z') ? char16_t(c + 32) : c; }

// Whether `c` equals the ASCII letter or blank `want` when letter case is ignored, the
// way Qt's case-insensitive searches compare: besides the ASCII pairs, only LATIN SMALL
// LETTER LONG S folds onto "s" and KELVIN SIGN onto "k".
template <class Char> bool sameIgnoringCase(Char c, char16_t want) {
    const char16_t unit = char16_t(static_cast<std::make_unsigned_t<Char>>(c));
    if (unit == want)
        return true;
    const char16_t lower = asciiLower(want);
    if (unit < 128)
        return asciiLower(unit) == lower;
    return (unit == 0x017F && lower == u's') || (unit == 0x212A && lower == u'k');
}

// Literal texts the scan compares with or records, in both character types.
template <class Char> struct Literal;
template <> struct Literal<char> {
    static constexpr std::string_view dim = "Dim ";
    static constexpr std::string_view publicDim = "Public Dim ";
    static constexpr std::string_view privateDim = "Private Dim ";
    static constexpr std::string_view as = " As ";
    static constexpr std::string_view nsObject = "NSObject";
};
template <> struct Literal<char16_t> {
    static constexpr std::u16string_view dim = u"Dim ";
    static constexpr std::u16string_view publicDim = u"Public Dim ";
    static constexpr std::u16string_view privateDim = u"Private Dim ";
    static constexpr std::u16string_view as = u" As ";
    static constexpr std::u16string_view nsObject = u"NSObject";
};

// Searches through Qt's vectorised routines for UTF-16 and the C library's for bytes.
template <class Char> std::size_t findChar(View<Char> text, Char c, std::size_t from = 0) {
    if (from >= text.size())
        return View<Char>::npos;
    if constexpr (sizeof(Char) == 1) {
        const void* at = std::memchr(text.data() + from, c, text.size() - from);
        return at ? std::size_t(static_cast<const Char*>(at) - text.data()) : View<Char>::npos;
    } else {
        const qsizetype at = QStringView(text.data(), qsizetype(text.size())).indexOf(QChar(c), qsizetype(from));
        return at < 0 ? View<Char>::npos : std::size_t(at);
    }
}

template <class Char> bool containsText(View<Char> text, View<Char> needle) {
    if constexpr (sizeof(Char) == 1)
        return text.find(needle) != View<Char>::npos;
    else
        return QStringView(text.data(), qsizetype(text.size()))
            .contains(QStringView(needle.data(), qsizetype(needle.size())));
}

template <class Char> bool isBlankOrTab(Char c) { return c == Char(' ') || c == Char('\t'); }

// The text without blanks and tabs at either end (line breaks are kept).
template <class Char> View<Char> trimBlanks(View<Char> s) {
    std::size_t begin = 0;
    std::size_t end = s.size();
    while (begin < end && isBlankOrTab(s[begin]))
        ++begin;
    while (end > begin && isBlankOrTab(s[end - 1]))
        --end;
    return s.substr(begin, end - begin);
}

// The name at the start of `s`: up to its first "(" or first blank, whichever comes
// first; all of `s` when it has neither.
template <class Char> View<Char> nameOf(View<Char> s) {
    for (std::size_t i = 0; i < s.size(); ++i)
        if (s[i] == Char(' ') || s[i] == Char('('))
            return s.substr(0, i);
    return s;
}

// The type after the last " As " (letter case ignored), cut before its first blank, "("
// or "'", trimmed; empty when there is no " As ". Line breaks are still in it.
template <class Char> View<Char> rawTypeOf(View<Char> s) {
    if (s.size() < 4)
        return {};
    std::size_t as = s.size() - 4;
    for (;; --as) {
        if (s[as] == Char(' ') && sameIgnoringCase(s[as + 1], u'a') && sameIgnoringCase(s[as + 2], u's') &&
            s[as + 3] == Char(' '))
            break;
        if (as == 0)
            return {};
    }
    View<Char> rest = s.substr(as + 4);
    for (std::size_t i = 0; i < rest.size(); ++i) {
        if (rest[i] == Char(' ') || rest[i] == Char('(') || rest[i] == Char('\'')) {
            rest = rest.substr(0, i);
            break;
        }
    }
    return trimBlanks(rest);
}

// `text` without line feeds and carriage returns; a view into `text` when it has none.
template <class Char> View<Char> withoutLineBreaks(View<Char> text, TextArena<Char>& arena) {
    for (Char c : text)
        if (c == Char('\r') || c == Char('\n'))
            return arena.copyWithout(text, Char('\r'), Char('\n'));
    return text;
}

// Appends `line` to `out` with every double-quoted part removed, then cuts `out`
// before the first "'" of what was appended.
template <class Char> void appendWithoutQuotesAndComment(std::basic_string<Char>& out, View<Char> line) {
    const std::size_t appendedFrom = out.size();
    std::size_t from = 0;
    for (;;) {
        const std::size_t open = findChar(line, Char('"'), from);
        const std::size_t close = open == View<Char>::npos ? open : findChar(line, Char('"'), open + 1);
        if (close == View<Char>::npos) {
            out.append(line.substr(from));
            break;
        }
        out.append(line.substr(from, open - from));
        from = close + 1;
    }
    const std::size_t comment = out.find(Char('\''), appendedFrom);
    if (comment != std::basic_string<Char>::npos)
        out.resize(comment);
}

// `line` with every double-quoted part removed, then cut before its first "'"; a view
// into `line` when it holds no quote.
template <class Char> View<Char> withoutQuotesAndComment(View<Char> line, TextArena<Char>& arena) {
    if (findChar(line, Char('"')) == View<Char>::npos) {
        const std::size_t comment = findChar(line, Char('\''));
        return comment == View<Char>::npos ? line : line.substr(0, comment);
    }
    std::basic_string<Char> cleaned;
    appendWithoutQuotesAndComment(cleaned, line);
    return arena.copy(cleaned);
}

// How many code units of `text` make its first UTF-16 unit: one, except for a UTF-8
// letter of two or three bytes, which is one UTF-16 unit. A letter of four bytes is two
// UTF-16 units; skipping its first byte leaves three bytes that, like the low surrogate
// they stand for, are neither blanks nor parentheses.
template <class Char> std::size_t firstUnitLength(View<Char> text) {
    if constexpr (sizeof(Char) == 1) {
        const auto lead = text.empty() ? 0 : static_cast<unsigned char>(text.front());
        if (lead >= 0xC0 && lead < 0xE0)
            return std::min<std::size_t>(2, text.size());
        if (lead >= 0xE0 && lead < 0xF0)
            return std::min<std::size_t>(3, text.size());
    }
    return std::min<std::size_t>(1, text.size());
}

// The length of a class-level Dim keyword ("Dim ", "Public Dim ", "Private Dim ",
// letter case as written) at the start of `rest`, or 0.
template <class Char> std::size_t classLevelDimLength(View<Char> rest) {
    for (View<Char> keyword : {Literal<Char>::dim, Literal<Char>::publicDim, Literal<Char>::privateDim})
        if (rest.substr(0, keyword.size()) == keyword)
            return keyword.size();
    return 0;
}

// The prefixes whose keyword starts with a given ASCII letter, so that most lines are
// rejected by looking at one character.
struct FirstLetterIndex {
    std::array<std::vector<int>, 128> byLetter;
    FirstLetterIndex() {
        const auto& prefixes = declarationPrefixes();
        for (int i = 0; i < int(prefixes.size()); ++i)
            byLetter[asciiLower(prefixes[size_t(i)].text.at(1))].push_back(i);
    }
};

// The index of the prefix that stands at the line break `at`, ignoring case, or -1. No
// two prefixes can match at the same place.
template <class Char> int prefixAt(View<Char> text, std::size_t at) {
    static const FirstLetterIndex index;
    char16_t first = char16_t(static_cast<std::make_unsigned_t<Char>>(text[at + 1]));
    if (first == 0x017F)
        first = u's';
    if (first >= 128)
        return -1;
    for (int candidate : index.byLetter[asciiLower(first)]) {
        const std::u16string& prefix = declarationPrefixes()[size_t(candidate)].text;
        if (at + prefix.size() > text.size())
            continue;
        bool same = true;
        for (std::size_t i = 0; same && i < prefix.size(); ++i)
            same = sameIgnoringCase(text[at + i], prefix[i]);
        if (same)
            return candidate;
    }
    return -1;
}

template <class Char> bool equalsExactly(View<Char> text, std::size_t at, const std::u16string& prefix) {
    if (at + prefix.size() > text.size())
        return false;
    for (std::size_t i = 0; i < prefix.size(); ++i)
        if (char16_t(static_cast<std::make_unsigned_t<Char>>(text[at + i])) != prefix[i])
            return false;
    return true;
}

// Bit masks of 64 characters from `at`: line breaks, and quotes or "D"s.
inline void blockMasks(const char* at, std::uint64_t& breaks, std::uint64_t& marks) {
    breaks = marks = 0;
#if defined(__SSE2__)
    const __m128i lineBreak = _mm_set1_epi8('\n');
    const __m128i quote = _mm_set1_epi8('"');
    const __m128i d = _mm_set1_epi8('D');
    for (int k = 0; k < 4; ++k) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + 16 * k));
        breaks |= std::uint64_t(std::uint16_t(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, lineBreak)))) << (16 * k);
        marks |= std::uint64_t(std::uint16_t(
                     _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(bytes, quote), _mm_cmpeq_epi8(bytes, d)))))
                 << (16 * k);
    }
#else
    for (int i = 0; i < 64; ++i) {
        breaks |= std::uint64_t(at[i] == '\n') << i;
        marks |= std::uint64_t(at[i] == '"' || at[i] == 'D') << i;
    }
#endif
}

inline void blockMasks(const char16_t* at, std::uint64_t& breaks, std::uint64_t& marks) {
    breaks = marks = 0;
#if defined(__SSE2__)
    const __m128i lineBreak = _mm_set1_epi16(u'\n');
    const __m128i quote = _mm_set1_epi16(u'"');
    const __m128i d = _mm_set1_epi16(u'D');
    for (int k = 0; k < 4; ++k) {
        const __m128i low = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + 16 * k));
        const __m128i high = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at + 16 * k + 8));
        const __m128i lowBreaks = _mm_cmpeq_epi16(low, lineBreak);
        const __m128i highBreaks = _mm_cmpeq_epi16(high, lineBreak);
        const __m128i lowMarks = _mm_or_si128(_mm_cmpeq_epi16(low, quote), _mm_cmpeq_epi16(low, d));
        const __m128i highMarks = _mm_or_si128(_mm_cmpeq_epi16(high, quote), _mm_cmpeq_epi16(high, d));
        breaks |= std::uint64_t(std::uint16_t(_mm_movemask_epi8(_mm_packs_epi16(lowBreaks, highBreaks)))) << (16 * k);
        marks |= std::uint64_t(std::uint16_t(_mm_movemask_epi8(_mm_packs_epi16(lowMarks, highMarks)))) << (16 * k);
    }
#else
    for (int i = 0; i < 64; ++i) {
        breaks |= std::uint64_t(at[i] == u'\n') << i;
        marks |= std::uint64_t(at[i] == u'"' || at[i] == u'D') << i;
    }
#endif
}

// The line breaks of a text from a position on, in order, each with whether the line
// before it may declare a local (it holds a quote or a "D"). The text is read 64
// characters at a time into bit masks, and lines are found by counting bits instead of
// searching each line.
template <class Char> class LineBreaks {
public:
    LineBreaks(View<Char> text, qint64 from) : text_(text), block_(from) { load(); }

    // The next line break, or the text's size when there is none.
    qint64 next(bool& mayHoldLocal) {
        const qint64 size = qint64(text_.size());
        for (;;) {
            if (breaks_) {
                const int bit = std::countr_zero(breaks_);
                const std::uint64_t before = bit == 0 ? 0 : ~std::uint64_t(0) >> (64 - bit);
                mayHoldLocal = markedSinceLastBreak_ || (marks_ & before);
                markedSinceLastBreak_ = false;
                marks_ = bit == 63 ? 0 : marks_ & (~std::uint64_t(0) << (bit + 1));
                breaks_ &= breaks_ - 1;
                return block_ + bit;
            }
            markedSinceLastBreak_ = markedSinceLastBreak_ || marks_ != 0;
            block_ += 64;
            if (block_ >= size) {
                block_ = size;
                mayHoldLocal = markedSinceLastBreak_;
                return size;
            }
            load();
        }
    }

private:
    void load() {
        const qint64 size = qint64(text_.size());
        if (block_ >= size) {
            breaks_ = marks_ = 0;
            return;
        }
        const Char* at = text_.data() + block_;
        Char padded[64] = {};
        if (size - block_ < 64) {
            std::memcpy(padded, at, std::size_t(size - block_) * sizeof(Char));
            at = padded;
        }
        blockMasks(at, breaks_, marks_);
    }

    View<Char> text_;
    qint64 block_;              // where the current 64 characters start
    std::uint64_t breaks_ = 0;  // line breaks not yet returned
    std::uint64_t marks_ = 0;   // quotes and "D"s after the last returned line break
    bool markedSinceLastBreak_ = false; // in earlier blocks
};

constexpr qint64 noPosition = std::numeric_limits<qint64>::max();

// A scope start as the local-line rule needs it. A part after a cut starts with the
// marker "inherited": the scope before the cut, known only when the parts are joined.
template <class Char> struct ScopeStart {
    qint64 position = noPosition; // none yet
    View<Char> name;
    bool inherited = false;
};

template <class Char> struct PartResult {
    ScanRecord<Char> record;
    qint64 lineBreaks = 0; // line breaks whose following line this part examined
    std::vector<bool> parameterScanEnded;
    std::vector<bool> dimScopeInherited; // per recorded Dim
    ScopeStart<Char> lastScope;
};

// The scan of one part: the line breaks from `from` (a cut, or the text's start when
// negative) up to `to` (the next cut, or the text's end). At `from` only the line after
// the break is examined; at `to` only the line before it.
template <class Char> class PartScan {
public:
    PartScan(View<Char> text, qint64 lastOpenParenthesis, qint64 from, qint64 to)
        : text_(text), lastOpenParenthesis_(lastOpenParenthesis), from_(from), to_(to) {
        const std::size_t prefixCount = declarationPrefixes().size();
        result_.record.parameters.resize(prefixCount);
        result_.parameterScanEnded.assign(prefixCount, false);
        if (from_ >= 0) {
            latestScope_ = {-1, {}, true};
            olderScope_ = latestScope_;
        }
    }

    PartResult<Char> run() {
        bool mayHoldLocal = true;
        LineBreaks<Char> lines(text_, from_ >= 0 ? from_ + 1 : 0);
        if (from_ >= 0) {
            localStart_ = from_ + 1;
            checkPrefix(from_);
            ++lineBreaksSeen_;
        }
        qint64 lineBreak = lines.next(mayHoldLocal);
        for (; lineBreak < to_; lineBreak = lines.next(mayHoldLocal)) {
            endLine(lineBreak, mayHoldLocal);
            checkPrefix(lineBreak);
            ++lineBreaksSeen_;
        }
        // A declaration on the last line, with no line break after it, stays pending:
        // it is not listed and its parameters are not read. The last line is not
        // examined for locals either.
        if (to_ < qint64(text_.size()))
            endLine(to_, mayHoldLocal);
        result_.lineBreaks = lineBreaksSeen_;
        result_.lastScope = latestScope_;
        return std::move(result_);
    }

private:
    // What the line break `lineBreak` ends: a pending declaration's line and a local line.
    void endLine(qint64 lineBreak, bool mayHoldLocal) {
        if (pendingPrefix_ >= 0) {
            completeDeclaration(pendingPrefix_, pendingMatch_, lineBreak);
            pendingPrefix_ = -1;
        }
        // A local line ends at the first line break after its first character, so an
        // empty line is read together with the line after it (the line break between
        // them is neither a quote nor a "D").
        if (lineBreak >= localStart_ + 1) {
            if (mayHoldLocal)
                examineLocalLine(localStart_, lineBreak);
            localStart_ = lineBreak + 1;
        }
    }

    void checkPrefix(qint64 lineBreak) {
        if (lineBreak + 1 >= qint64(text_.size()))
            return;
        const int p = prefixAt(text_, std::size_t(lineBreak));
        if (p >= 0) {
            pendingPrefix_ = p;
            pendingMatch_ = lineBreak;
            // The match is the line break that ends line n, where n counts the line
            // breaks before it plus one; the declaration stands on line n + 1.
            pendingLine_ = lineBreaksSeen_ + 2;
        }
    }

    void completeDeclaration(int p, qint64 match, qint64 lineBreak) {
        const DeclarationPrefix& prefix = declarationPrefixes()[size_t(p)];
        const DeclarationKindInfo& info = declarationKindInfo(prefix.kind);
        // A kind with a parameter list needs a "(" somewhere after the declaration.
        if (!info.takesParameters || lastOpenParenthesis_ > match) {
            const auto& entry = result_.record.entries.emplace_back(makeEntry(p, info, match, lineBreak));
            if (info.takesParameters) {
                olderScope_ = latestScope_;
                latestScope_ = {match, entry.name, false};
            }
        }
        // Parameters are read with the exact letter case of the prefix.
        if (info.takesParameters && !result_.parameterScanEnded[size_t(p)] &&
            equalsExactly(text_, std::size_t(match), prefix.text) &&
            !readParameters(prefix, text_.substr(std::size_t(match + 1), std::size_t(lineBreak - match - 1)),
                            result_.record.parameters[size_t(p)]))
            result_.parameterScanEnded[size_t(p)] = true;
    }

    typename ScanRecord<Char>::Entry makeEntry(int p, const DeclarationKindInfo& info, qint64 match,
                                               qint64 lineBreak) {
        const DeclarationPrefix& prefix = declarationPrefixes()[size_t(p)];
        typename ScanRecord<Char>::Entry entry{match, pendingLine_, p, {}, {}, {}, {}};
        const std::size_t titleStart = std::size_t(match) + prefix.text.size();
        View<Char> title = text_.substr(titleStart, std::size_t(lineBreak) - titleStart);
        // Carriage returns are removed; usually there is one, at the end.
        while (!title.empty() && title.back() == Char('\r'))
            title.remove_suffix(1);
        if (findChar(title, Char('\r')) != View<Char>::npos)
            title = arena().copyWithout(title, Char('\r'), Char('\r'));
        entry.title = title;
        entry.name = nameOf(title);
        const std::size_t open = findChar(title, Char('('));
        if (open != View<Char>::npos && prefix.kind != DeclarationKind::Dim && prefix.kind != DeclarationKind::Const) {
            // A ")" before the "(" leaves nothing between them.
            const std::size_t close = findChar(title, Char(')'));
            if (close != View<Char>::npos && close > open)
                entry.parameters = title.substr(open, close - open + 1);
        }
        if (info.declaresType)
            entry.type = rawTypeOf(title);
        return entry;
    }

    // The parameters of one declaration line as (scope, name, type) into `out`. False
    // when the line has no "(" or no ")", which ends the scan of that prefix.
    bool readParameters(const DeclarationPrefix& prefix, View<Char> line, std::vector<typename ScanRecord<Char>::Local>& out) {
        const View<Char> cleaned = withoutQuotesAndComment(line, arena());
        const std::size_t open = findChar(cleaned, Char('('));
        const std::size_t close = findChar(cleaned, Char(')'));
        if (open == View<Char>::npos || close == View<Char>::npos)
            return false;
        const std::size_t keywordEnd = prefix.text.size() - 1; // the line starts after the line break
        const View<Char> scope = trimBlanks(cleaned.substr(keywordEnd, open - keywordEnd));
        const View<Char> inner = close > open ? trimBlanks(cleaned.substr(open + 1, close - open - 1)) : View<Char>();
        if (inner.empty())
            return true;
        std::size_t pieceStart = 0;
        for (;;) {
            const std::size_t comma = findChar(inner, Char(','), pieceStart);
            const View<Char> piece =
                inner.substr(pieceStart, comma == View<Char>::npos ? View<Char>::npos : comma - pieceStart);
            const std::size_t as = piece.find(Literal<Char>::as);
            const View<Char> name = as != View<Char>::npos ? piece.substr(0, as) : piece;
            const View<Char> type = as != View<Char>::npos ? withoutLineBreaks(trimBlanks(piece.substr(as + 4)), arena())
                                                           : Literal<Char>::nsObject;
            out.push_back({scope, trimBlanks(name), type});
            if (comma == View<Char>::npos)
                break;
            pieceStart = comma + 1;
        }
        return true;
    }

    // Whether a line can declare a local at all: it holds "Dim " or a quote whose
    // removal could join one.
    static bool mayDeclareLocal(View<Char> line) {
        return findChar(line, Char('"')) != View<Char>::npos || containsText(line, Literal<Char>::dim);
    }

    void examineLocalLine(qint64 start, qint64 end) {
        View<Char> raw = text_.substr(std::size_t(start), std::size_t(end - start));
        if (!mayDeclareLocal(raw))
            return;
        // A class-level Dim keyword directly after a line break reads as one blank, so
        // only indented Dim lines declare locals.
        line_.clear();
        if (const std::size_t length = start > 0 ? classLevelDimLength(raw) : 0) {
            line_ += Char(' ');
            raw = raw.substr(length);
        } else if (!raw.empty() && raw.front() == Char('\n')) {
            if (const std::size_t joined = classLevelDimLength(raw.substr(1))) {
                line_ += Char('\n');
                line_ += Char(' ');
                raw = raw.substr(1 + joined);
            }
        }
        appendWithoutQuotesAndComment(line_, raw);
        if (line_.find(Literal<Char>::dim) == std::basic_string<Char>::npos)
            return;

        View<Char> rest = View<Char>(line_).substr(firstUnitLength(View<Char>(line_)));
        while (!rest.empty() && rest.front() == Char(' '))
            rest.remove_prefix(1);
        const std::size_t blank = findChar(rest, Char(' '));
        if (blank != View<Char>::npos)
            rest = rest.substr(blank + 1);
        // The scope is the last scope start before the line. Only a declaration at the
        // line's own first character (an empty line's break) can be at or after it.
        const ScopeStart<Char>& scope = latestScope_.position < start ? latestScope_ : olderScope_;
        const bool known = scope.position < start;
        result_.record.dims.push_back({known ? scope.name : View<Char>(), arena().copy(nameOf(rest)),
                                       arena().copy(withoutLineBreaks(rawTypeOf(rest), arena()))});
        result_.dimScopeInherited.push_back(known && scope.inherited);
    }

    TextArena<Char>& arena() { return result_.record.arena; }

    const View<Char> text_;
    const qint64 lastOpenParenthesis_;
    const qint64 from_;
    const qint64 to_;

    qint64 lineBreaksSeen_ = 0;
    int pendingPrefix_ = -1; // a declaration waiting for the line break after it
    qint64 pendingMatch_ = 0;
    qint64 pendingLine_ = 0;
    qint64 localStart_ = 0;        // start of the local line not yet examined
    ScopeStart<Char> latestScope_; // the last two scope starts found, in position order
    ScopeStart<Char> olderScope_;
    std::basic_string<Char> line_; // reused for every local line
    PartResult<Char> result_;
};

// The cuts for `parts` parts of about equal size: line breaks whose previous
// character is not a line break. Fewer when the text offers none.
template <class Char> std::vector<qint64> cutsFor(View<Char> text, int parts) {
    std::vector<qint64> cuts;
    for (int i = 1; i < parts; ++i) {
        std::size_t at = std::max<std::size_t>(text.size() / std::size_t(parts) * std::size_t(i), 1);
        if (!cuts.empty())
            at = std::max(at, std::size_t(cuts.back()) + 2);
        for (at = findChar(text, Char('\n'), at); at != View<Char>::npos && text[at - 1] == Char('\n');
             at = findChar(text, Char('\n'), at + 1)) {
        }
        if (at == View<Char>::npos)
            break;
        cuts.push_back(qint64(at));
    }
    return cuts;
}

// Joins the parts' results in text order into the record of one pass.
template <class Char> ScanRecord<Char> join(std::vector<PartResult<Char>>& parts) {
    PartResult<Char>& first = parts.front();
    ScanRecord<Char> record = std::move(first.record);
    std::vector<bool> ended = first.parameterScanEnded;
    ScopeStart<Char> lastScope = first.lastScope;
    qint64 lineOffset = first.lineBreaks;
    for (size_t k = 1; k < parts.size(); ++k) {
        PartResult<Char>& part = parts[k];
        for (auto& entry : part.record.entries) {
            entry.line += lineOffset;
            record.entries.push_back(entry);
        }
        const View<Char> scopeBefore = lastScope.position == noPosition ? View<Char>() : lastScope.name;
        for (size_t d = 0; d < part.record.dims.size(); ++d) {
            auto dim = part.record.dims[d];
            if (part.dimScopeInherited[d])
                dim.scope = scopeBefore;
            record.dims.push_back(dim);
        }
        for (size_t p = 0; p < ended.size(); ++p) {
            if (ended[p])
                continue;
            auto& into = record.parameters[p];
            into.insert(into.end(), part.record.parameters[p].begin(), part.record.parameters[p].end());
            ended[p] = part.parameterScanEnded[p];
        }
        if (!part.lastScope.inherited)
            lastScope = part.lastScope;
        lineOffset += part.lineBreaks;
        record.arena.adopt(std::move(part.record.arena));
    }
    return record;
}

// Positions were counted in bytes; the lists give them in UTF-16 units, which differ
// once a character takes more than one byte. One walk over the text, since the entries
// are in position order.
void positionsInUtf16(std::vector<ScanRecord<char>::Entry>& entries, std::string_view text) {
    qint64 byte = 0;
    qint64 units = 0;
    for (auto& entry : entries) {
        for (; byte < entry.position; ++byte) {
            const auto c = static_cast<unsigned char>(text[std::size_t(byte)]);
            units += (c & 0xC0) != 0x80; // not a continuation byte
            units += c >= 0xF0;          // four bytes make two UTF-16 units
        }
        entry.position = units;
    }
}

template <class Char> qint64 lastIndexOf(View<Char> text, Char c) {
    const std::size_t at = text.rfind(c);
    return at == View<Char>::npos ? -1 : qint64(at);
}

// Appends valid UTF-8 (the bytes scannableAsBytes accepted) as UTF-16. Decoded by hand:
// Qt's decoder drops a byte order mark at the start of what it decodes, and a piece of
// a line may start with one.
void appendUtf8(QString& out, std::string_view text) {
    if (isAscii(text)) {
        out.append(QLatin1StringView(text.data(), qsizetype(text.size())));
        return;
    }
    const auto* at = reinterpret_cast<const unsigned char*>(text.data());
    const auto* const end = at + text.size();
    while (at < end) {
        char32_t c = *at;
        int more = 0;
        if (c >= 0xF0) {
            c &= 0x07;
            more = 3;
        } else if (c >= 0xE0) {
            c &= 0x0F;
            more = 2;
        } else if (c >= 0xC0) {
            c &= 0x1F;
            more = 1;
        }
        for (++at; more > 0; --more, ++at)
            c = (c << 6) | (*at & 0x3F);
        if (c >= 0x10000) {
            out.append(QChar(QChar::highSurrogate(c)));
            out.append(QChar(QChar::lowSurrogate(c)));
        } else {
            out.append(QChar(char16_t(c)));
        }
    }
}

template <class Char> void appendTo(QString& out, View<Char> text) {
    if constexpr (sizeof(Char) == 1)
        appendUtf8(out, text);
    else
        out.append(QStringView(text.data(), qsizetype(text.size())));
}

template <class Char> QString toQString(View<Char> text) {
    if constexpr (sizeof(Char) == 1) {
        QString out;
        out.reserve(qsizetype(text.size()));
        appendUtf8(out, text);
        return out;
    } else {
        return QString(reinterpret_cast<const QChar*>(text.data()), qsizetype(text.size()));
    }
}

// One shared copy of each type text: a file names few types many times, and sharing
// them keeps the lists small and close together in memory.
template <class Char> class TypeNames {
public:
    QString shared(View<Char> type) {
        auto found = known_.find(type);
        if (found == known_.end())
            found = known_.emplace(type, toQString(type)).first;
        return found->second;
    }

private:
    std::unordered_map<View<Char>, QString> known_;
};

} // namespace

const std::vector<DeclarationPrefix>& declarationPrefixes() {
    static const std::vector<DeclarationPrefix> table = [] {
        std::vector<DeclarationPrefix> prefixes;
        for (DeclarationKind kind : allDeclarationKinds())
            for (const QString& prefix : declarationKindInfo(kind).prefixes)
                prefixes.push_back({kind, prefix.startsWith(QLatin1String("\nPublic ")), prefix.toStdU16String()});
        return prefixes;
    }();
    return table;
}

template <class Char> ScanRecord<Char> recordDeclarations(std::basic_string_view<Char> text, int parts) {
    const qint64 lastOpenParenthesis = lastIndexOf(text, Char('('));
    const std::vector<qint64> cuts = parts > 1 ? cutsFor(text, parts) : std::vector<qint64>();
    std::vector<PartResult<Char>> results(cuts.size() + 1);
    auto scanPart = [&](size_t k) {
        const qint64 from = k == 0 ? -1 : cuts[k - 1];
        const qint64 to = k < cuts.size() ? cuts[k] : qint64(text.size());
        results[k] = PartScan<Char>(text, lastOpenParenthesis, from, to).run();
    };
    std::vector<std::thread> threads;
    for (size_t k = 1; k < results.size(); ++k)
        threads.emplace_back(scanPart, k);
    scanPart(0);
    for (std::thread& thread : threads)
        thread.join();
    ScanRecord<Char> record = join(results);
    if constexpr (sizeof(Char) == 1)
        if (!isAscii(text))
            positionsInUtf16(record.entries, text);
    return record;
}

template <class Char> DeclarationLists declarationListsOf(const ScanRecord<Char>& record) {
    static const QString publicWord = QStringLiteral("Public");
    static const QString privateWord = QStringLiteral("Private");
    const auto& prefixes = declarationPrefixes();
    TypeNames<Char> types;

    // Every list starts with two rows left for its heading and separator.
    QList<DeclarationEntry> all;
    all.reserve(qsizetype(record.entries.size()) + 2);
    all.resize(2);
    for (const auto& e : record.entries) {
        const DeclarationPrefix& prefix = prefixes[size_t(e.prefix)];
        const DeclarationKindInfo& info = declarationKindInfo(prefix.kind);
        DeclarationEntry& entry = all.emplaceBack();
        entry.title = toQString(e.title);
        entry.image = info.image;
        entry.tag = 1;
        entry.line = e.line;
        entry.visibility = prefix.isPublic ? publicWord : privateWord;
        entry.kind = info.word;
        entry.name = toQString(e.name);
        if (!e.parameters.empty())
            entry.parameters = toQString(e.parameters);
        if (info.declaresType)
            entry.type = types.shared(e.type);
    }

    DeclarationLists result;
    QList<DeclarationEntry> kindEntries[declarationKindCount];
    qsizetype kindCounts[declarationKindCount] = {};
    for (const auto& e : record.entries)
        ++kindCounts[int(prefixes[size_t(e.prefix)].kind)];
    for (int k = 0; k < declarationKindCount; ++k) {
        kindEntries[k].reserve(kindCounts[k] + 2);
        kindEntries[k].resize(2);
    }
    forEachEntryByKind(record, [&](DeclarationKind kind, int i) {
        const DeclarationEntry& entry = all.at(i + 2);
        kindEntries[int(kind)].append(entry);
        if (declarationKindInfo(kind).takesParameters) {
            result.lineSeparators.append(record.entries[size_t(i)].position);
            result.lineSeparatorsType.append(entry.name);
        }
    });
    for (DeclarationKind kind : allDeclarationKinds())
        result.kinds[int(kind)] =
            DeclarationList::fromRows(declarationKindInfo(kind).word, std::move(kindEntries[int(kind)]));
    result.all = DeclarationList::fromRows(QStringLiteral("All"), std::move(all));

    // Parameters come after the Dim lines and replace a Dim of the same key.
    qsizetype localCount = qsizetype(record.dims.size());
    for (const auto& parameters : record.parameters)
        localCount += qsizetype(parameters.size());
    result.locals.reserve(localCount);
    auto insertLocal = [&](const typename ScanRecord<Char>::Local& local) {
        QString key;
        key.reserve(qsizetype(local.scope.size() + 1 + local.name.size()));
        appendTo(key, local.scope);
        key.append(QLatin1Char('.'));
        appendTo(key, local.name);
        result.locals.insert(std::move(key), types.shared(local.type));
    };
    for (const auto& dim : record.dims)
        insertLocal(dim);
    for (const auto& parameters : record.parameters)
        for (const auto& parameter : parameters)
            insertLocal(parameter);
    return result;
}

DeclarationLists scanDeclarations(QStringView text) {
    return declarationListsOf(recordDeclarations(std::u16string_view(text.utf16(), size_t(text.size()))));
}

template ScanRecord<char> recordDeclarations<char>(std::string_view, int);
template ScanRecord<char16_t> recordDeclarations<char16_t>(std::u16string_view, int);
template DeclarationLists declarationListsOf<char>(const ScanRecord<char>&);
template DeclarationLists declarationListsOf<char16_t>(const ScanRecord<char16_t>&);
