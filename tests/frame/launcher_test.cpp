// The desktop launcher: names map to commands through the resources' table; a name
// without an entry or whose commands are all missing is "not found".
#include "frame/launcher.h"
#include "frame/runtime.h"

#include "support/test_environment.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

class DesktopLaunching : public ::testing::Test {
protected:
    void SetUp() override {
        QDir().mkpath(bundle.path() + "/Contents/Resources");
        QDir().mkpath(bundle.path() + "/Contents/MacOS");
        klvrSetBundlePath(bundle.path());
        previous = installLaunchService(makeDesktopLauncher());
        // The stand-in application writes the document it was given into a file.
        const QString opener = bundle.path() + "/opener";
        writeFile(opener, "#!/bin/sh\nprintf '%s' \"$1\" > \"$(dirname \"$0\")/opened.txt\"\n");
        QFile::setPermissions(opener, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        writeFile(bundle.path() + "/Contents/Resources/launchers.txt",
                  ("# test table\n"
                   "Missing = no-such-program-anywhere %f\n"
                   "TextEdit = no-such-editor %f | " + opener + " %f\n"
                   "Xcode = @tool klvrcompiler\n").toUtf8());
    }
    void TearDown() override {
        installLaunchService(previous);
        klvrSetBundlePath(KELVARO_APP_DIR);
    }
    QString opened() const { return QString::fromUtf8(readFile(bundle.path() + "/opened.txt")); }

    QTemporaryDir bundle;
    std::shared_ptr<LaunchService> previous;
};

TEST_F(DesktopLaunching, UnknownOrUninstalledApplicationsAreNotFoundAndXcodeNeedsTheCompiler) {
    EXPECT_FALSE(KLVR_LAUNCH("Safari", "/tmp/page.html", true)); // no line in the table
    EXPECT_FALSE(KLVR_LAUNCH("Missing", "/tmp/x", true));
    EXPECT_FALSE(KLVR_LAUNCH("/no/such/application", "", false));
    // Xcode is found when the application folder holds the compiler.
    EXPECT_FALSE(KLVR_LAUNCH("Xcode", "", false));
    writeFile(bundle.path() + "/Contents/MacOS/klvrcompiler", "#!/bin/sh\n");
    QFile::setPermissions(bundle.path() + "/Contents/MacOS/klvrcompiler",
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_TRUE(KLVR_LAUNCH("Xcode", "", false));
    EXPECT_TRUE(KLVR_LAUNCH("Xcode", "/p/P.xcodeproj", false));
}

TEST_F(DesktopLaunching, TheFirstInstalledAlternativeOrAFullPathOpensTheDocumentAsOneArgument) {
    const QString document = "/tmp/My Project/it's \"odd\"; $(x).txt";
    EXPECT_TRUE(KLVR_LAUNCH("TextEdit", document, true));
    EXPECT_TRUE(QTest::qWaitFor([&] { return opened() == document; }, 5000));
    // A full application path runs when it is executable.
    EXPECT_TRUE(KLVR_LAUNCH(bundle.path() + "/opener", "/tmp/direct", true));
    EXPECT_TRUE(QTest::qWaitFor([&] { return opened() == "/tmp/direct"; }, 5000));
}
