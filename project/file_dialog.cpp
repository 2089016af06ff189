// The file dialog: one window for creating, deleting, renaming and duplicating source
// files. Its mode is its title; OK finds the mode again from the title.
//
// Nothing here destroys a file: a name that is taken is refused before anything changes,
// a deleted file is renamed to the first free ".trash" name, a rename is a move that
// refuses an existing target, and the document is saved before its file is moved.
#include "editor/kltextview.h"
#include "frame/global.h"
#include "frame/mainwindow.h"
#include "project/file_name_rules.h"
#include "project/trash_name.h"
#include "ui_new_file_dialog.h"

#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>

namespace {
const QString kGlobalFile = QStringLiteral("Global.NSObject.klvr");

void centre(QWidget* window) {
    if (const QScreen* screen = QGuiApplication::primaryScreen())
        window->move(screen->availableGeometry().center() - window->rect().center());
}

void refuseInvalidName() {
    KLVR_MSGBOX(QStringLiteral("File name contains invalid characters."),
                QStringLiteral("Allowed characters are a-z A-Z 0-9 _"));
}

void refuseTakenName(const QString& name) {
    KLVR_MSGBOX(QStringLiteral("A file named ") + name + QStringLiteral(" already exists."),
                QStringLiteral("Nothing was changed. Choose another name: the existing file is kept as it is."));
}
} // namespace

// ---------------------------------------------------------------- opening the dialog

// Shows the dialog with a title (its mode); `name` and `type` are set when given. The
// fixed superclass is shown only when it names one, the free one only in the free mode.
static void openFileDialog(Global& g, const QString& title, const QString* name, const QString* type,
                           bool freeSuperClass, bool nameEditable = true) {
    if (!g.ProjectIsLoaded())
        return;
    if (!g.NewFile) {
        auto* window = new QWidget(nullptr, Qt::Dialog);
        Ui::NewFileForm form;
        form.setupUi(window);
        window->setParent(g.mymainwindow, Qt::Dialog); // goes with the main window
        window->setObjectName(QStringLiteral("NewFile"));
        g.NewFile = window;
        g.NewFileName = form.NewFileName;
        g.NewFileType = form.NewFileType;
        g.NewFileType2 = form.NewFileType2;
        g.NewFileSuperClass2 = form.NewFileSuperClass2;
        QObject::connect(form.ok, &QPushButton::clicked, &g, [&g] { g.NewFileOK(); });
        QObject::connect(form.cancel, &QPushButton::clicked, &g, [&g] { g.NewFileCancel(); });
        QObject::connect(form.NewFileName, &QLineEdit::returnPressed, &g, [&g] { g.NewFileOK(); });
    }
    g.NewFile->setWindowTitle(title);
    if (name)
        g.NewFileName->setText(*name);
    if (type)
        g.NewFileType->setText(*type);
    const bool fixedSuperClass = type && !freeSuperClass;
    g.NewFileType->setVisible(fixedSuperClass);
    if (auto* label = g.NewFile->findChild<QLabel*>(QStringLiteral("typeLabel")))
        label->setVisible(fixedSuperClass);
    g.NewFileName->setReadOnly(!nameEditable);
    g.NewFileSuperClass2->setVisible(freeSuperClass);
    g.NewFileType2->setVisible(freeSuperClass);
    if (freeSuperClass)
        g.NewFileType2->setText(QString());
    centre(g.NewFile);
    g.NewFile->show();
    g.NewFileName->setFocus();
}

void Global::NewFileObject(const Value&) {
    const QString empty, type = QStringLiteral("NSObject");
    openFileDialog(*this, QStringLiteral("New File (Super Class NSObject)"), &empty, &type, false);
}

void Global::NewFileView(const Value&) {
    const QString empty, type = QStringLiteral("NSView");
    openFileDialog(*this, QStringLiteral("New File (Super Class NSView)"), &empty, &type, false);
}

void Global::NewFileWindow(const Value&) {
    const QString empty, type = QStringLiteral("NSWindow");
    openFileDialog(*this, QStringLiteral("New File (Super Class NSWindow)"), &empty, &type, false);
}

