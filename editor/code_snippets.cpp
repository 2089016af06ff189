// The code pane's snippet pop-ups, shortcut buttons and line buttons: each inserts or
// edits through the shown editor view, as one undo step.
#include "editor/code.h"

#include "editor/snippets.h"
#include "frame/global.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

void code::buildSnippetControls() {
    for (QComboBox* popUp : {syntax.data(), syntax2.data(), syntax3.data()})
        connect(popUp, &QComboBox::activated, this, [this, popUp](int index) { snippetChosen(popUp, index); });

    // A row of small buttons between the navigators and the editor: the words a click
    // inserts, then the line commands.
    auto* row = new QHBoxLayout();
    row->setContentsMargins(4, 0, 4, 0);
    row->setSpacing(2);
    auto addButton = [this, row](const QString& title, void (code::*action)(const Value&)) {
        auto* button = new QPushButton(title, this);
        button->setObjectName(QStringLiteral("shortcut_") + title);
        button->setFlat(true);
        button->setFocusPolicy(Qt::NoFocus);
        button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        connect(button, &QPushButton::clicked, this,
                [this, button, action] { (this->*action)(Value(static_cast<QObject*>(button))); });
        row->addWidget(button);
        return button;
    };
    for (const char* word : {"Declare", "Exception", "Array", "Dictionary", "Integer", "Boolean", "String", "id",
                             "Double", "Nil"})
        addButton(QString::fromLatin1(word), &code::performShortcut);
    row->addStretch(1);
    addButton(QStringLiteral("Comment"), &code::b_comment)->setObjectName(QStringLiteral("b_comment"));
    addButton(QStringLiteral("Uncomment"), &code::b_uncomment)->setObjectName(QStringLiteral("b_uncomment"));
    addButton(QStringLiteral("Shift Left"), &code::b_shiftleft)->setObjectName(QStringLiteral("b_shiftleft"));
    addButton(QStringLiteral("Shift Right"), &code::b_shiftright)->setObjectName(QStringLiteral("b_shiftright"));
    static_cast<QVBoxLayout*>(layout())->insertLayout(1, row);
}

void code::snippetChosen(QComboBox* popUp, int index) {
    KLVR_TRACE("syntax");
    const QString text = snippets::templateFor(popUp->itemText(index));
    if (!text.isEmpty())
        if (KLTextView* view = Global::sharedGlobal()->editableView())
            view->replaceSelectionAsOneStep(text);
    popUp->setCurrentIndex(0); // the pop-up always shows its title
}

void code::performShortcut(const Value& sender) {
    KLVR_TRACE("performShortcut");
    const auto* button = qobject_cast<const QAbstractButton*>(sender.object());
    if (!button)
        return;
    if (KLTextView* view = Global::sharedGlobal()->editableView())
        view->replaceSelectionAsOneStep(snippets::shortcutFor(button->text()));
}

void code::b_comment(const Value&) { Global::sharedGlobal()->global_comment(); }
void code::b_uncomment(const Value&) { Global::sharedGlobal()->global_uncomment(); }
void code::b_shiftleft(const Value&) { Global::sharedGlobal()->global_shiftleft(); }
void code::b_shiftright(const Value&) { Global::sharedGlobal()->global_shiftright(); }
