#pragma once
// Reads a printed PDF back through poppler's pdftotext and pdfinfo.

#include <QString>
#include <QStringList>

struct PrintedText {
    int pages = 0;               // as pdfinfo counts them
    QStringList headers;         // the header row of each page
    QStringList lines;           // the source lines, continuation rows joined, blanks removed
    QList<int> numbers;          // the line number printed before each source line
    int continuationRows = 0;
};

PrintedText readPrinted(const QString& pdfPath);
// The text without any white space (pdftotext guesses blanks from positions).
QString withoutBlanks(QString text);