void Global::NewFileXYZ(const Value&) {
    const QString empty;
    openFileDialog(*this, QStringLiteral("New File..."), &empty, &empty, true);
}

void Global::NewFileDelete(const Value&) {
    const QString name = KLVR_FILENAME(ProjectCurrentFilename());
    openFileDialog(*this, QStringLiteral("Delete File"), &name, nullptr, false, false);
}

void Global::NewFileRename(const Value&) {
    const QString empty;
    openFileDialog(*this, QStringLiteral("Rename File ") + KLVR_FILENAME(ProjectCurrentFilename()), &empty, nullptr,
                   false);
}

void Global::NewFileDuplicate(const Value&) {
    const QString empty;
    openFileDialog(*this, QStringLiteral("Duplicate File ") + KLVR_FILENAME(ProjectCurrentFilename()), &empty,
                   nullptr, false);
}

void Global::NewFileCancel(const Value&) {
    if (NewFile)
        NewFile->hide();
}

// ---------------------------------------------------------------- carrying it out

namespace {
enum class Mode { NewFixed, NewFree, Delete, Rename, Duplicate, None };

Mode modeOf(const QString& title) {
    const std::pair<const char*, Mode> tests[] = {{"New File (Super", Mode::NewFixed},
                                                  {"New File...", Mode::NewFree},
                                                  {"Delete File", Mode::Delete},
                                                  {"Rename File", Mode::Rename},
                                                  {"Duplicate File", Mode::Duplicate}};
    for (const auto& [part, mode] : tests)
        if (KLVR_CONTAINS(title, QLatin1String(part), false))
            return mode;
    return Mode::None;
}
} // namespace

// The project path for a new source file `name`, or "" after saying why it cannot be
// made: a name outside the rules, or one already taken (never written over).
static QString freeSourcePath(const Global& g, const QString& name) {
    if (!file_rules::isPlainSourceName(name)) {
        refuseInvalidName();
        return QString();
    }
    const QString path = g.ProjectPath + QLatin1Char('/') + name;
    if (file_rules::occupied(path)) {
        refuseTakenName(name);
        return QString();
    }
    return path;
}

// Creates the new source file `typed` (completed with the superclass), lists it and shows it.
static void createSourceFile(Global& g, const QString& typed, const QString& superClass) {
    if (KLVR_ENDSWITH(typed, kGlobalFile, true)) {
        KLVR_MSGBOX(QStringLiteral("Global already there."), QString());
        return;
    }
    const QString name =
        KLVR_ENDSWITH(typed, QStringLiteral(".klvr"), true) ? typed : typed + QLatin1Char('.') + superClass + ".klvr";
    const QString path = freeSourcePath(g, name);
    if (path.isEmpty())
        return;
    if (!file_rules::createNewEmptyFile(path)) {
        KLVR_MSGBOX(QStringLiteral("Could not create ") + path, QStringLiteral("Nothing was changed."));
        return;
    }
    g.CreateObjCFilesForXcode(name, QString());
    if (!g.projectFiles.contains(name))
        g.projectFiles.append(name);
    g.ProjectTypes.append(Global::filebasename(name));
    g.ProjectOpenCode(path);
    g.RefreshCompletionAsList();
    g.UpdateToolbarSelector(g.ProjectCurrentFilename());
}

// The rename or duplicate target for the shown file F: the typed name with F's superclass.
static QString targetName(const QString& typed, const QString& current) {
    return typed + QLatin1Char('.') + Global::getSuperClassName(current) + QStringLiteral(".klvr");
}

// Lets the shown document go after its text was saved; false when the user keeps it.
static bool saveAndLetGo(Global& g, const QString& path) {
    KLTextView* view = g.documentView(path);
    if (!view)
        return true;
    if (!g.saveBeforeLettingGo({view}))
        return false;
    view->waitForWriter(); // nothing of it is still on its way to the file
    return true;
}

