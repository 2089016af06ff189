// Building and running with the project's real klvrcompiler and klvrrun.
#include "build_fixture.h"

#include <QDirIterator>

namespace {
class EndToEnd : public BuildFixture {
protected:
    // The bundled example, copied so that its build folder lands in the test's folder.
    QList<std::pair<QString, QByteArray>> helloExample() {
        QList<std::pair<QString, QByteArray>> files;
        const QString example = QStringLiteral(KELVARO_SOURCE_DIR "/resources/Examples/Hello");
        QDirIterator it(example, QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            files.append({QDir(example).relativeFilePath(path), readFile(path)});
        }
        return files;
    }
};

TEST_F(EndToEnd, HelloIsBuiltRunAndGreetsAndAnErrorTakesTheEditorToItsFileAndLine) {
    installRealCompiler();
    Global& g = startWith("Hello", helloExample());
    g.global_run();
    ASSERT_TRUE(waitForBuild());
    waitForApplication();
    EXPECT_FALSE(g.bCompilerError) << compilerLog().toStdString();
    EXPECT_TRUE(compilerLog().contains("Build succeeded")) << compilerLog().toStdString();
    EXPECT_EQ(runLog(), "Hello\n");
    EXPECT_EQ(g.lastRunExitStatus(), 0);
    EXPECT_EQ(statuses.mid(statuses.indexOf("xcodebuild is compiling. Please wait...")), (QStringList{"xcodebuild is compiling. Please wait...", "", "Launching...", "Done."}));
    EXPECT_TRUE(testPanels().messages().empty());

    project = makeProject("Broken", {{"Global.NSObject.klvr", "\nEvent AwakeFromNib()\n  Alert(\"Hi\")\nEnd Event\n"},
                                     {"Counter.NSObject.klvr", "\nSub Count()\n  Dim n As Integer\n\n  n = countr + 1\nEnd Sub\n"}});
    g.ProjectOpen(project);
    g.global_run();
    ASSERT_TRUE(waitForBuild());
    EXPECT_TRUE(g.bCompilerError);
    EXPECT_EQ(g.ProjectCurrentFilename(), project + "/Counter.NSObject.klvr");
    EXPECT_EQ(KLVR_KLTEXTVIEW_LINE(g.mytextview()), 5);
    EXPECT_EQ(g.sLastErrorFile, "Counter.NSObject.klvr");
    EXPECT_EQ(g.nLastErrorLine, 5);
    EXPECT_EQ(status(), "Unknown identifier countr in line 5 in file Counter.NSObject.klvr");
    ASSERT_EQ(testPanels().messages().size(), 1u);
    EXPECT_EQ(testPanels().messages()[0].title, status());
    EXPECT_TRUE(runLog().isEmpty()) << "opening the project emptied the run log and the failed build ran nothing";
    EXPECT_FALSE(QFile::exists(project + "/build/Release/Broken.app"));
}
} // namespace
