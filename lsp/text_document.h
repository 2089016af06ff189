#pragma once
// The text of one open document as the client typed it, with the start of every line,
// so that a position (line, UTF-16 code unit in the line) becomes an offset without
// reading the text. Lines end at "\n", "\r\n" or a lone "\r". A position past the end
// of its line, or a line past the last, is clamped to the nearest place in the text.

#include <QList>
#include <QString>
#include <QStringView>

namespace lsp {

struct TextPosition {
    qsizetype line = 0;
    qsizetype character = 0;
};

class TextDocument {
public:
    explicit TextDocument(QString text = {});

    const QString& text() const { return text_; }
    qsizetype lineCount() const { return lineStarts_.size(); }
    // The offset of a position, clamped into the text.
    qsizetype offsetAt(TextPosition position) const;
    TextPosition positionAt(qsizetype offset) const;
    // Line `line` without its line break.
    QStringView lineText(qsizetype line) const;

    // Replaces the text between two positions (clamped, in either order) by `newText`.
    void replace(TextPosition start, TextPosition end, const QString& newText);
    void setText(QString text);

private:
    qsizetype lineEnd(qsizetype line) const; // the offset of the line's break
    bool startsLine(qsizetype offset) const;

    QString text_;
    QList<qsizetype> lineStarts_; // ascending, first 0
};

} // namespace lsp
