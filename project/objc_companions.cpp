// Objective-C companion files, resources and frameworks of the platform project: each
// change is handed to klvrmake in the application folder, which edits P/N.xcodeproj.
// Also the application and preferences delegates made from the templates.
#include "frame/global.h"
#include "project/file_name_rules.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {
QString projectName(const QString& project) { return KLVR_FILENAME(project); }
QString companionFolder(const QString& project) { return project + QLatin1Char('/') + projectName(project); }
QString templateFile(const QString& name) {
    return KLVR_NSBUNDLE_BUNDLEPATH() + QStringLiteral("/Contents/MacOS/TEMPLATE/") + name;
}
// The tail every project-maker call ends with: the platform project and the folder.
QStringList projectArguments(const QString& project) {
    return {QStringLiteral("-o"), project + QLatin1Char('/') + projectName(project) + QStringLiteral(".xcodeproj"),
            QStringLiteral("-p"), project};
}
// Makes C.mm and C.h in P/N where they are missing; an existing one keeps its text.
void ensureCompanions(const QString& project, const QString& className) {
    const QString folder = companionFolder(project);
    QDir().mkpath(folder);
    for (const char* extension : {".mm", ".h"}) {
        const QString path = folder + QLatin1Char('/') + className + QLatin1String(extension);
        if (!file_rules::occupied(path))
            file_rules::createNewEmptyFile(path);
    }
}
} // namespace

void Global::runProjectMaker(const QStringList& arguments) {
    KLVR_TRACE("runProjectMaker");
    // klvrmake runs as a task of its own, so that a program running in `go` goes on;
    // its output is not reported and its exit status is not looked at.
    bIgnoreStdErr = true;
    KLTask* maker = KLVR_KLTASK_INIT(this, QStringLiteral("klvrmake"));
    KLVR_KLTASK_PATH(maker, KLVR_NSBUNDLE_BUNDLEPATH() + QStringLiteral("/Contents/MacOS/klvrmake"));
    KLVR_KLTASK_ARGUMENTS(maker, arguments);
    KLVR_KLTASK_STARTANDWAIT(maker, false);
    maker->deleteLater();
    bIgnoreStdErr = false;
}

void Global::CreateObjCFilesForXcode(const QString& classFile, const QString& extraFile) {
    KLVR_TRACE("CreateObjCFilesForXcode");
    const QString className = getClassName(classFile);
    ensureCompanions(ProjectPath, className);
    QStringList arguments{QStringLiteral("-append"), className + QStringLiteral(".mm"), className + QStringLiteral(".h")};
    if (!extraFile.isEmpty())
        arguments << extraFile;
    runProjectMaker(arguments + projectArguments(ProjectPath));
}

void Global::RemoveObjCFilesForXcode(const QString& classFileOrPath) {
    KLVR_TRACE("RemoveObjCFilesForXcode");
    const QString className = getClassName(classFileOrPath);
    ensureCompanions(ProjectPath, className); // the files themselves stay on disk
    runProjectMaker(QStringList{className + QStringLiteral(".mm"), className + QStringLiteral(".h")} +
                    projectArguments(ProjectPath));
}

void Global::PerformAddAppDelegate() {
    KLVR_TRACE("PerformAddAppDelegate");
    const QString name = QStringLiteral("AppDelegate.NSObject.klvr");
    const QString path = ProjectPath + QLatin1Char('/') + name;
    if (!ProjectIsLoaded() || file_rules::occupied(path))
        return;
    if (!QFile::copy(templateFile(name), path))
        return;
    CreateObjCFilesForXcode(QStringLiteral("AppDelegate.NSObject"), QString());
    if (!projectFiles.contains(name))
        projectFiles.append(name);
}

void Global::AddAppDelegate(const Value&) {
    KLVR_TRACE("AddAppDelegate");
    if (!ProjectIsLoaded())
        return;
    PerformAddAppDelegate();
    ProjectOpenCode(ProjectPath + QStringLiteral("/AppDelegate.NSObject.klvr"));
}

void Global::PerformAddPreferencesDelegate() {
    KLVR_TRACE("PerformAddPreferencesDelegate");
    const QString name = QStringLiteral("Preferences.KLPreferences.klvr");
    const QString path = ProjectPath + QLatin1Char('/') + name;
    if (!ProjectIsLoaded() || file_rules::occupied(path))
        return;
    if (!QFile::copy(templateFile(name), path))
        return;
    const QString interface = companionFolder(ProjectPath) + QStringLiteral("/en.lproj/Preferences.xib");
    QDir().mkpath(QFileInfo(interface).path());
    if (!file_rules::occupied(interface)) // an interface file the user already has stays
        QFile::copy(templateFile(QStringLiteral("Preferences.xib")), interface);
    CreateObjCFilesForXcode(QStringLiteral("Preferences.KLPreferences"), interface);
    if (!projectFiles.contains(name))
        projectFiles.append(name);
    global_make();
}

