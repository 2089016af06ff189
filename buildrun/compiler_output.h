#pragma once
// Reading the compiler's output: pure functions over text, no widgets. The compiler
// reports an error on standard error as one line,
//   "Kelvaro: " MESSAGE " in line " N " in file " FILE "\n"
// with FILE relative to the project folder and N 1-based.

#include <QString>

struct CompilerError {
    QString text;    // the error without "Kelvaro: " and the line break, e.g. "x in line 3 in file a.klvr"
    QString message; // the text before " in line " (the whole text when that is missing)
    QString file;    // "" when the error names none
    qint64 line = 0; // 0 when it names none
    bool operator==(const CompilerError&) const = default;
};

// Cuts one error out of a standard-error chunk that starts with "Kelvaro:". Only the
// first line counts. A missing " in file " gives no file; a missing line break ends
// the file at the end of the text; a line number runs up to " in file " or the end.
CompilerError cutCompilerError(const QString& chunk);
// The same for an error's text without the prefix and the line break.
CompilerError cutErrorText(const QString& text);

// Whether a standard-output chunk shows a failure of the platform compiler ("errors
// generated.", "error generated." or "clang: error:", letter case as written).
bool showsPlatformCompilerFailure(const QString& chunk);
