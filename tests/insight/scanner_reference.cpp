#include "scanner_reference.h"

#include <QStringList>

namespace {

struct ReferenceKind {
    QString word;
    QStringList prefixes;
    bool parameters;
    bool type;
};

QList<ReferenceKind> referenceKinds() {
    auto three = [](const char* w) {
        const QString word = QString::fromLatin1(w);
        return QStringList{"\n" + word + " ", "\nPrivate " + word + " ", "\nPublic " + word + " "};
    };
    auto one = [](const char* w) { return QStringList{"\n" + QString::fromLatin1(w) + " "}; };
    return {{"Sub", three("Sub"), true, false},           {"Function", three("Function"), true, true},
            {"Action", one("Action"), true, false},       {"Dim", three("Dim"), false, true},
            {"Const", three("Const"), false, true},       {"Event", one("Event"), true, false},
            {"Delegate", three("Delegate"), true, true},  {"IBOutlet", one("IBOutlet"), false, true},
            {"IBAction", one("IBAction"), true, false}};
}

QString trim(QString s) {
    while (!s.isEmpty() && (s.front() == ' ' || s.front() == '\t'))
        s.remove(0, 1);
    while (!s.isEmpty() && (s.back() == ' ' || s.back() == '\t'))
        s.chop(1);
    return s;
}

QString withoutLineBreaks(QString s) {
    s.remove('\n');
    s.remove('\r');
    return s;
}

QString nameRule(const QString& title) {
    const qsizetype blank = title.indexOf(' ');
    const qsizetype paren = title.indexOf('(');
    qsizetype end = -1;
    if (paren >= 0 && (blank < 0 || paren < blank))
        end = paren;
    else
        end = blank;
    return end < 0 ? title : title.left(end);
}

QString typeRule(const QString& title) {
    const qsizetype as = title.lastIndexOf(" As ", -1, Qt::CaseInsensitive);
    if (as < 0)
        return {};
    QString rest = title.mid(as + 4);
    qsizetype cut = -1;
    for (const char* stop : {" ", "(", "'"}) {
        const qsizetype at = rest.indexOf(QLatin1String(stop));
        if (at >= 0 && (cut < 0 || at < cut))
            cut = at;
    }
    if (cut >= 0)
        rest = rest.left(cut);
    return withoutLineBreaks(trim(rest));
}

QString cleanLine(QString line) {
    for (;;) {
        const qsizetype first = line.indexOf('"');
        if (first < 0)
            break;
        const qsizetype second = line.indexOf('"', first + 1);
        if (second < 0)
            break;
        line.remove(first, second - first + 1);
    }
    const qsizetype comment = line.indexOf('\'');
    return comment >= 0 ? line.left(comment) : line;
}

} // namespace

