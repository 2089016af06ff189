// The product's launcher table with a real child process: a stand-in "xdg-open", alone
// on PATH, records the arguments it was started with, so each document must arrive as
// exactly one argument, and a path that starts with "-" must not read as an option.
#include "frame/launcher.h"
#include "frame/runtime.h"

#include "support/test_environment.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace {

struct DesktopOpen {
    const char* name;
    QString application;
    QString document;
    QString expectedArgument; // "{cwd}" stands for the current folder
};
void PrintTo(const DesktopOpen& c, std::ostream* out) { *out << c.name; }

class DesktopOpener : public ::testing::Test {
protected:
    void SetUp() override {
        KelvaroTestEnvironment::instance().reset();
        previous = installLaunchService(makeDesktopLauncher());
        savedPath = qgetenv("PATH");
        // Each argument ends with a NUL byte; the one outside command has its full path.
        writeFile(bin.path() + "/xdg-open", "#!/bin/sh\nprintf '%s\\0' \"$@\" > \"${0%/*}/argv.tmp\"\n"
                                            "/bin/mv \"${0%/*}/argv.tmp\" \"${0%/*}/argv\"\n");
        QFile::setPermissions(bin.path() + "/xdg-open", QFile::ReadOwner | QFile::ExeOwner);
        qputenv("PATH", bin.path().toLocal8Bit());
    }
    void TearDown() override {
        qputenv("PATH", savedPath);
        installLaunchService(previous);
    }
    // The arguments joined by " | ".
    std::string recordedArguments() {
        const QString file = bin.path() + "/argv";
        if (!QTest::qWaitFor([&] { return QFile::exists(file); }, 10000))
            return "<xdg-open was not started>";
        QByteArray argv = readFile(file);
        argv.chop(1);
        return argv.replace('\0', " | ").toStdString();
    }

    QTemporaryDir bin;
    QByteArray savedPath;
    std::shared_ptr<LaunchService> previous;
};

class DesktopOpening : public DesktopOpener, public ::testing::WithParamInterface<DesktopOpen> {};

TEST_P(DesktopOpening, TheDocumentArrivesAsOneArgumentAndNeverAsAnOption) {
    const DesktopOpen& c = GetParam();
    ASSERT_TRUE(KLVR_LAUNCH(c.application, c.document, true));
    EXPECT_EQ(recordedArguments(), QString(c.expectedArgument).replace("{cwd}", QDir::currentPath()).toStdString());
}

INSTANTIATE_TEST_SUITE_P(
    Documents, DesktopOpening,
    ::testing::Values(
        DesktopOpen{"FolderWithBlanksQuotesAndUmlauts", "Finder", "/tmp/My \"odd\" Prøject's/ü $(x)/Resources/",
                    "/tmp/My \"odd\" Prøject's/ü $(x)/Resources/"},
        DesktopOpen{"RelativePathWithLeadingDash", "Finder", "-rf project", "{cwd}/-rf project"},
        DesktopOpen{"LoneDash", "TextEdit", "-", "{cwd}/-"},
        DesktopOpen{"WebAddress", "Safari", "https://kelvaro.example/forum?a=1&b='2'",
                    "https://kelvaro.example/forum?a=1&b='2'"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(DesktopOpener, WithoutTheDesktopsOpenerTheMessageNamesThePackage) {
    QFile::remove(bin.path() + "/xdg-open");
    EXPECT_FALSE(launchOrTell("Finder", "/tmp", true));
    const auto shown = testPanels().messages();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].title.toStdString(), "Error: Finder not found");
    EXPECT_EQ(shown[0].text.toStdString(), "Kelvaro opens it with a program of this desktop that is not installed.\n"
                                           "Please install the Debian package \"xdg-utils\".");
}

} // namespace
