// The new-project dialog: makes the smallest valid project folder and opens it.
//
// Nothing is left half made and nothing of the user's is destroyed: the name and the
// location are checked, and the place is checked writable, before anything is created;
// a step that fails removes exactly what this command made and puts back what it moved
// aside. Replacing a project moves its Global file and main interface file to free
// ".trash" names first.
#include "frame/global.h"
#include "frame/mainwindow.h"
#include "project/file_name_rules.h"
#include "project/trash_name.h"
#include "ui_new_project_dialog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <unistd.h>

namespace {
const QString kLocationFile = QStringLiteral("DefaultProjectLocation.txt");
const QByteArray kGlobalText = "\nEvent AwakeFromNib()\n  Alert(\"Hello\")\nEnd Event\n";

// The nearest folder of `path` or its parents that exists; "" when a file is in the way.
QString nearestExistingFolder(const QString& path) {
    QString at = QDir::cleanPath(path);
    while (!file_rules::occupied(at)) {
        const QString parent = QFileInfo(at).path();
        if (parent == at)
            return QString();
        at = parent;
    }
    return QFileInfo(at).isDir() ? at : QString();
}

bool writableFolder(const QString& folder) {
    return !folder.isEmpty() && ::access(QFile::encodeName(folder).constData(), W_OK | X_OK) == 0;
}

// What one creation did, so a failure can undo exactly that.
struct Creation {
    QStringList folders;                      // made by this command, outermost first
    QStringList files;                        // made by this command
    QList<std::pair<QString, QString>> moved; // (original, trash name)

    void undo() {
        for (auto it = files.crbegin(); it != files.crend(); ++it)
            QFile::remove(*it);
        for (auto it = folders.crbegin(); it != folders.crend(); ++it)
            QDir().rmdir(*it); // only when empty: never what someone else put there
        for (const auto& [original, trash] : moved)
            if (!file_rules::occupied(original))
                QFile::rename(trash, original);
    }
    bool moveAside(const QString& path) {
        if (!file_rules::occupied(path))
            return true;
        const QString trash = freeTrashName(path);
        if (!QFile::rename(path, trash))
            return false;
        moved.append({path, trash});
        return true;
    }
};

void refuse(const QString& title, const QString& text) { KLVR_MSGBOX(title, text); }
} // namespace

void Global::NewProject(const Value&) {
    KLVR_TRACE("NewProject");
    if (!NewProjectWindow) {
        auto* window = new QWidget(nullptr, Qt::Dialog);
        Ui::NewProjectForm form;
        form.setupUi(window);
        window->setParent(mymainwindow, Qt::Dialog);
        window->setObjectName(QStringLiteral("NewProject"));
        NewProjectWindow = window;
        NewProjectName = form.NewProjectName;
        NewProjectLocation = form.NewProjectLocation;
        connect(form.ok, &QPushButton::clicked, this, [this] { NewProjectOK(); });
        connect(form.cancel, &QPushButton::clicked, this, [this] { NewProjectCancel(); });
        connect(form.choose, &QPushButton::clicked, this, [this] { NewProjectChoose(); });
        connect(form.NewProjectName, &QLineEdit::returnPressed, this, [this] { NewProjectOK(); });
    }
    const QString remembered = supportFile(kLocationFile);
    QString location = supportFolder();
    if (KLVR_NSFILEMANAGER_EXISTSFILE(remembered)) {
        location = KLVR_READSTRING(remembered);
        while (location.endsWith(QLatin1Char('\n')) || location.endsWith(QLatin1Char('\r')))
            location.chop(1); // a line break added by hand is no part of the folder's name
    }
    NewProjectLocation->setText(location);
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        NewProjectWindow->move(screen->availableGeometry().center() - NewProjectWindow->rect().center());
    NewProjectWindow->show();
    NewProjectWindow->raise();
    NewProjectName->setFocus();
}

