// One pass over the line breaks of the text finds every declaration, the scope starts
// and the parameter lists; a second walk over the lines finds local Dim lines. Lists are
// grouped by prefix afterwards, so the merged list comes out in line order without any
// sorting and every line number is known from the line-break count so far.
#include "insight/declaration_scanner.h"

#include <array>
#include <vector>

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

QString typeOf(QStringView s) {
    const qsizetype as = s.lastIndexOf(QStringView(u" As "), Qt::CaseInsensitive);
    if (as < 0)
        return {};
    QStringView rest = s.sliced(as + 4);
    for (qsizetype i = 0; i < rest.size(); ++i) {
        if (rest[i] == u' ' || rest[i] == u'(' || rest[i] == u'\'') {
            rest = rest.first(i);
            break;
        }
    }
    QString type = trimBlanks(rest).toString();
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

char16_t asciiLower(char16_t c) { return (c >= u'A' && c <= u'Z') ? char16_t(c + 32) : c; }

// The prefixes whose keyword starts with a given ASCII letter, so that most lines are
// rejected by looking at one character.
struct FirstLetterIndex {
    std::array<std::vector<int>, 128> byLetter;
    std::vector<int> everything;
    FirstLetterIndex() {
        const auto& table = prefixTable();
        for (int i = 0; i < int(table.size()); ++i) {
            byLetter[asciiLower(table[i].text.at(1).unicode())].push_back(i);
            everything.push_back(i);
        }
    }
};

bool equalsIgnoringCase(const char16_t* at, const QString& prefix) {
    const auto* want = reinterpret_cast<const char16_t*>(prefix.utf16());
    const qsizetype length = prefix.size();
    for (qsizetype i = 0; i < length; ++i) {
        if (at[i] >= 128) // letters outside ASCII may fold onto ASCII ones: ask Qt
            return QStringView(at, length).compare(prefix, Qt::CaseInsensitive) == 0;
        if (asciiLower(at[i]) != asciiLower(want[i]))
            return false;
    }
    return true;
}

// The index of the prefix that stands at the line break `at`, ignoring case, or -1. No
// two prefixes can match at the same place.
int prefixAt(const char16_t* text, qsizetype size, qsizetype at) {
    static const FirstLetterIndex index;
    const char16_t first = text[at + 1];
    const std::vector<int>& candidates = first < 128 ? index.byLetter[asciiLower(first)] : index.everything;
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

struct ScopeStart {
    qint64 position;
    QString name;
};

DeclarationEntry makeEntry(const Prefix& prefix, QStringView text, qsizetype match, qsizetype lineBreak,
                           qint64 line) {
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
        entry.type = typeOf(title);
    return entry;
}

// The parameters of one declaration line into `out` as ("Scope.name", type) pairs.
// False when the line has no "(" or no ")", which ends the scan of that prefix.
bool readParameters(const Prefix& prefix, QStringView line, std::vector<std::pair<QString, QString>>& out) {
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
        QString type = as >= 0 ? trimBlanks(piece.sliced(as + 4)).toString() : defaultType;
        type.remove(QLatin1Char('\r'));
        type.remove(QLatin1Char('\n'));
        out.emplace_back(scope + QLatin1Char('.') + trimBlanks(name).toString(), std::move(type));
    }
    return true;
}

// Class-level Dim keywords directly after a line break read as one blank for the local
// scan, so only indented Dim lines declare locals.
QString maskClassLevelDims(QStringView line, bool afterLineBreak) {
    static const QStringView keywords[] = {u"Dim ", u"Public Dim ", u"Private Dim "};
    auto masked = [](QStringView rest) -> qsizetype {
        for (QStringView keyword : keywords)
            if (rest.startsWith(keyword))
                return keyword.size();
        return 0;
    };
    if (afterLineBreak) {
        if (const qsizetype length = masked(line))
            return QLatin1Char(' ') + line.sliced(length).toString();
    }
    if (line.startsWith(u'\n')) { // an empty line joined to the one after it
        if (const qsizetype length = masked(line.sliced(1)))
            return QStringLiteral("\n ") + line.sliced(1 + length).toString();
    }
    return line.toString();
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

void scanLocalDims(QStringView text, const std::vector<qsizetype>& lineBreaks,
                   const std::vector<ScopeStart>& scopesByPosition, QHash<QString, QString>& locals) {
    const char16_t* chars = text.utf16();
    size_t nextBreak = 0;
    size_t scope = 0;
    for (qsizetype start = 0;;) {
        // The line ends at the first line break after its first character, so an empty
        // line is read together with the line after it.
        while (nextBreak < lineBreaks.size() && lineBreaks[nextBreak] < start + 1)
            ++nextBreak;
        if (nextBreak == lineBreaks.size())
            break; // the last line, without a line break after it, is not examined
        const qsizetype end = lineBreaks[nextBreak];
        if (mayDeclareLocal(chars + start, chars + end)) {
            const QString line =
                withoutQuotesAndComment(maskClassLevelDims(text.sliced(start, end - start), start > 0));
            if (line.contains(QLatin1String("Dim "))) {
                QStringView rest = QStringView(line).sliced(1);
                while (!rest.isEmpty() && rest.front() == u' ')
                    rest = rest.sliced(1);
                const qsizetype blank = rest.indexOf(u' ');
                if (blank >= 0)
                    rest = rest.sliced(blank + 1);
                while (scope < scopesByPosition.size() && scopesByPosition[scope].position < start)
                    ++scope;
                const QString scopeName = scope > 0 ? scopesByPosition[scope - 1].name : QString();
                locals.insert(scopeName + QLatin1Char('.') + nameOf(rest).toString(), typeOf(rest));
            }
        }
        start = end + 1;
    }
}

} // namespace

DeclarationLists scanDeclarations(QStringView text) {
    const char16_t* chars = text.utf16();
    const qsizetype size = text.size();
    const auto& prefixes = prefixTable();
    const size_t prefixCount = prefixes.size();

    std::vector<qsizetype> lineBreaks;
    for (qsizetype i = text.indexOf(u'\n'); i >= 0; i = text.indexOf(u'\n', i + 1))
        lineBreaks.push_back(i);
    // A kind with a parameter list needs a "(" somewhere after the declaration.
    const qsizetype lastOpenParenthesis = text.lastIndexOf(u'(');

    std::vector<QList<DeclarationEntry>> entriesByPrefix(prefixCount);
    std::vector<std::vector<ScopeStart>> scopesByPrefix(prefixCount);
    std::vector<std::vector<std::pair<QString, QString>>> parametersByPrefix(prefixCount);
    std::vector<bool> parameterScanEnded(prefixCount, false);
    std::vector<ScopeStart> scopesByPosition;
    QList<DeclarationEntry> all;

    for (size_t k = 0; k < lineBreaks.size(); ++k) {
        const qsizetype match = lineBreaks[k];
        if (match + 1 >= size)
            break;
        const int p = prefixAt(chars, size, match);
        if (p < 0)
            continue;
        const Prefix& prefix = prefixes[p];
        const bool takesParameters = declarationKindInfo(prefix.kind).takesParameters;
        const bool hasLineBreakAfter = k + 1 < lineBreaks.size();

        if (hasLineBreakAfter && (!takesParameters || lastOpenParenthesis > match)) {
            // The match is the line break that ends line k + 1, so the declaration
            // stands on line k + 2.
            DeclarationEntry entry = makeEntry(prefix, text, match, lineBreaks[k + 1], qint64(k) + 2);
            if (takesParameters) {
                scopesByPrefix[p].push_back({match, entry.name});
                scopesByPosition.push_back({match, entry.name});
            }
            all.append(entry);
            entriesByPrefix[p].append(std::move(entry));
        }

        // Parameters are read with the exact letter case of the prefix.
        if (takesParameters && !parameterScanEnded[p] && equalsExactly(chars + match, prefix.text)) {
            if (!hasLineBreakAfter ||
                !readParameters(prefix, text.sliced(match + 1, lineBreaks[k + 1] - match - 1),
                                parametersByPrefix[p]))
                parameterScanEnded[p] = true;
        }
    }

    DeclarationLists result;
    for (DeclarationKind kind : allDeclarationKinds()) {
        QList<DeclarationEntry> entries;
        for (size_t p = 0; p < prefixCount; ++p) {
            if (prefixes[p].kind != kind)
                continue;
            entries.append(entriesByPrefix[p]);
            for (const ScopeStart& start : scopesByPrefix[p]) {
                result.lineSeparators.append(start.position);
                result.lineSeparatorsType.append(start.name);
            }
        }
        result.kinds[int(kind)] = DeclarationList::make(declarationKindInfo(kind).word, std::move(entries));
    }
    result.all = DeclarationList::make(QStringLiteral("All"), std::move(all));

    scanLocalDims(text, lineBreaks, scopesByPosition, result.locals);
    // Parameters come after the Dim lines and replace a Dim of the same key.
    for (size_t p = 0; p < prefixCount; ++p)
        for (auto& [key, type] : parametersByPrefix[p])
            result.locals.insert(key, type);
    return result;
}
