// The code pane's snippet pop-ups, shortcut buttons and line buttons: each inserts or
// edits through the shown editor view, as one undo step.
#include "editor/code.h"

#include "editor/snippets.h"
#include "frame/global.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QHBoxLayout>
#include <QToolButton>
#include <QVBoxLayout>

void code::buildSnippetControls() {
    for (QComboBox* popUp : {syntax.data(), syntax2.data(), syntax3.data()})
        connect(popUp, &QComboBox::activated, this, [this, popUp](int index) { snippetChosen(popUp, index); });

    // A row of small buttons between the navigators and the editor: the words a click
    // inserts, then the line commands.
    auto* row = new QHBoxLayout();
    row->setContentsMargins(4, 0, 4, 0);
    row->setSpacing(2);
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.9);
    auto addButton = [this, row, &small](const QString& name, const QString& title, const QString& tip,
                                         void (code::*action)(const Value&)) {
        auto* button = new QToolButton(this);
        button->setObjectName(name);
        button->setText(title);
        button->setToolTip(tip);
        button->setAutoRaise(true);
        button->setFont(small);
        button->setFocusPolicy(Qt::NoFocus);
        connect(button, &QToolButton::clicked, this,
                [this, button, action] { (this->*action)(Value(static_cast<QObject*>(button))); });
        row->addWidget(button);
    };
    for (const char* word : {"Declare", "Exception", "Array", "Dictionary", "Integer", "Boolean", "String", "id",
                             "Double", "Nil"}) {
        const QString title = QString::fromLatin1(word);
        addButton(QStringLiteral("shortcut_") + title, title, QStringLiteral("Insert ") + snippets::shortcutFor(title),
                  &code::performShortcut);
    }
    row->addStretch(1);
    addButton(QStringLiteral("b_comment"), QStringLiteral("Comment"), QStringLiteral("Comment the selected lines"),
              &code::b_comment);
    addButton(QStringLiteral("b_uncomment"), QStringLiteral("Uncomment"),
              QStringLiteral("Uncomment the selected lines"), &code::b_uncomment);
    addButton(QStringLiteral("b_shiftleft"), QStringLiteral("\u21e4"), QStringLiteral("Shift the selected lines left"),
              &code::b_shiftleft);
    addButton(QStringLiteral("b_shiftright"), QStringLiteral("\u21e5"),
              QStringLiteral("Shift the selected lines right"), &code::b_shiftright);
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
