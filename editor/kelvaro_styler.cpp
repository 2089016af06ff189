#include "editor/kelvaro_styler.h"

#include <QString>

using namespace kelvaro_style;

namespace {

bool isWordStart(unsigned char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c >= 0x80;
}

bool isWordPart(unsigned char c) {
    return isWordStart(c) || (c >= '0' && c <= '9');
}

bool isDigit(unsigned char c) {
    return c >= '0' && c <= '9';
}

bool isHexDigit(unsigned char c) {
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool isLineBreak(unsigned char c) {
    return c == '\n' || c == '\r';
}

} // namespace

QSet<QByteArray> KelvaroWordLists::lowered(const QStringList& words) {
    QSet<QByteArray> set;
    set.reserve(words.size());
    for (const QString& word : words) {
        const QString trimmed = word.trimmed();
        if (!trimmed.isEmpty())
            set.insert(trimmed.toLower().toUtf8());
    }
    return set;
}

Style KelvaroWordLists::classify(const char* word, int length) const {
    if (length <= 0)
        return Default;
    // Most words are short and ASCII: lower them on the stack. Other words go
    // through Unicode case mapping.
    char buffer[64];
    QByteArray lower;
    bool ascii = length <= int(sizeof buffer);
    for (int i = 0; ascii && i < length; ++i) {
        const unsigned char c = static_cast<unsigned char>(word[i]);
        if (c >= 0x80)
            ascii = false;
        else
            buffer[i] = char(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
    }
    if (ascii)
        lower = QByteArray::fromRawData(buffer, length);
    else
        lower = QString::fromUtf8(word, length).toLower().toUtf8();
    if (keywords_.contains(lower))
        return Keyword;
    if (types_.contains(lower))
        return Type;
    if (commands_.contains(lower))
        return Command;
    return Default;
}

void styleKelvaroLine(const char* text, int length, const KelvaroWordLists& words, char* styles) {
    const auto* s = reinterpret_cast<const unsigned char*>(text);
    auto fill = [styles](int from, int to, Style style) {
        for (int k = from; k < to; ++k)
            styles[k] = style;
    };
    int contentEnd = length;
    while (contentEnd > 0 && isLineBreak(s[contentEnd - 1]))
        --contentEnd;
    fill(contentEnd, length, Default);

    bool atStatementStart = true; // only blanks so far: "Rem" starts a comment here
    int i = 0;
    while (i < contentEnd) {
        const unsigned char c = s[i];
        if (c == '\'') {
            fill(i, contentEnd, Comment);
            return;
        }
        if (c == '"') {
            // A string runs to the next quote; two quotes inside it stand for one.
            int j = i + 1;
            while (j < contentEnd) {
                if (s[j] == '"') {
                    if (j + 1 < contentEnd && s[j + 1] == '"') {
                        j += 2;
                        continue;
                    }
                    ++j;
                    break;
                }
                ++j;
            }
            fill(i, j, String);
            i = j;
            atStatementStart = false;
            continue;
        }
        if (isDigit(c) || (c == '&' && i + 2 < contentEnd && (s[i + 1] == 'h' || s[i + 1] == 'H') &&
                           isHexDigit(s[i + 2]))) {
            int j = c == '&' ? i + 2 : i + 1;
            while (j < contentEnd && (isWordPart(s[j]) || s[j] == '.'))
                ++j;
            fill(i, j, Number);
            i = j;
            atStatementStart = false;
            continue;
        }
        if (isWordStart(c)) {
            int j = i + 1;
            while (j < contentEnd && isWordPart(s[j]))
                ++j;
            const int n = j - i;
            if (atStatementStart && n == 3 && (s[i] | 0x20) == 'r' && (s[i + 1] | 0x20) == 'e' &&
                (s[i + 2] | 0x20) == 'm') {
                fill(i, contentEnd, Comment);
                return;
            }
            // A member after a point ("list.Count") is never a keyword of its own.
            const bool member = i > 0 && s[i - 1] == '.';
            const Style style = words.classify(text + i, n);
            fill(i, j, member && style == Keyword ? Default : style);
            i = j;
            atStatementStart = false;
            continue;
        }
        styles[i] = Default;
        if (c != ' ' && c != '\t')
            atStatementStart = false;
        ++i;
    }
}

KelvaroLineState kelvaroStateAfter(const char* text, long length) {
    const auto* s = reinterpret_cast<const unsigned char*>(text);
    long i = 0;
    while (i < length && (s[i] == ' ' || s[i] == '\t'))
        ++i;
    if (i + 3 <= length && (s[i] | 0x20) == 'r' && (s[i + 1] | 0x20) == 'e' && (s[i + 2] | 0x20) == 'm' &&
        (i + 3 == length || !isWordPart(s[i + 3])))
        return KelvaroLineState::InComment; // (callers cut lines between words)
    bool quoted = false;
    for (; i < length; ++i) {
        if (s[i] == '"')
            quoted = !quoted; // two quotes inside a string toggle twice
        else if (s[i] == '\'' && !quoted)
            return KelvaroLineState::InComment;
    }
    return quoted ? KelvaroLineState::InString : KelvaroLineState::Code;
}
