#include "insight/declarations.h"

DeclarationList DeclarationList::make(const QString& word, QList<DeclarationEntry> entries) {
    DeclarationList list;
    list.rows.reserve(entries.size() + 2);

    DeclarationEntry heading;
    heading.row = DeclarationEntry::Row::Heading;
    heading.title = word + QStringLiteral(" (") + QString::number(entries.size()) + QLatin1Char(')');
    heading.tag = 0;
    list.rows.append(heading);

    DeclarationEntry separator;
    separator.row = DeclarationEntry::Row::Separator;
    separator.tag = 0;
    list.rows.append(separator);

    list.rows.append(std::move(entries));
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
    auto kind = [](const QString& word, QStringList prefixes, bool parameters, bool type) {
        return DeclarationKindInfo{word, std::move(prefixes), parameters, type, word + QStringLiteral(".png")};
    };
    return {
        kind(QStringLiteral("Sub"), visible(QStringLiteral("Sub")), true, false),
        kind(QStringLiteral("Function"), visible(QStringLiteral("Function")), true, true),
        kind(QStringLiteral("Action"), plain(QStringLiteral("Action")), true, false),
        kind(QStringLiteral("Dim"), visible(QStringLiteral("Dim")), false, true),
        kind(QStringLiteral("Const"), visible(QStringLiteral("Const")), false, true),
        kind(QStringLiteral("Event"), plain(QStringLiteral("Event")), true, false),
        kind(QStringLiteral("Delegate"), visible(QStringLiteral("Delegate")), true, true),
        kind(QStringLiteral("IBOutlet"), plain(QStringLiteral("IBOutlet")), false, true),
        kind(QStringLiteral("IBAction"), plain(QStringLiteral("IBAction")), true, false),
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
