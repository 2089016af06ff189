// One pass over the line breaks of the text finds every declaration, the scope starts
// and the parameter lists; a second walk over the lines finds local Dim lines. Lists are
// grouped by prefix afterwards, so the merged list comes out in line order without any
// sorting and every line number is known from the line-break count so far.
#include "insight/declaration_scanner.h"

#include <array>
#include <limits>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace {

char16_t asciiLower(char16_t c) { return (c >= u'A' && c <= u'Z') ? char16_t(c + 32) : c; }

// Whether `c` equals the ASCII letter or blank `want` when letter case is ignored, the
// way Qt's case-insensitive searches compare: besides the ASCII pairs, only LATIN SMALL
// LETTER LONG S folds onto "s" and KELVIN SIGN onto "k".
bool sameIgnoringCase(char16_t c, char16_t want) {
    if (c == want)
        return true;
    const char16_t lower = asciiLower(want);
    if (c < 128)
        return asciiLower(c) == lower;
    return (c == 0x017F && lower == u's') || (c == 0x212A && lower == u'k');
}

} // namespace

namespace scanner_text {

static bool isBlankOrTab(QChar c) { return c == u' ' || c == u'\t'; }

QStringView trimBlanks(QStringView s) {
    qsizetype begin = 0;
    qsizetype end = s.size();
    while (begin < end && isBlankOrTab(s[begin]))
        ++begin;
    while (end > begin && isBlankOrTab(s[end - 1]))
        --end;
    return s.sliced(begin, end - begin);
}

QStringView nameOf(QStringView s) {
    for (qsizetype i = 0; i < s.size(); ++i)
        if (s[i] == u' ' || s[i] == u'(')
            return s.first(i);
    return s;
}

// The type text before line breaks are removed (see typeOf); a view into `s`.
static QStringView rawTypeOf(QStringView s) {
    qsizetype as = s.size() - 4;
    while (as >= 0 && !(s[as] == u' ' && sameIgnoringCase(s[as + 1].unicode(), u'a') &&
                        sameIgnoringCase(s[as + 2].unicode(), u's') && s[as + 3] == u' '))
        --as;
    if (as < 0)
        return {};
    QStringView rest = s.sliced(as + 4);
    for (qsizetype i = 0; i < rest.size(); ++i) {
        if (rest[i] == u' ' || rest[i] == u'(' || rest[i] == u'\'') {
            rest = rest.first(i);
            break;
        }
    }
    return trimBlanks(rest);
}

QString typeOf(QStringView s) {
    QString type = rawTypeOf(s).toString();
    type.remove(QLatin1Char('\r'));
    type.remove(QLatin1Char('\n'));
    return type;
}

QString withoutQuotesAndComment(QStringView line) {
    QString out;
    out.reserve(line.size());
    qsizetype from = 0;
    for (;;) {
        const qsizetype open = line.indexOf(u'"', from);
        const qsizetype close = open < 0 ? -1 : line.indexOf(u'"', open + 1);
        if (close < 0) {
            out.append(line.sliced(from));
            break;
        }
        out.append(line.sliced(from, open - from));
        from = close + 1;
    }
    const qsizetype comment = out.indexOf(QLatin1Char('\''));
    if (comment >= 0)
        out.truncate(comment);
    return out;
}

} // namespace scanner_text

