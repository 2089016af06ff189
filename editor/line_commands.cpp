#include "editor/line_commands.h"

namespace {

qsizetype indentEnd(const QString& line) {
    qsizetype i = 0;
    while (i < line.size() && (line[i] == u' ' || line[i] == u'\t'))
        ++i;
    return i;
}

// The words that decide a line's part in the block structure, lower case, with
// comments and strings left out.
QStringList leadingWords(const QString& line) {
    QStringList words;
    QString word;
    bool inString = false;
    for (QChar c : line) {
        if (inString) {
            if (c == u'"')
                inString = false;
            continue;
        }
        if (c == u'"') {
            inString = true;
            continue;
        }
        if (c == u'\'')
            break;
        if (c.isLetterOrNumber() || c == u'_') {
            word += c.toLower();
            continue;
        }
        if (!word.isEmpty())
            words << word;
        word.clear();
        if (c == u'(' && words.size() < 4)
            words << QStringLiteral("(");
    }
    if (!word.isEmpty())
        words << word;
    return words;
}

struct LineShape {
    int before = 0; // change of level before this line is written
    int after = 0;  // change of level after it
};

LineShape shapeOf(const QString& line) {
    QStringList w = leadingWords(line);
    if (w.isEmpty())
        return {};
    if (w.first() == u"rem")
        return {};
    const QString first = w.first();
    if (first == u"end" || first == u"next" || first == u"loop" || first == u"wend")
        return {-1, 0};
    if (first == u"else" || first == u"elseif" || first == u"case" || first == u"catch" ||
        first == u"finally")
        return {-1, +1};
    if (first == u"if") {
        // Only an If whose line ends with Then opens a block; "If x Then y" does not.
        return {0, w.last() == u"then" ? +1 : 0};
    }
    if (first == u"for" || first == u"while" || first == u"do" || first == u"select" ||
        first == u"try" || first == u"with")
        return {0, +1};
    qsizetype k = 0;
    if (w[k] == u"public" || w[k] == u"private")
        ++k;
    static const QStringList methods = {QStringLiteral("sub"),   QStringLiteral("function"),
                                        QStringLiteral("action"), QStringLiteral("event"),
                                        QStringLiteral("delegate"), QStringLiteral("ibaction")};
    if (k < w.size() && methods.contains(w[k]) && w.contains(QStringLiteral("(")))
        return {0, +1};
    return {};
}

} // namespace

namespace line_commands {

QStringList comment(const QStringList& lines) {
    QStringList out;
    out.reserve(lines.size());
    for (const QString& line : lines)
        out << (line.isEmpty() ? line : QStringLiteral("'") + line);
    return out;
}

QStringList uncomment(const QStringList& lines) {
    QStringList out;
    out.reserve(lines.size());
    for (const QString& line : lines) {
        const qsizetype i = indentEnd(line);
        out << (i < line.size() && line[i] == u'\'' ? QString(line).remove(i, 1) : line);
    }
    return out;
}

QStringList shiftRight(const QStringList& lines) {
    QStringList out;
    out.reserve(lines.size());
    for (const QString& line : lines)
        out << (line.isEmpty() ? line : QString(IndentStep, u' ') + line);
    return out;
}

QStringList shiftLeft(const QStringList& lines) {
    QStringList out;
    out.reserve(lines.size());
    for (const QString& line : lines) {
        if (line.startsWith(u'\t')) {
            out << line.mid(1);
            continue;
        }
        qsizetype n = 0;
        while (n < IndentStep && n < line.size() && line[n] == u' ')
            ++n;
        out << line.mid(n);
    }
    return out;
}

QStringList autoFormat(const QStringList& lines, int baseLevel) {
    QStringList out;
    out.reserve(lines.size());
    int level = qMax(0, baseLevel);
    for (const QString& line : lines) {
        QString body = line.mid(indentEnd(line));
        while (!body.isEmpty() && (body.back() == u' ' || body.back() == u'\t'))
            body.chop(1);
        if (body.isEmpty()) {
            out << QString();
            continue;
        }
        const LineShape shape = shapeOf(body);
        level = qMax(0, level + shape.before);
        out << QString(level * IndentStep, u' ') + body;
        level = qMax(0, level + shape.after);
    }
    return out;
}

} // namespace line_commands
