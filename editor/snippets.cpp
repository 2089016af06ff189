#include "editor/snippets.h"

#include <QHash>
#include <QStringList>

namespace snippets {

QString templateFor(const QString& item) {
    static const QHash<QString, QString> templates{
        {"Sub", "\nSub NAME(ARGUMENT As id)\n  \nEnd Sub\n"},
        {"Function", "\nFunction NAME(ARGUMENT As id) As id\n  Return Nil\nEnd Function\n"},
        {"Action", "\nAction NAME()\n  \nEnd IBAction\n"},
        {"Dim", "\nDim NAME As id\n"},
        {"Const", "\nConst NAME As id\n"},
        {"Event", "\nEvent NAME()\n  \nEnd Event\n"},
        {"Delegate", "\nDelegate NAME() As id\n  Return Nil\nEnd Delegate\n"},
        {"IBOutlet", "\nIBOutlet NAME As id\n"},
        {"IBAction", "\nIBAction NAME(sender As id)\n\nEnd IBAction\n"},
        {"If Then", "\nIf EXPRESSION Then\n  \nEnd If\n"},
        {"If Then Else", "\nIf EXPRESSION Then\n  \nElse\n  \nEnd If\n"},
        {"If Then Else Else If", "\nIf EXPRESSION Then\n  \nElse\n  \nElse If EXPRESSION Then\n  \nEnd If\n"},
        {"For Next", "\nFor VARIABLE = EXPRESSION To EXPRESSION\n  \nNext\n"},
    };
    return templates.value(item);
}

QString shortcutFor(const QString& title) {
    static const QStringList dotted{"Declare", "Exception", "Array",  "Dictionary", "Integer",
                                    "Boolean", "String",    "id",     "Double"};
    return dotted.contains(title) ? title + QStringLiteral("...") : title;
}

} // namespace snippets