namespace {

using namespace scanner_text;

// One of the 22 prefixes, in the order the kinds and their prefixes are searched.
struct Prefix {
    DeclarationKind kind;
    QString text; // "\nPublic Sub "
    bool isPublic;
};

const std::vector<Prefix>& prefixTable() {
    static const std::vector<Prefix> table = [] {
        std::vector<Prefix> prefixes;
        for (DeclarationKind kind : allDeclarationKinds())
            for (const QString& prefix : declarationKindInfo(kind).prefixes)
                prefixes.push_back({kind, prefix, prefix.startsWith(QLatin1String("\nPublic "))});
        return prefixes;
    }();
    return table;
}

// The prefixes whose keyword starts with a given ASCII letter, so that most lines are
// rejected by looking at one character.
struct FirstLetterIndex {
    std::array<std::vector<int>, 128> byLetter;
    FirstLetterIndex() {
        const auto& table = prefixTable();
        for (int i = 0; i < int(table.size()); ++i)
            byLetter[asciiLower(table[i].text.at(1).unicode())].push_back(i);
    }
};

bool equalsIgnoringCase(const char16_t* at, const QString& prefix) {
    const auto* want = reinterpret_cast<const char16_t*>(prefix.utf16());
    for (qsizetype i = 0; i < prefix.size(); ++i)
        if (!sameIgnoringCase(at[i], want[i]))
            return false;
    return true;
}

// The index of the prefix that stands at the line break `at`, ignoring case, or -1. No
// two prefixes can match at the same place.
int prefixAt(const char16_t* text, qsizetype size, qsizetype at) {
    static const FirstLetterIndex index;
    char16_t first = text[at + 1];
    if (first == 0x017F)
        first = u's';
    if (first >= 128)
        return -1;
    const std::vector<int>& candidates = index.byLetter[asciiLower(first)];
    for (int candidate : candidates) {
        const QString& prefix = prefixTable()[candidate].text;
        if (at + prefix.size() <= size && equalsIgnoringCase(text + at, prefix))
            return candidate;
    }
    return -1;
}

bool equalsExactly(const char16_t* at, const QString& prefix) {
    return QStringView(at, prefix.size()) == QStringView(prefix);
}

// One shared copy of each type text: a file names few types many times, and sharing
// them keeps the results small and close together in memory.
class TypeNames {
public:
    // The shared copy of `type` with line feeds and carriage returns removed.
    QString shared(QStringView type) {
        if (type.contains(u'\r') || type.contains(u'\n')) {
            QString cleaned = type.toString();
            cleaned.remove(QLatin1Char('\r'));
            cleaned.remove(QLatin1Char('\n'));
            return shared(cleaned);
        }
        const std::u16string_view key(type.utf16(), size_t(type.size()));
        const auto found = known_.find(key);
        if (found != known_.end())
            return found->second;
        QString copy = type.toString();
        // The key views the stored copy's text, which never moves or changes.
        known_.emplace(std::u16string_view(reinterpret_cast<const char16_t*>(copy.utf16()), size_t(copy.size())), copy);
        return copy;
    }

private:
    std::unordered_map<std::u16string_view, QString> known_;
};

struct ScopeStart {
    qint64 position = std::numeric_limits<qint64>::max(); // none yet
    QString name;
};

using LocalPairs = std::vector<std::pair<QString, QString>>;

DeclarationEntry makeEntry(const Prefix& prefix, QStringView text, qsizetype match, qsizetype lineBreak,
                           qint64 line, TypeNames& types) {
    static const QString publicWord = QStringLiteral("Public");
    static const QString privateWord = QStringLiteral("Private");
    const DeclarationKindInfo& info = declarationKindInfo(prefix.kind);

    DeclarationEntry entry;
    const qsizetype titleStart = match + prefix.text.size();
    entry.title = text.sliced(titleStart, lineBreak - titleStart).toString();
    if (entry.title.contains(QLatin1Char('\r')))
        entry.title.remove(QLatin1Char('\r'));
    entry.image = info.image;
    entry.tag = 1;
    entry.line = line;
    entry.visibility = prefix.isPublic ? publicWord : privateWord;
    entry.kind = info.word;

    const QStringView title(entry.title);
    entry.name = nameOf(title).toString();
    const qsizetype open = title.indexOf(u'(');
    if (open >= 0 && prefix.kind != DeclarationKind::Dim && prefix.kind != DeclarationKind::Const) {
        // A ")" before the "(" leaves nothing between them.
        const qsizetype close = title.indexOf(u')');
        if (close > open)
            entry.parameters = title.sliced(open, close - open + 1).toString();
    }
    if (info.declaresType)
        entry.type = types.shared(rawTypeOf(title));
    return entry;
}

// The parameters of one declaration line into `out` as ("Scope.name", type) pairs.
// False when the line has no "(" or no ")", which ends the scan of that prefix.
bool readParameters(const Prefix& prefix, QStringView line, LocalPairs& out, TypeNames& types) {
    static const QString defaultType = QStringLiteral("NSObject");
    const QString cleaned = withoutQuotesAndComment(line);
    const qsizetype open = cleaned.indexOf(QLatin1Char('('));
    const qsizetype close = cleaned.indexOf(QLatin1Char(')'));
    if (open < 0 || close < 0)
        return false;
    const QStringView view(cleaned);
    const qsizetype keywordEnd = prefix.text.size() - 1; // the line starts after the line break
    const QString scope = trimBlanks(view.sliced(keywordEnd, open - keywordEnd)).toString();
    const QStringView inner = close > open ? trimBlanks(view.sliced(open + 1, close - open - 1)) : QStringView();
    if (inner.isEmpty())
        return true;
    for (QStringView piece : inner.split(u',')) {
        const qsizetype as = piece.indexOf(QStringView(u" As "));
        QStringView name = as >= 0 ? piece.first(as) : piece;
        const QStringView type = as >= 0 ? trimBlanks(piece.sliced(as + 4)) : QStringView(defaultType);
        out.emplace_back(scope + QLatin1Char('.') + trimBlanks(name).toString(), types.shared(type));
    }
    return true;
}

// The length of a class-level Dim keyword ("Dim ", "Public Dim ", "Private Dim ",
// letter case as written) at the start of `rest`, or 0.
qsizetype classLevelDimLength(QStringView rest) {
    static const QStringView keywords[] = {u"Dim ", u"Public Dim ", u"Private Dim "};
    for (QStringView keyword : keywords)
        if (rest.startsWith(keyword))
            return keyword.size();
    return 0;
}

// Appends `line` to `out` with every double-quoted part removed, then cuts `out`
// before the first "'" of what was appended.
void appendWithoutQuotesAndComment(std::u16string& out, QStringView line) {
    const std::size_t appendedFrom = out.size();
    const char16_t* chars = line.utf16();
    qsizetype from = 0;
    for (;;) {
        const qsizetype open = line.indexOf(u'"', from);
        const qsizetype close = open < 0 ? -1 : line.indexOf(u'"', open + 1);
        const qsizetype keepTo = close < 0 ? line.size() : open;
        out.append(chars + from, chars + keepTo);
        if (close < 0)
            break;
        from = close + 1;
    }
    const std::size_t comment = out.find(u'\'', appendedFrom);
    if (comment != std::u16string::npos)
        out.resize(comment);
}

// Whether a line can declare a local at all: it holds "Dim " or a quote whose removal
// could join one.
bool mayDeclareLocal(const char16_t* begin, const char16_t* end) {
    for (const char16_t* c = begin; c < end; ++c) {
        if (*c == u'"')
            return true;
        if (*c == u'D' && end - c >= 4 && c[1] == u'i' && c[2] == u'm' && c[3] == u' ')
            return true;
    }
    return false;
}

// One scan, fed the line breaks of the text in order. A declaration found at a line
// break is completed when the next line break is seen (its title ends there); a local
// line is examined as soon as its end is known. Nothing is searched twice.
class Scan {
public:
    explicit Scan(QStringView text)
        : text_(text), chars_(text.utf16()), size_(text.size()), lastOpenParenthesis_(text.lastIndexOf(u'(')),
          entriesByPrefix_(prefixTable().size()), scopesByPrefix_(prefixTable().size()),
          parametersByPrefix_(prefixTable().size()), parameterScanEnded_(prefixTable().size(), false) {}

