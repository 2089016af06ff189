// String operations with the runtime's conventions: 0-based positions, -1 for not
// found, a trailing matchCase flag.
#include "frame/runtime.h"

static Qt::CaseSensitivity sensitivity(bool matchCase) { return matchCase ? Qt::CaseSensitive : Qt::CaseInsensitive; }

qint64 KLVR_LEN(const QString& s) { return s.size(); }

QString KLVR_LEFT(const QString& s, qint64 n) { return n < 0 ? s : s.left(n); }

QString KLVR_RIGHT(const QString& s, qint64 n) { return n <= 0 ? QString() : s.right(n); }

QString KLVR_MID(const QString& s, qint64 start, qint64 length) {
    if (start < 0)
        start = 0;
    if (start >= s.size())
        return QString();
    return length < 0 ? s.mid(start) : s.mid(start, length);
}

qint64 KLVR_INSTR(const QString& s, const QString& find, qint64 start, bool matchCase) {
    if (start < 0)
        start = 0;
    if (start > s.size())
        return -1;
    return s.indexOf(find, start, sensitivity(matchCase));
}

qint64 KLVR_INSTRREV(const QString& s, const QString& find, qint64 start, bool matchCase) {
    if (start < -1)
        return -1;
    if (start == -1 || start >= s.size())
        start = s.size();
    return s.lastIndexOf(find, start, sensitivity(matchCase));
}

qint64 KLVR_COUNT(const QString& s, const QString& find, bool matchCase) {
    if (find.isEmpty())
        return 0;
    return s.count(find, sensitivity(matchCase));
}

bool KLVR_CONTAINS(const QString& s, const QString& part, bool matchCase) {
    return s.contains(part, sensitivity(matchCase));
}

bool KLVR_STARTSWITH(const QString& s, const QString& part, bool matchCase) {
    return s.startsWith(part, sensitivity(matchCase));
}

bool KLVR_ENDSWITH(const QString& s, const QString& part, bool matchCase) {
    return s.endsWith(part, sensitivity(matchCase));
}

QString KLVR_REPLACE(const QString& s, const QString& find, const QString& replacement, bool matchCase) {
    if (find.isEmpty())
        return s;
    QString copy = s;
    return copy.replace(find, replacement, sensitivity(matchCase));
}

QString KLVR_TRIM(const QString& s) {
    qsizetype begin = 0, end = s.size();
    auto blank = [](QChar c) { return c == QLatin1Char(' ') || c == QLatin1Char('\t'); };
    while (begin < end && blank(s.at(begin)))
        ++begin;
    while (end > begin && blank(s.at(end - 1)))
        --end;
    return s.mid(begin, end - begin);
}

QString KLVR_LCASE(const QString& s) { return s.toLower(); }
QString KLVR_UCASE(const QString& s) { return s.toUpper(); }

QString KLVR_SPACE(qint64 n, const QString& fill) { return n <= 0 ? QString() : fill.repeated(n); }

QStringList KLVR_SPLIT(const QString& s, const QString& separator) {
    if (separator.isEmpty())
        return {s};
    return s.split(separator);
}

QString KLVR_FILENAME(const QString& path) {
    QString p = path;
    while (p.size() > 1 && p.endsWith(QLatin1Char('/')))
        p.chop(1);
    return p.mid(p.lastIndexOf(QLatin1Char('/')) + 1);
}

QString KLVR_FILEEXTENSION(const QString& path) {
    QString name = KLVR_FILENAME(path);
    qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? QString() : name.mid(dot + 1);
}