DeclarationLists referenceScan(const QString& text) {
    DeclarationLists out;
    QList<DeclarationEntry> all;
    const QList<ReferenceKind> kinds = referenceKinds();

    for (int k = 0; k < kinds.size(); ++k) {
        const ReferenceKind& kind = kinds[k];
        QList<DeclarationEntry> list;
        for (const QString& prefix : kind.prefixes) {
            const QString visibility = prefix.startsWith("\nPublic ") ? "Public" : "Private";
            qsizetype from = 0;
            for (;;) {
                const qsizetype match = text.indexOf(prefix, from, Qt::CaseInsensitive);
                if (match < 0)
                    break;
                from = match + 1;
                const qsizetype lineBreak = text.indexOf('\n', match + 1);
                if (lineBreak < 0)
                    continue;
                if (kind.parameters && text.indexOf('(', match) < 0)
                    continue;
                DeclarationEntry e;
                e.title = withoutLineBreaks(text.mid(match + prefix.size(), lineBreak - match - prefix.size()));
                e.image = kind.word + ".png";
                e.tag = 1;
                e.line = text.left(match).count('\n') + 2;
                e.visibility = visibility;
                e.kind = kind.word;
                e.name = nameRule(e.title);
                const qsizetype p = e.title.indexOf('(');
                if (p >= 0 && kind.word != "Dim" && kind.word != "Const") {
                    const qsizetype c = e.title.indexOf(')');
                    if (c >= 0 && c > p)
                        e.parameters = e.title.mid(p, c - p + 1);
                }
                if (kind.type)
                    e.type = typeRule(e.title);
                list.append(e);
                all.append(e);
                if (kind.parameters) {
                    out.lineSeparators.append(match);
                    out.lineSeparatorsType.append(e.name);
                }
            }
        }
        out.kinds[k] = DeclarationList::make(kind.word, list);
    }

    // Exchange sort by line, n - 1 passes over every neighbouring pair.
    for (qsizetype pass = 0; pass + 1 < all.size(); ++pass)
        for (qsizetype j = 0; j + 1 < all.size(); ++j)
            if (all[j + 1].line < all[j].line)
                all.swapItemsAt(j, j + 1);
    out.all = DeclarationList::make("All", all);

    // Local Dim lines. Class-level keywords are blanked in a copy of the same length,
    // so positions stay those of the file.
    QString hidden = text;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != '\n')
            continue;
        for (const char* keyword : {"Dim ", "Public Dim ", "Private Dim "}) {
            const QString k = QString::fromLatin1(keyword);
            if (text.mid(i + 1, k.size()) == k) {
                hidden.replace(i + 1, k.size(), QString(k.size(), ' '));
                break;
            }
        }
    }
    for (qsizetype start = 0;;) {
        const qsizetype end = hidden.indexOf('\n', start + 1);
        if (end < 0)
            break;
        const QString line = cleanLine(hidden.mid(start, end - start));
        if (line.contains("Dim ")) {
            QString rest = line.mid(1);
            while (rest.startsWith(' '))
                rest.remove(0, 1);
            const qsizetype blank = rest.indexOf(' ');
            if (blank >= 0)
                rest = rest.mid(blank + 1);
            QString scope;
            qint64 best = -1;
            for (int i = 0; i < out.lineSeparators.size(); ++i) {
                if (out.lineSeparators[i] < start && out.lineSeparators[i] > best) {
                    best = out.lineSeparators[i];
                    scope = out.lineSeparatorsType[i];
                }
            }
            out.locals[scope + "." + nameRule(rest)] = typeRule(rest);
        }
        start = end + 1;
    }

    // Parameter lists, prefixes matched with their exact letter case.
    for (const ReferenceKind& kind : kinds) {
        if (!kind.parameters)
            continue;
        for (const QString& prefix : kind.prefixes) {
            qsizetype from = 0;
            for (;;) {
                const qsizetype match = text.indexOf(prefix, from, Qt::CaseSensitive);
                if (match < 0)
                    break;
                const qsizetype lineBreak = text.indexOf('\n', match + 1);
                if (lineBreak < 0)
                    break;
                const QString line = cleanLine(text.mid(match + 1, lineBreak - match - 1));
                const qsizetype p = line.indexOf('(');
                const qsizetype c = line.indexOf(')');
                if (p < 0 || c < 0)
                    break;
                const qsizetype nameStart = prefix.size() - 1;
                const QString scope = trim(line.mid(nameStart, p - nameStart));
                const QString inner = c > p ? trim(line.mid(p + 1, c - p - 1)) : QString();
                if (!inner.isEmpty()) {
                    for (const QString& piece : inner.split(',')) {
                        const qsizetype as = piece.indexOf(" As ");
                        const QString name = as >= 0 ? trim(piece.left(as)) : trim(piece);
                        const QString type = as >= 0 ? piece.mid(as + 4) : QString("NSObject");
                        out.locals[scope + "." + name] = withoutLineBreaks(trim(type));
                    }
                }
                from = lineBreak;
            }
        }
    }
    return out;
}

namespace {

QString describeRow(const DeclarationEntry& e) {
    return QString("{row %1, title \"%2\", image \"%3\", tag %4, line %5, %6, %7, name \"%8\", parameters \"%9\", "
                   "type \"%10\"}")
        .arg(int(e.row))
        .arg(e.title, e.image)
        .arg(e.tag)
        .arg(e.line)
        .arg(e.visibility, e.kind, e.name, e.parameters, e.type);
}

bool sameRow(const DeclarationEntry& a, const DeclarationEntry& b) {
    return a.row == b.row && a.title == b.title && a.image == b.image && a.tag == b.tag && a.line == b.line &&
           a.visibility == b.visibility && a.kind == b.kind && a.name == b.name && a.parameters == b.parameters &&
           a.type == b.type;
}

QString listDifference(const QString& which, const DeclarationList& a, const DeclarationList& b) {
    if (a.selectedRow != b.selectedRow)
        return which + ": selected row differs";
    for (qsizetype i = 0; i < std::max(a.rows.size(), b.rows.size()); ++i) {
        if (i >= a.rows.size() || i >= b.rows.size())
            return QString("%1: %2 rows expected, %3 found").arg(which).arg(a.rows.size()).arg(b.rows.size());
        if (!sameRow(a.rows[i], b.rows[i]))
            return QString("%1 row %2: expected %3, found %4")
                .arg(which)
                .arg(i)
                .arg(describeRow(a.rows[i]), describeRow(b.rows[i]));
    }
    return {};
}

} // namespace

QString firstDifference(const DeclarationLists& expected, const DeclarationLists& actual) {
    if (QString d = listDifference("All", expected.all, actual.all); !d.isEmpty())
        return d;
    for (int k = 0; k < declarationKindCount; ++k)
        if (QString d = listDifference(QString("kind %1").arg(k), expected.kinds[k], actual.kinds[k]); !d.isEmpty())
            return d;
    if (expected.lineSeparators != actual.lineSeparators)
        return "lineSeparators differ";
    if (expected.lineSeparatorsType != actual.lineSeparatorsType)
        return "lineSeparatorsType differ";
    if (expected.locals != actual.locals) {
        for (auto it = expected.locals.begin(); it != expected.locals.end(); ++it)
            if (!actual.locals.contains(it.key()) || actual.locals.value(it.key()) != it.value())
                return QString("local \"%1\": expected \"%2\", found \"%3\"")
                    .arg(it.key(), it.value(), actual.locals.value(it.key(), "<missing>"));
        return "locals: unexpected extra keys";
    }
    return {};
}
