// `kelvaro --build` and `kelvaro --run`: the real executable, compiler and runner.
#include "support/ide_fixture.h"

#include <QProcess>

namespace {
struct BatchResult {
    int exitCode = -1;
    QString out;
};

class BatchMode : public IdeFixture {
protected:
    BatchResult kelvaro(const QStringList& arguments) {
        QProcess process;
        process.start(QStringLiteral(KELVARO_APP_DIR "/Contents/MacOS/kelvaro"), arguments);
        process.waitForFinished(120000);
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                QString::fromUtf8(process.readAllStandardOutput())};
    }
};

TEST_F(BatchMode, RunPrintsStatusesThenBothLogsAndSucceeds) {
    const QString p = makeProject("Greeter", {{"Global.NSObject.klvr", "\nEvent AwakeFromNib()\n  Print(\"Hi there\")\nEnd Event\n"}});
    const BatchResult r = kelvaro({"--run", p});
    EXPECT_EQ(r.exitCode, 0) << r.out.toStdString();
    const qsizetype compiling = r.out.indexOf("status: xcodebuild is compiling. Please wait...\n");
    const qsizetype done = r.out.indexOf("status: Done.\n");
    const qsizetype log = r.out.indexOf("Build succeeded (Release)\n");
    ASSERT_GE(compiling, 0) << r.out.toStdString();
    EXPECT_LT(compiling, r.out.indexOf("status: Launching...\n"));
    EXPECT_LT(r.out.indexOf("status: Launching...\n"), done);
    EXPECT_LT(done, log);
    EXPECT_TRUE(r.out.endsWith("Build succeeded (Release)\nHi there\n")) << r.out.toStdString();
}

struct BatchCase {
    const char* name;
    const char* mode;
    const char* source;
    int exitCode;
    const char* printed;
};
class BatchOutcome : public BatchMode, public ::testing::WithParamInterface<BatchCase> {};

TEST_P(BatchOutcome, GivesTheExitStatus) {
    const BatchCase& c = GetParam();
    const QString p = c.source ? makeProject("Odd $name; -x", {{"Global.NSObject.klvr", c.source}})
                               : makeProject("Plain", {{"readme.txt", "x"}});
    const BatchResult r = kelvaro({c.mode, p});
    EXPECT_EQ(r.exitCode, c.exitCode) << r.out.toStdString();
    EXPECT_TRUE(r.out.contains(QString::fromUtf8(c.printed))) << r.out.toStdString();
}
INSTANTIATE_TEST_SUITE_P(
    Table, BatchOutcome,
    ::testing::Values(
        BatchCase{"BuildSucceeds", "--build", "\nSub A()\nEnd Sub\n", 0, "status: Done.\n"},
        BatchCase{"CompilerError", "--build", "\nSub A()\n  y = zz\nEnd Sub\n", 1,
                  "Global.NSObject.klvr:3: error: Unknown identifier y\n"},
        BatchCase{"ProgramFails", "--run", "\nEvent AwakeFromNib()\n  Print(1 \\ 0)\nEnd Event\n", 1,
                  "Kelvaro: Division by zero in line 3 in file Global.NSObject.klvr\n"},
        BatchCase{"NotAProject", "--build", nullptr, 1, ""}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(BatchMode, MissingProjectFolderIsAUsageError) {
    EXPECT_EQ(kelvaro({"--build"}).exitCode, 2);
    EXPECT_EQ(kelvaro({"--run", "a", "b"}).exitCode, 2);
}
} // namespace
