// Interface files of a project: the dialog that makes a new one, the removal of one
// (renamed aside, never destroyed) and the interface designer's guide.
#include "frame/global.h"
#include "frame/mainwindow.h"
#include "project/file_name_rules.h"
#include "project/trash_name.h"
#include "ui_new_nib_dialog.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>

// The text a menu item carries as its represented object, or the string itself.
static QString representedObject(const Value& sender) {
    if (auto* action = qobject_cast<QAction*>(sender.object()))
        return action->data().toString();
    return sender.isString() ? sender.toString() : QString();
}

void Global::NewNib(const Value& sender) { subNewNib(sender); }

void Global::subNewNib(const Value&) {
    KLVR_TRACE("subNewNib");
    if (!ProjectIsLoaded())
        return;
    if (!NewNibWindow) {
        auto* window = new QWidget(nullptr, Qt::Dialog);
        Ui::NewNibForm form;
        form.setupUi(window);
        window->setParent(mymainwindow, Qt::Dialog);
        window->setObjectName(QStringLiteral("NewNib"));
        NewNibWindow = window;
        NewNibName = form.NewNibName;
        connect(form.ok, &QPushButton::clicked, this, [this] { NewNibOK(); });
        connect(form.cancel, &QPushButton::clicked, this, [this] { NewNibCancel(); });
        connect(form.NewNibName, &QLineEdit::returnPressed, this, [this] { NewNibOK(); });
    }
    NewNibName->setText(QString());
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        NewNibWindow->move(screen->availableGeometry().center() - NewNibWindow->rect().center());
    NewNibWindow->show();
    NewNibName->setFocus();
}

void Global::NewNibCancel(const Value&) {
    if (NewNibWindow)
        NewNibWindow->hide();
}

// A new interface file is P/Resources/NAME.xib, a copy of the application's empty
// interface file; the Remove submenu lists it from then on. A taken name is refused.
void Global::NewNibOK(const Value&) {
    KLVR_TRACE("NewNibOK");
    if (!NewNibWindow)
        return;
    NewNibWindow->hide();
    QString name = KLVR_TRIM(NewNibName->text());
    if (name.isEmpty() || !ProjectIsLoaded())
        return;
    for (const char* extension : {".nib", ".xib"})
        if (name.endsWith(QLatin1String(extension)))
            name.chop(4);
    if (!file_rules::isPlainSourceName(name) || name.contains(QLatin1Char('.'))) {
        KLVR_MSGBOX(QStringLiteral("File name contains invalid characters."),
                    QStringLiteral("Allowed characters are a-z A-Z 0-9 _"));
        return;
    }
    const QString folder = ProjectPath + QStringLiteral("/Resources");
    const QString path = folder + QLatin1Char('/') + name + QStringLiteral(".xib");
    if (file_rules::occupied(path)) {
        KLVR_MSGBOX(QStringLiteral("A file named ") + name + QStringLiteral(".xib already exists."),
                    QStringLiteral("Nothing was changed. Choose another name: the existing file is kept as it is."));
        return;
    }
    QDir().mkpath(folder);
    if (!QFile::copy(KLVR_NSBUNDLE_RESOURCEPATH() + QStringLiteral("/Empty.xib"), path)) {
        KLVR_MSGBOX(QStringLiteral("Could not create ") + path, QString());
        return;
    }
    ProjectStatusBar(QStringLiteral("Created Resources/") + name + QStringLiteral(".xib"));
}

void Global::RemoveNib(const Value& sender) {
    KLVR_TRACE("RemoveNib");
    if (!ProjectIsLoaded())
        return;
    const QString name = representedObject(sender);
    // Only a file directly in P/Resources: a name with a path in it is none of its files.
    if (name.isEmpty() || name.contains(QLatin1Char('/')) || name == QLatin1String(".") || name == QLatin1String(".."))
        return;
    const QString path = ProjectPath + QStringLiteral("/Resources/") + name;
    if (!QFileInfo(path).isFile())
        return;
    // An earlier removal's NAME.trash is kept: this one takes the first free trash name.
    QFile::rename(path, freeTrashName(path));
}

void Global::theInterfaceBuilder(const Value&) {
    KLVR_TRACE("theInterfaceBuilder");
    KLVR_PREVIEW(KLVR_NSBUNDLE_RESOURCEPATH() + QStringLiteral("/Xcode.pdf"));
}