void Global::AddPreferencesDelegate(const Value&) {
    KLVR_TRACE("AddPreferencesDelegate");
    if (!ProjectIsLoaded())
        return;
    PerformAddPreferencesDelegate();
    ProjectOpenCode(ProjectPath + QStringLiteral("/Preferences.KLPreferences.klvr"));
}

void Global::NewObjCClass(const Value&) {
    KLVR_TRACE("NewObjCClass");
    if (!ProjectIsLoaded())
        return;
    const std::optional<QString> answer = KLVR_INPUTPANEL(
        QStringLiteral("Use Objective-C to extend your project"),
        QStringLiteral("Write, build and test your Objective-C code in Xcode and create declare statements to gain "
                       "access within Kelvaro code."),
        QStringLiteral("myObjCClass"));
    if (!answer)
        return;
    const QString className = *answer;
    if (!file_rules::isPlainSourceName(className) || className.contains(QLatin1Char('.'))) {
        KLVR_MSGBOX(QStringLiteral("Class name contains invalid characters."),
                    QStringLiteral("Allowed characters are a-z A-Z 0-9 _"));
        return;
    }
    const QString folder = companionFolder(ProjectPath);
    const QString implementation = folder + QLatin1Char('/') + className + QStringLiteral(".mm");
    const QString header = folder + QLatin1Char('/') + className + QStringLiteral(".h");
    // Code the user already wrote for that class is never replaced.
    if (file_rules::occupied(implementation) || file_rules::occupied(header)) {
        KLVR_MSGBOX(QStringLiteral("An Objective-C class with that name already exists."),
                    className + QStringLiteral(".mm or ") + className + QStringLiteral(".h is already in ") + folder +
                        QStringLiteral(". Choose another name; the existing files are kept as they are."));
        return;
    }
    QDir().mkpath(folder);
    const QString mm =
        QStringLiteral("\n      \n#import <KLVRRuntime/KLVRRuntime.h>\n\n#import \"") + className +
        QStringLiteral(".h\"\n\n@implementation ") + className +
        QStringLiteral("\n\n- (id) init\n{\n  if ((self = [super init])){\n    // your code here\n    // you may use the "
                       "Kelvaro runtime functions, e.g.\n    // NSMutableString *s = "
                       "KLVR_READSTRING(\"filename\");\n  }\n  return self;\n}\n\n@end");
    const QString h = QStringLiteral("\n\n#import <Cocoa/Cocoa.h>\n\n@interface ") + className +
                      QStringLiteral(" : NSObject\n{\n}\n- (id) init;\n@end\n");
    file_rules::createNewFile(implementation, mm.toUtf8());
    file_rules::createNewFile(header, h.toUtf8());
    CreateObjCFilesForXcode(ProjectPath + QLatin1Char('/') + className + QStringLiteral(".NSObject"), QString());
    KLVR_LAUNCH(QStringLiteral("Xcode"), implementation, true);
}

void Global::AddResourceFile(const Value&) {
    KLVR_TRACE("AddResourceFile");
    if (!ProjectIsLoaded())
        return;
    const QStringList files = chooseFiles();
    if (files.isEmpty())
        return;
    // The files are referenced where they are; nothing is copied.
    runProjectMaker(QStringList{QStringLiteral("-append")} + files + projectArguments(ProjectPath));
}

void Global::AddFramework(const Value&) {
    KLVR_TRACE("AddFramework");
    if (!ProjectIsLoaded())
        return;
    const QString framework =
        chooseOneFolder(QStringLiteral("/Developer/SDKs/MacOSX10.7.sdk/System/Library/Frameworks"));
    if (framework.isEmpty())
        return;
    runProjectMaker(QStringList{QStringLiteral("-append"), framework} + projectArguments(ProjectPath));
    KLVR_MSGBOX(QStringLiteral("Framework has been added to Xcode project. Use the Declare Framework statement to gain "
                               "access."),
                QStringLiteral("Example:\n\nDeclare Framework \"Webkit\" \"#import <Webkit/Webkit>\" ' if main header "
                               "file is different set it here\nDeclare Class \"WebFrame\"\n\nEvent AwakeFromNib()\n  Dim "
                               "w As WebFrame\nEnd Event\n"));
}
