#include "editor/editor_keys.h"

#include "frame/menu_table.h"

#include <Qsci/qscicommandset.h>
#include <Qsci/qsciscintilla.h>

#include <algorithm>

void leaveKeysToMenus(QsciScintilla* view) {
    // Computed once: every view gets the same keys.
    static const QList<int> menuKeys = [] {
        QList<int> keys;
        for (const QKeySequence& sequence : allMenuKeys())
            if (!sequence.isEmpty())
                keys.append(sequence[0].toCombined());
        return keys;
    }();
    // Commands that change or discard text on a key the user cannot see in a menu.
    const QsciCommand::Command silent[] = {QsciCommand::LineCut,           QsciCommand::LineDelete,
                                           QsciCommand::LineTranspose,     QsciCommand::SelectionLowerCase,
                                           QsciCommand::SelectionUpperCase, QsciCommand::DeleteLineLeft,
                                           QsciCommand::DeleteLineRight};
    for (QsciCommand* command : view->standardCommands()->commands()) {
        const bool isSilent = std::find(std::begin(silent), std::end(silent), command->command()) != std::end(silent);
        if (isSilent || menuKeys.contains(command->key()))
            command->setKey(0);
        if (isSilent || menuKeys.contains(command->alternateKey()))
            command->setAlternateKey(0);
    }
}
