#pragma once
// Random Kelvaro-like sources for checking the scanner: declarations of every kind in
// mixed letter case, indented and class-level Dims, quotes, comments, odd parentheses,
// CRLF and bare CR line ends, tabs, letters that fold onto ASCII ones, empty lines and
// texts with or without a final line break. Repeatable from a start value.

#include <QRandomGenerator>
#include <QString>
#include <QStringList>

inline QString randomKelvaroSource(quint32 startValue, int maxLines = 40) {
    QRandomGenerator random(startValue);
    auto pick = [&](const QStringList& from) { return from.at(random.bounded(int(from.size()))); };
    auto chance = [&](int percent) { return int(random.bounded(100)) < percent; };
    auto mixCase = [&](QString word) {
        if (!chance(15))
            return word;
        for (QChar& c : word)
            if (chance(50))
                c = c.isUpper() ? c.toLower() : c.toUpper();
        return word;
    };

    const QStringList keywords = {"Sub", "Function", "Action", "Dim", "Const", "Event",
                                  "Delegate", "IBOutlet", "IBAction", "End", "If", "Return"};
    const QStringList visibility = {"", "", "", "Public ", "Private ", "public ", "PRIVATE "};
    const QStringList names = {"Foo", "bar", "Baz2", "x", "counter", "ſum", "\u212Aey", "Dim", "As", "a b", ""};
    const QStringList types = {"Integer", "String", "NSObject", "Double", "integer", "Array(Of X)", ""};
    const QStringList junk = {" ", "(", ")", "\"", "'", ",", "\t", " As ", " as ", "Dim ", "x", "\r", "=", "5"};
    const QStringList lineEnds = {"\n", "\n", "\n", "\n", "\r\n", "\r\n", "\n\n"};

    auto parameterList = [&]() {
        QStringList pieces;
        const int count = int(random.bounded(4));
        for (int i = 0; i < count; ++i) {
            QString piece = pick(names);
            if (chance(60))
                piece += (chance(90) ? " As " : " as ") + pick(types);
            if (chance(10))
                piece += " = \"it's, (odd)\"";
            pieces << (chance(15) ? " " + piece + " " : piece);
        }
        return "(" + pieces.join(chance(80) ? ", " : ",") + ")";
    };

    QString text;
    if (chance(30))
        text += pick(lineEnds);
    const int lines = int(random.bounded(maxLines)) + 1;
    for (int i = 0; i < lines; ++i) {
        QString line;
        const int shape = int(random.bounded(10));
        if (shape < 5) { // a declaration-like line
            if (chance(20))
                line += chance(50) ? " " : "\t";
            line += mixCase(pick(visibility)) + mixCase(pick(keywords)) + (chance(95) ? " " : "\t");
            line += pick(names);
            if (chance(70))
                line += parameterList();
            if (chance(40))
                line += (chance(85) ? " As " : " AS ") + pick(types);
            if (chance(15))
                line += " = " + QString::number(random.bounded(100));
        } else if (shape < 7) { // a local or class-level Dim
            line += pick({"", " ", "\t", "  ", "\t\t"}) + pick({"Dim ", "Public Dim ", "Private Dim ", "dim "});
            line += pick(names) + (chance(80) ? " As " + pick(types) : QString());
        } else if (shape < 9) { // random pieces
            const int count = int(random.bounded(8));
            for (int j = 0; j < count; ++j)
                line += pick(junk);
        } else {
            line += pick({"End Sub", "End Function", "Return x", "x = \"a\" & \"b\"", ""});
        }
        if (chance(15))
            line += pick({" ' comment", " \"quoted ' text\"", " ' it's", " \"Dim \" x"});
        text += line;
        if (i + 1 < lines || chance(60))
            text += pick(lineEnds);
    }
    return text;
}
