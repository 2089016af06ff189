#include "insight/declarations.h"

DeclarationList DeclarationList::make(const QString& word, QList<DeclarationEntry> entries) {
    QList<DeclarationEntry> rows;
    rows.reserve(entries.size() + 2);
    rows.resize(2);
    rows.append(std::move(entries));
    return fromRows(word, std::move(rows));
}

DeclarationList DeclarationList::fromRows(const QString& word, QList<DeclarationEntry> rows) {
    DeclarationList list;
    list.rows = std::move(rows);
    DeclarationEntry& heading = list.rows[0];
    heading = DeclarationEntry();
    heading.row = DeclarationEntry::Row::Heading;
    heading.title = word + QStringLiteral(" (") + QString::number(list.rows.size() - 2) + QLatin1Char(')');
    heading.tag = 0;
    DeclarationEntry& separator = list.rows[1];
    separator = DeclarationEntry();
    separator.row = DeclarationEntry::Row::Separator;
    separator.tag = 0;
    list.selectedRow = 0;
    return list;
}

namespace {

QList<DeclarationKindInfo> makeKindTable() {
    // With or without a visibility word: "\nSub ", "\nPrivate Sub ", "\nPublic Sub ".
    auto visible = [](const QString& word) {
        return QStringList{QLatin1Char('\n') + word + QLatin1Char(' '),
                           QStringLiteral("\nPrivate ") + word + QLatin1Char(' '),
                           QStringLiteral("\nPublic ") + word + QLatin1Char(' ')};
    };
    auto plain = [](const QString& word) { return QStringList{QLatin1Char('\n') + word + QLatin1Char(' ')}; };
    // Words and image names are literals, so the entries that carry them share static
    // text and copying an entry touches no reference count for them.
    return {
        {QStringLiteral("Sub"), visible(QStringLiteral("Sub")), true, false, QStringLiteral("Sub.png")},
        {QStringLiteral("Function"), visible(QStringLiteral("Function")), true, true, QStringLiteral("Function.png")},
        {QStringLiteral("Action"), plain(QStringLiteral("Action")), true, false, QStringLiteral("Action.png")},
        {QStringLiteral("Dim"), visible(QStringLiteral("Dim")), false, true, QStringLiteral("Dim.png")},
        {QStringLiteral("Const"), visible(QStringLiteral("Const")), false, true, QStringLiteral("Const.png")},
        {QStringLiteral("Event"), plain(QStringLiteral("Event")), true, false, QStringLiteral("Event.png")},
        {QStringLiteral("Delegate"), visible(QStringLiteral("Delegate")), true, true, QStringLiteral("Delegate.png")},
        {QStringLiteral("IBOutlet"), plain(QStringLiteral("IBOutlet")), false, true, QStringLiteral("IBOutlet.png")},
        {QStringLiteral("IBAction"), plain(QStringLiteral("IBAction")), true, false, QStringLiteral("IBAction.png")},
    };
}

} // namespace

const DeclarationKindInfo& declarationKindInfo(DeclarationKind kind) {
    static const QList<DeclarationKindInfo> table = makeKindTable();
    return table.at(int(kind));
}

const QList<DeclarationKind>& allDeclarationKinds() {
    static const QList<DeclarationKind> kinds = {
        DeclarationKind::Sub,   DeclarationKind::Function, DeclarationKind::Action,
        DeclarationKind::Dim,   DeclarationKind::Const,    DeclarationKind::Event,
        DeclarationKind::Delegate, DeclarationKind::IBOutlet, DeclarationKind::IBAction};
    return kinds;
}
