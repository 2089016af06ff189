// Desktop integration: a .klvr file named on the command line opens its project, and
// `cmake --install` puts a working command, a valid desktop entry, the icon and the file
// type in place.
#include "fileops_fixture.h"
#include "frame/startup_options.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

TEST(StartupArguments, SourceFileOpensTheFolderHoldingIt) {
    QTemporaryDir dir;
    const QString project = dir.path() + "/Prøject one";
    writeFile(project + "/Global.NSObject.klvr", "\n");
    const std::pair<QString, QString> cases[] = {
        {project, project},
        {project + "/Global.NSObject.klvr", project},
        {project + "/", project},
        {project + "/missing.klvr", project + "/missing.klvr"}, // not there: taken as a folder, refused later
    };
    for (const auto& [argument, folder] : cases)
        EXPECT_EQ(StartupOptions::parse({"kelvaro", argument}).projectFolder, folder) << argument.toStdString();
}

TEST(DesktopInstall, InstallsAWorkingCommandAndAValidEntry) {
    QTemporaryDir prefix;
    QProcess install;
    install.start(KELVARO_CMAKE_COMMAND, {"--install", KELVARO_BINARY_DIR, "--prefix", prefix.path()});
    ASSERT_TRUE(install.waitForFinished(120000));
    ASSERT_EQ(install.exitCode(), 0) << install.readAllStandardError().constData();
    const QString share = prefix.path() + "/share";
    for (const QString& file : {share + "/applications/kelvaro.desktop", share + "/icons/hicolor/scalable/apps/kelvaro.svg",
                                share + "/mime/packages/kelvaro.xml"})
        EXPECT_TRUE(QFileInfo(file).isFile()) << file.toStdString();
    EXPECT_TRUE(readFile(share + "/mime/packages/kelvaro.xml").contains("<glob pattern=\"*.klvr\"/>"));
    const QByteArray entry = readFile(share + "/applications/kelvaro.desktop");
    EXPECT_TRUE(entry.contains("\nMimeType=text/x-kelvaro;\n"));
    EXPECT_TRUE(entry.contains("\nExec=kelvaro %f\n"));

    // The installed command runs the installed application folder (here its scanner).
    const QString source = prefix.path() + "/Sample.NSObject.klvr";
    writeFile(source, "\nSub Hello()\nEnd Sub\n");
    QProcess kelvaro;
    kelvaro.start(prefix.path() + "/bin/kelvaro", {"--scan", source});
    ASSERT_TRUE(kelvaro.waitForFinished(60000));
    EXPECT_EQ(kelvaro.exitCode(), 0) << kelvaro.readAllStandardError().constData();
    EXPECT_TRUE(kelvaro.readAllStandardOutput().contains("Hello"));

    const QString validator = QStandardPaths::findExecutable("desktop-file-validate");
    if (validator.isEmpty())
        GTEST_SKIP() << "desktop-file-validate (desktop-file-utils) is not installed";
    QProcess validate;
    validate.start(validator, {share + "/applications/kelvaro.desktop"});
    ASSERT_TRUE(validate.waitForFinished(60000));
    EXPECT_EQ(validate.exitCode(), 0) << validate.readAllStandardOutput().constData();
}
