#pragma once
// Realistic Kelvaro texts and helpers shared by the editor tests.

#include "editor/kltextview.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace editor_test {

inline const QStringList& keywords() {
    static const QStringList words = {"Sub",    "Function", "End",   "Dim",   "As",       "If",
                                      "Then",   "Else",     "For",   "To",    "Next",     "Return",
                                      "Public", "Private",  "Const", "Event", "IBOutlet", "IBAction",
                                      "Action", "Delegate", "Me",    "Nil",   "While"};
    return words;
}
inline const QStringList& types() {
    static const QStringList words = {"Integer", "String", "Boolean", "Double", "id", "NSObject", "Global"};
    return words;
}
inline const QStringList& commands() {
    static const QStringList words = {"MsgBox", "Len", "Mid", "InStr", "UCase", "Trim"};
    return words;
}

// Several files of the kind a project holds: declarations, strings with doubled
// quotes, comments with quotes, numbers, non-ASCII names and texts, CRLF lines.
inline QStringList realisticTexts() {
    return {
        QStringLiteral(
            "' Global class\nDim counter As Integer = 5 ' start\nConst NAME As String = \"Kel\"\"varo\"\n"
            "\nPublic Sub Main(args As String)\n  Dim s As String = \"it's \"\"quoted\"\"\"\n"
            "  If Len(s) > 3 Then\n    MsgBox(s) ' show it\n  End If\nEnd Sub\n"),
        QStringLiteral(
            "\nFunction Größe(wert As Double) As Double\n  Return wert * 1.5e3 + &hFF\nEnd Function\n"
            "\nSub Grüße()\n  Dim t As String = \"Ünïcödé 😀 text\"\n  rem a comment line\n"
            "  Dim x As integer = LEN(t)\nEnd Sub"),
        QStringLiteral(
            "Sub A()\r\n  Dim n As Integer\r\n  For n = 1 To 10\r\n    n = n + 1 ' \"no string\"\r\n"
            "  Next\r\nEnd Sub\r\n\r\nIBAction Click(sender As id)\r\n  MsgBox(\"unterminated\r\n"
            "End IBAction\r\n"),
        QStringLiteral(
            "\"\"\n'\n\"\n a.Dim.b = Me.x\n123abc 4.5.6 _under score_\nRemark Rem x\n   Rem indented\n"),
    };
}

// A generated Kelvaro text of `lines` lines with a method every 20 lines.
inline QByteArray generatedText(int lines) {
    QByteArray text;
    text.reserve(lines * 40);
    for (int i = 0; i < lines; ++i) {
        switch (i % 20) {
        case 0:
            text += "\nSub Method" + QByteArray::number(i) + "(a As Integer)";
            break;
        case 19:
            text += "\nEnd Sub";
            break;
        case 5:
            text += "\n  ' comment line number " + QByteArray::number(i);
            break;
        case 7:
            text += "\n  MsgBox(\"text \"\"" + QByteArray::number(i) + "\"\"\")";
            break;
        default:
            text += "\n  Dim v" + QByteArray::number(i) + " As String = Mid(s, 1, 2)";
            break;
        }
    }
    text += "\n";
    return text;
}

inline void setWordLists(KLTextView& view) {
    view.setKeywords(keywords());
    view.setTypes(types());
    view.setCommands(commands());
}

// Puts UTF-8 bytes into the view as a loaded file would be (no file needed).
// The view holds these file bytes, as if loaded (decoded, with the file's form).
inline void setBytes(KLTextView& view, const QByteArray& bytes) {
    view.replaceAllAsOneStep(bytes);
    view.SendScintilla(QsciScintilla::SCI_EMPTYUNDOBUFFER);
    view.SendScintilla(QsciScintilla::SCI_GOTOPOS, 0);
}

} // namespace editor_test