void Global::NewProjectChoose(const Value&) {
    KLVR_TRACE("NewProjectChoose");
    const QString folder = chooseOneFolder();
    if (folder.isEmpty())
        return;
    if (NewProjectLocation)
        NewProjectLocation->setText(folder);
    QDir().mkpath(supportFolder());
    KLVR_WRITESTRING(folder, supportFile(kLocationFile));
}

void Global::NewProjectCancel(const Value&) {
    if (NewProjectWindow)
        NewProjectWindow->hide();
}

void Global::NewProjectOK(const Value&) {
    KLVR_TRACE("NewProjectOK");
    if (!NewProjectWindow)
        return;
    NewProjectWindow->hide();
    const QString name = NewProjectName->text();
    if (name.isEmpty())
        return;
    if (const QString problem = file_rules::projectNameProblem(name); !problem.isEmpty())
        return refuse(QStringLiteral("The project name cannot be used."), problem + QStringLiteral(" Nothing was created."));
    QString location = NewProjectLocation->text();
    if (location.isEmpty())
        return refuse(QStringLiteral("Choose a location for the project."),
                      QStringLiteral("The location is empty. Type a folder or use Choose…; nothing was created."));
    if (location == QLatin1String("Desktop"))
        location = KLVR_USER_HOMEDIRECTORY() + QStringLiteral("/Desktop/");
    else if (!location.endsWith(QLatin1Char('/')))
        location += QLatin1Char('/');
    const QString project = location + name;
    const QString projectName = KLVR_FILENAME(project);

    // Everything that can be known before creating is checked first.
    const QFileInfo existing(project);
    if (file_rules::occupied(project) && !existing.isDir())
        return refuse(QStringLiteral("Could not create the project."),
                      project + QStringLiteral(" is a file, not a folder. Nothing was created."));
    const QString base = nearestExistingFolder(existing.isDir() ? project : location);
    if (!writableFolder(base))
        return refuse(QStringLiteral("Could not create the project."),
                      QStringLiteral("The location ") + location +
                          QStringLiteral(" cannot be written to (or a file is in the way). Nothing was created."));
    const QString emptyInterface = KLVR_NSBUNDLE_RESOURCEPATH() + QStringLiteral("/Empty.xib");
    if (!QFileInfo(emptyInterface).isFile())
        return refuse(QStringLiteral("Could not create the project."),
                      QStringLiteral("The application's ") + emptyInterface +
                          QStringLiteral(" is missing. Nothing was created."));
    if (existing.isDir()) {
        const std::optional<QString> answer = KLVR_INPUTPANEL(
            QStringLiteral("Delete existing project?"),
            QStringLiteral("There is already a directory with the selected name. Should existing files be replaced "
                           "in\n") +
                project + QStringLiteral(" ?"),
            name);
        if (!answer)
            return;
    }

    Creation made;
    const QString globalFile = project + QStringLiteral("/Global.NSObject.klvr");
    const QString mainMenu = project + QStringLiteral("/en.lproj/MainMenu.xib");
    auto fail = [&made](const QString& why) {
        made.undo();
        refuse(QStringLiteral("Could not create the project."),
               why + QStringLiteral(" What this command had made was removed."));
    };
    if (!file_rules::makeFolders(project, made.folders))
        return fail(QStringLiteral("The folder ") + project + QStringLiteral(" could not be made."));
    if (!made.moveAside(globalFile) || !made.moveAside(mainMenu))
        return fail(QStringLiteral("The existing files could not be moved aside."));
    if (!file_rules::createNewFile(globalFile, kGlobalText))
        return fail(globalFile + QStringLiteral(" could not be written."));
    made.files << globalFile;
    if (!file_rules::makeFolders(project + QStringLiteral("/en.lproj"), made.folders) ||
        !QFile::copy(emptyInterface, mainMenu))
        return fail(mainMenu + QStringLiteral(" could not be written."));
    made.files << mainMenu;
    if (!file_rules::makeFolders(project + QLatin1Char('/') + projectName + QStringLiteral("/Resources"), made.folders))
        return fail(QStringLiteral("The folder ") + projectName + QStringLiteral("/Resources could not be made."));
    ProjectOpen(project);
}
