#include "pdf_support.h"

#include <QProcess>
#include <QRegularExpression>

namespace {
QString run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(60000);
    return QString::fromUtf8(process.readAllStandardOutput());
}
} // namespace

QString withoutBlanks(QString text) { return text.remove(QRegularExpression(QStringLiteral("\\s"))); }

PrintedText readPrinted(const QString& pdfPath) {
    PrintedText printed;
    const QRegularExpression pagesLine(QStringLiteral("^Pages:\\s+(\\d+)$"), QRegularExpression::MultilineOption);
    printed.pages = pagesLine.match(run("pdfinfo", {pdfPath})).captured(1).toInt();
    const QRegularExpression header(QStringLiteral("page \\d+ of \\d+$"));
    const QRegularExpression numbered(QStringLiteral("^(\\d+)(.*)$"));
    for (QString row : run("pdftotext", {"-layout", "-enc", "UTF-8", pdfPath, "-"}).split(QRegularExpression("[\n\f]"))) {
        row = row.trimmed();
        if (row.isEmpty())
            continue;
        if (header.match(row).hasMatch()) {
            printed.headers << row;
        } else if (row.startsWith(QChar(0x21aa)) && !printed.lines.isEmpty()) {
            printed.lines.last() += withoutBlanks(row.mid(1));
            ++printed.continuationRows;
        } else if (const auto m = numbered.match(row); m.hasMatch()) {
            printed.numbers << m.captured(1).toInt();
            printed.lines << withoutBlanks(m.captured(2));
        } else {
            printed.lines << QStringLiteral("<unexpected row> ") + row;
        }
    }
    return printed;
}