    DeclarationLists run() {
        for (qsizetype lineBreak = text_.indexOf(u'\n'); lineBreak >= 0; lineBreak = text_.indexOf(u'\n', lineBreak + 1))
            onLineBreak(lineBreak);
        // A declaration on the last line, with no line break after it, stays pending:
        // it is not listed and its parameters are not read. The last line is not
        // examined for locals either.
        return result();
    }

private:
    void onLineBreak(qsizetype lineBreak) {
        if (pendingPrefix_ >= 0) {
            completeDeclaration(pendingPrefix_, pendingMatch_, lineBreak);
            pendingPrefix_ = -1;
        }
        // A local line ends at the first line break after its first character, so an
        // empty line is read together with the line after it.
        if (lineBreak >= localStart_ + 1) {
            examineLocalLine(localStart_, lineBreak);
            localStart_ = lineBreak + 1;
        }
        if (lineBreak + 1 < size_) {
            const int p = prefixAt(chars_, size_, lineBreak);
            if (p >= 0) {
                pendingPrefix_ = p;
                pendingMatch_ = lineBreak;
                // The match is the line break that ends line n, where n counts the line
                // breaks before it plus one; the declaration stands on line n + 1.
                pendingLine_ = lineBreaksSeen_ + 2;
            }
        }
        ++lineBreaksSeen_;
    }

    void completeDeclaration(int p, qsizetype match, qsizetype lineBreak) {
        const Prefix& prefix = prefixTable()[p];
        const bool takesParameters = declarationKindInfo(prefix.kind).takesParameters;
        // A kind with a parameter list needs a "(" somewhere after the declaration.
        if (!takesParameters || lastOpenParenthesis_ > match) {
            DeclarationEntry entry = makeEntry(prefix, text_, match, lineBreak, pendingLine_, types_);
            if (takesParameters) {
                scopesByPrefix_[p].push_back({match, entry.name});
                olderScope_ = std::move(latestScope_);
                latestScope_ = {match, entry.name};
            }
            all_.append(entry);
            entriesByPrefix_[p].append(std::move(entry));
        }
        // Parameters are read with the exact letter case of the prefix.
        if (takesParameters && !parameterScanEnded_[p] && equalsExactly(chars_ + match, prefix.text) &&
            !readParameters(prefix, text_.sliced(match + 1, lineBreak - match - 1), parametersByPrefix_[p], types_))
            parameterScanEnded_[p] = true;
    }

