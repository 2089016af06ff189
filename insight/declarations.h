#pragma once
// What one scan of a Kelvaro source file yields: the declaration lists shown in the
// navigators, the scope starts and the local-variable table. Plain values, no widgets:
// the code pane turns the image names into icons itself.

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

// One row of a declaration list. Entries carry tag 1 and the six fields; the heading
// ("Sub (3)") and the separator below it carry tag 0 and no fields.
struct DeclarationEntry {
    enum class Row { Heading, Separator, Entry };

    Row row = Row::Entry;
    QString title; // the declaration line after its keyword, carriage returns removed
    QString image; // file name of the kind's image, such as "Sub.png" (entries only)
    int tag = 1;   // 1: choosing the row moves the cursor; 0: heading or separator

    // The six fields, in the order other parts read them by position.
    qint64 line = 0;    // 1-based line of the declaration
    QString visibility; // "Public" or "Private"
    QString kind;       // "Sub", "Function", ... "IBAction"
    QString name;
    QString parameters; // "(a As Integer)" or ""
    QString type;       // "Integer" or ""

    bool isEntry() const { return row == Row::Entry; }
};

// The rows of one navigator pop-up: heading, separator, then the entries. The heading
// (row 0) is the selected row.
struct DeclarationList {
    QList<DeclarationEntry> rows;
    int selectedRow = 0;

    // A finished list: heading "<word> (<count>)", separator, then `entries`.
    static DeclarationList make(const QString& word, QList<DeclarationEntry> entries);
    // The same from rows whose first two are left for the heading and the separator, so
    // that a long list is not copied once more.
    static DeclarationList fromRows(const QString& word, QList<DeclarationEntry> rows);

    qsizetype entryCount() const { return rows.size() >= 2 ? rows.size() - 2 : 0; }
    const DeclarationEntry& entry(qsizetype i) const { return rows.at(i + 2); }
    QList<DeclarationEntry> entries() const { return rows.mid(2); }
};

// The declaration kinds in the order the scanner handles them.
enum class DeclarationKind { Sub, Function, Action, Dim, Const, Event, Delegate, IBOutlet, IBAction };
inline constexpr int declarationKindCount = 9;

struct DeclarationKindInfo {
    QString word;        // "Sub"
    QStringList prefixes; // "\nSub ", "\nPrivate Sub ", "\nPublic Sub " (search order)
    bool takesParameters;
    bool declaresType;
    QString image;       // "Sub.png"
};

// The fixed table of the nine kinds, indexed by DeclarationKind.
const DeclarationKindInfo& declarationKindInfo(DeclarationKind kind);
const QList<DeclarationKind>& allDeclarationKinds();

// Everything one scan produces for one file.
struct DeclarationLists {
    DeclarationList all; // every entry of the nine kind lists, in line order
    DeclarationList kinds[declarationKindCount];
    // For every entry of a kind that takes a parameter list: the position of the line
    // break before its line, and its name; ordered by kind, prefix, then position.
    QList<qint64> lineSeparators;
    QStringList lineSeparatorsType;
    // "Scope.name" -> type, for local Dim lines and parameters.
    QHash<QString, QString> locals;

    const DeclarationList& list(DeclarationKind kind) const { return kinds[int(kind)]; }
};