static void deleteSourceFile(Global& g, const QString& path) {
    if (KLVR_ENDSWITH(path, kGlobalFile, true)) {
        KLVR_MSGBOX(QStringLiteral("Global must not be deleted."), QString());
        return;
    }
    if (!saveAndLetGo(g, path))
        return;
    // The document goes before its file moves, so the move is not taken for another
    // program's deletion while klvrmake runs.
    g.discardDocument(path);
    // An earlier deletion's NAME.trash stays: this one takes the first free trash name.
    const QString trash = freeTrashName(path);
    if (!QFile::rename(path, trash)) {
        KLVR_MSGBOX(QStringLiteral("Could not delete ") + path, QStringLiteral("The file could not be renamed to ") +
                                                                     trash + QStringLiteral("; nothing was changed."));
        g.ProjectOpenCode(path);
        return;
    }
    const QString name = KLVR_FILENAME(path);
    g.RemoveObjCFilesForXcode(path);
    g.projectFiles.removeAll(name);
    g.ProjectTypes.removeOne(Global::filebasename(name));
    g.RefreshCompletionAsList();
    g.UpdateToolbarSelector(g.ProjectCurrentFilename());
}

static void renameSourceFile(Global& g, const QString& path, const QString& typed) {
    if (KLVR_ENDSWITH(path, kGlobalFile, true)) {
        KLVR_MSGBOX(QStringLiteral("Global must not be renamed."), QString());
        return;
    }
    const QString name = targetName(typed, path);
    const QString target = freeSourcePath(g, name);
    if (target.isEmpty())
        return;
    if (!saveAndLetGo(g, path))
        return;
    g.discardDocument(path); // as for deleting: the document goes before its file moves
    // A move within the folder; QFile::rename refuses a target that appeared meanwhile.
    if (!QFile::rename(path, target)) {
        KLVR_MSGBOX(QStringLiteral("Could not rename ") + path, QStringLiteral("Nothing was changed."));
        g.ProjectOpenCode(path);
        return;
    }
    const QString oldName = KLVR_FILENAME(path);
    g.RemoveObjCFilesForXcode(path);
    g.CreateObjCFilesForXcode(name, QString());
    g.projectFiles.removeAll(oldName);
    g.projectFiles.append(name);
    g.ProjectTypes.removeOne(Global::filebasename(oldName));
    g.ProjectTypes.append(Global::filebasename(name));
    g.RefreshCompletionAsList();
    g.UpdateToolbarSelector(g.ProjectCurrentFilename());
}

static void duplicateSourceFile(Global& g, const QString& path, const QString& typed) {
    const QString name = targetName(typed, path);
    const QString target = freeSourcePath(g, name);
    if (target.isEmpty())
        return;
    // The copy holds what the user sees: the document's typing is written first.
    if (KLTextView* view = g.documentView(path); view && view->isModified() && !view->isFileReadOnly()) {
        if (!view->save(view->fileName())) {
            KLVR_MSGBOX(QStringLiteral("Could not save ") + path,
                        QStringLiteral("The file was not duplicated, so the copy does not miss your changes."));
            return;
        }
    }
    if (!QFile::copy(path, target)) { // refuses an existing target
        KLVR_MSGBOX(QStringLiteral("Could not duplicate ") + path, QStringLiteral("Nothing was changed."));
        return;
    }
    g.CreateObjCFilesForXcode(name, QString());
    g.projectFiles.append(name);
    g.RefreshCompletionAsList();
    g.UpdateToolbarSelector(g.ProjectCurrentFilename());
}

void Global::NewFileOK(const Value&) {
    KLVR_TRACE("NewFileOK");
    if (!NewFile)
        return;
    NewFile->hide();
    const QString typed = KLVR_TRIM(NewFileName->text());
    if (typed.isEmpty() || !ProjectIsLoaded())
        return;
    const QString current = ProjectCurrentFilename();
    switch (modeOf(NewFile->windowTitle())) {
    case Mode::NewFixed:
        return createSourceFile(*this, typed, NewFileType->text());
    case Mode::NewFree:
        return createSourceFile(*this, typed, NewFileType2->text());
    case Mode::Delete:
        if (!current.isEmpty())
            deleteSourceFile(*this, current);
        return;
    case Mode::Rename:
        if (!current.isEmpty())
            renameSourceFile(*this, current, typed);
        return;
    case Mode::Duplicate:
        if (!current.isEmpty())
            duplicateSourceFile(*this, current, typed);
        return;
    case Mode::None:
        return;
    }
}
