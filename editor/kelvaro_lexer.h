#pragma once
// The Kelvaro colouring for the editor view. Scintilla asks for the ranges it needs
// (after an edit: from the changed line to the end of what is visible) and this lexer
// colours exactly those lines, so typing into a large file re-colours a screenful.
//
// Every line remembers (as its Scintilla line state) the generation of the word lists
// it was coloured with. Changing a word list starts a new generation; lines coloured
// with an older one are re-coloured when they come into view (KLTextView drives that),
// so a change of the word lists never colours a whole large file at once.

#include "editor/kelvaro_styler.h"

#include <Qsci/qscilexercustom.h>

class KelvaroLexer : public QsciLexerCustom {
    Q_OBJECT
public:
    explicit KelvaroLexer(QObject* parent = nullptr);

    const char* language() const override { return "Kelvaro"; }
    QString description(int style) const override;
    QColor defaultColor(int style) const override;
    QFont defaultFont(int style) const override;
    QColor defaultPaper(int style) const override;

    void setKeywords(const QStringList& words);
    void setTypes(const QStringList& words);
    void setCommands(const QStringList& words);
    // Whole-text font (every style), as the view's font follows the zoom.
    void setEditorFont(const QFont& font);

    // Colours the lines touching [start, end) (byte positions), whole lines.
    void styleText(int start, int end) override;

    // The generation of the current word lists; lines coloured with it are current.
    int generation() const { return generation_; }
    // Bytes coloured since the lexer was made (lets tests see how much work a pass did).
    qint64 styledBytes() const { return styledBytes_; }

    // A very long line. Scintilla measures every character of a line it lays out, and it
    // lays out the cursor's line after every keystroke, so on a line of a million
    // characters each keystroke would take seconds. Such a line is coloured only in a
    // window of WindowBytes around an anchor (the cursor, which the view keeps inside it)
    // or, without the anchor on it, at its start; the rest of the line gets the Hidden
    // style, which Scintilla neither measures nor draws. The text is untouched.
    static constexpr long LongLineBytes = 8192;
    static constexpr long WindowBytes = 2048;
    void setLongLineAnchor(long bytePosition) { anchor_ = bytePosition; }
    // The coloured window [first, second) of the long line last coloured around the anchor.
    std::pair<long, long> anchorWindow() const { return anchorWindow_; }

private:
    void newGeneration() { ++generation_; }
    // Colours lines [from, to) that are all shorter than LongLineBytes.
    void styleShortLines(long firstLine, long from, long to);
    void styleLongLine(long line, long lineStart, long lineEnd);
    long anchor_ = -1;
    std::pair<long, long> anchorWindow_{-1, -1};

    KelvaroWordLists words_;
    QFont font_;
    int generation_ = 1; // 0 is the line state of a line never coloured
    qint64 styledBytes_ = 0;
};
