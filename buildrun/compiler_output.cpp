#include "buildrun/compiler_output.h"

#include "frame/runtime.h"

namespace {
const QString kPrefix = QStringLiteral("Kelvaro: ");
const QString kInLine = QStringLiteral(" in line ");
const QString kInFile = QStringLiteral(" in file ");
} // namespace

CompilerError cutCompilerError(const QString& chunk) {
    QString s = KLVR_MID(chunk, KLVR_LEN(kPrefix));
    const qint64 newline = KLVR_INSTR(s, QStringLiteral("\n"), 0, true);
    if (newline > -1)
        s = KLVR_LEFT(s, newline);
    // A line break written as CR LF leaves its CR behind.
    if (KLVR_ENDSWITH(s, QStringLiteral("\r"), true))
        s.chop(1);
    return cutErrorText(s);
}

CompilerError cutErrorText(const QString& s) {
    CompilerError error;
    error.text = s;
    const qint64 pFile = KLVR_INSTR(s, kInFile, 0, true);
    if (pFile > -1)
        error.file = KLVR_MID(s, pFile + KLVR_LEN(kInFile));
    const qint64 pLine = KLVR_INSTR(s, kInLine, 0, true);
    if (pLine > -1) {
        const qint64 start = pLine + KLVR_LEN(kInLine);
        const qint64 end = pFile > pLine ? pFile : KLVR_LEN(s);
        error.line = KLVR_INTEGER(KLVR_TRIM(KLVR_MID(s, start, end - start)));
    }
    error.message = pLine > -1 ? KLVR_LEFT(s, pLine) : (pFile > -1 ? KLVR_LEFT(s, pFile) : s);
    return error;
}

bool showsPlatformCompilerFailure(const QString& chunk) {
    return KLVR_CONTAINS(chunk, QStringLiteral("errors generated."), true) ||
           KLVR_CONTAINS(chunk, QStringLiteral("error generated."), true) ||
           KLVR_CONTAINS(chunk, QStringLiteral("clang: error:"), true);
}
