#pragma once
// The colouring rules of Kelvaro source, as plain code over the bytes of one line.
// A line never depends on the lines before it (comments end at the line break and
// strings do not span lines), which is what lets the editor re-colour only the lines
// that changed or came into view.

#include <QByteArray>
#include <QSet>
#include <QStringList>

namespace kelvaro_style {
enum Style : char {
    Default = 0,
    Comment = 1,
    String = 2,
    Number = 3,
    Keyword = 4,
    Type = 5,
    Command = 6,
};
constexpr int StyleCount = 7;
// The part of a very long line away from the cursor: drawn with no width and never
// measured (see KelvaroLexer).
constexpr int Hidden = StyleCount;
} // namespace kelvaro_style

// The three word lists, held in lower case (the language ignores letter case) as
// UTF-8, so that a word of the text is looked up without decoding it.
class KelvaroWordLists {
public:
    void setKeywords(const QStringList& words) { keywords_ = lowered(words); }
    void setTypes(const QStringList& words) { types_ = lowered(words); }
    void setCommands(const QStringList& words) { commands_ = lowered(words); }

    // The style of one word (UTF-8 bytes, any letter case): a keyword before a type
    // before a command; Default for any other word.
    kelvaro_style::Style classify(const char* word, int length) const;

private:
    static QSet<QByteArray> lowered(const QStringList& words);
    QSet<QByteArray> keywords_;
    QSet<QByteArray> types_;
    QSet<QByteArray> commands_;
};

// Fills styles[0..length) for the bytes of one line. The line may end with its line
// break ("\n", "\r\n" or "\r"); line-break bytes get the Default style.
void styleKelvaroLine(const char* text, int length, const KelvaroWordLists& words, char* styles);

// Where the first `length` bytes of a line leave the colouring: inside a string, in a
// comment (a quote mark outside strings, or "Rem" as the line's first word), or in code.
enum class KelvaroLineState { Code, InString, InComment };
KelvaroLineState kelvaroStateAfter(const char* text, long length);