    void examineLocalLine(qsizetype start, qsizetype end) {
        if (!mayDeclareLocal(chars_ + start, chars_ + end))
            return;
        // A class-level Dim keyword directly after a line break reads as one blank, so
        // only indented Dim lines declare locals.
        QStringView raw = text_.sliced(start, end - start);
        line_.clear();
        if (const qsizetype length = start > 0 ? classLevelDimLength(raw) : 0) {
            line_ += u' ';
            raw = raw.sliced(length);
        } else if (raw.startsWith(u'\n')) {
            if (const qsizetype joined = classLevelDimLength(raw.sliced(1))) {
                line_ += u"\n ";
                raw = raw.sliced(1 + joined);
            }
        }
        appendWithoutQuotesAndComment(line_, raw);
        if (line_.find(u"Dim ") == std::u16string::npos)
            return;

        QStringView rest = QStringView(line_.data(), qsizetype(line_.size())).sliced(1);
        while (!rest.isEmpty() && rest.front() == u' ')
            rest = rest.sliced(1);
        const qsizetype blank = rest.indexOf(u' ');
        if (blank >= 0)
            rest = rest.sliced(blank + 1);
        // The scope is the last scope start before the line. Only a declaration at the
        // line's own first character (an empty line's break) can be at or after it.
        const ScopeStart& scope = latestScope_.position < start ? latestScope_ : olderScope_;
        const QStringView scopeName = scope.position < start ? QStringView(scope.name) : QStringView();
        const QStringView name = nameOf(rest);
        QString key;
        key.reserve(scopeName.size() + 1 + name.size());
        key.append(scopeName).append(QLatin1Char('.')).append(name);
        localDims_.emplace_back(std::move(key), types_.shared(rawTypeOf(rest)));
    }

    DeclarationLists result() {
        const auto& prefixes = prefixTable();
        DeclarationLists result;
        for (DeclarationKind kind : allDeclarationKinds()) {
            QList<DeclarationEntry> entries;
            for (size_t p = 0; p < prefixes.size(); ++p) {
                if (prefixes[p].kind != kind)
                    continue;
                entries.append(std::move(entriesByPrefix_[p]));
                for (const ScopeStart& start : scopesByPrefix_[p]) {
                    result.lineSeparators.append(start.position);
                    result.lineSeparatorsType.append(start.name);
                }
            }
            result.kinds[int(kind)] = DeclarationList::make(declarationKindInfo(kind).word, std::move(entries));
        }
        result.all = DeclarationList::make(QStringLiteral("All"), std::move(all_));

        // Parameters come after the Dim lines and replace a Dim of the same key.
        qsizetype localCount = qsizetype(localDims_.size());
        for (const LocalPairs& parameters : parametersByPrefix_)
            localCount += qsizetype(parameters.size());
        result.locals.reserve(localCount);
        for (const auto& [key, type] : localDims_)
            result.locals.insert(key, type);
        for (const LocalPairs& parameters : parametersByPrefix_)
            for (const auto& [key, type] : parameters)
                result.locals.insert(key, type);
        return result;
    }

    const QStringView text_;
    const char16_t* const chars_;
    const qsizetype size_;
    const qsizetype lastOpenParenthesis_;

    qint64 lineBreaksSeen_ = 0;
    int pendingPrefix_ = -1; // a declaration waiting for the line break after it
    qsizetype pendingMatch_ = 0;
    qint64 pendingLine_ = 0;
    qsizetype localStart_ = 0; // start of the local line not yet examined
    ScopeStart latestScope_;   // the last two scope starts found, in position order
    ScopeStart olderScope_;
    std::u16string line_; // reused for every local line, so examining one allocates nothing

    std::vector<QList<DeclarationEntry>> entriesByPrefix_;
    std::vector<std::vector<ScopeStart>> scopesByPrefix_;
    std::vector<LocalPairs> parametersByPrefix_;
    std::vector<bool> parameterScanEnded_;
    QList<DeclarationEntry> all_;
    LocalPairs localDims_;
    TypeNames types_;
};

} // namespace

DeclarationLists scanDeclarations(QStringView text) { return Scan(text).run(); }
