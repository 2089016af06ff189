// The project folder helpers: which files are sources, the project's name, the
// application folder a build replaces, checks on several threads at once, and the
// platform project file, whose lines it does not manage survive every edit.
#include "tools/lang/diagnostic.h"
#include "tools/lang/parser.h"
#include "tools/lang/project.h"
#include "tools/lang/project_file.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <thread>

namespace fs = std::filesystem;

namespace {

void write(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

TEST(Project, SourcesAreTheTopLevelKlvrFilesWithGlobalFirst) {
    QTemporaryDir tmp;
    const fs::path p = tmp.path().toStdString();
    for (const char* name : {"b.NSObject.klvr", "Global.NSObject.klvr", "a.NSWindow.klvr", "x.klvr.bak", "notes.txt", ".klvr"})
        write(p / name, "");
    write(p / "sub" / "c.NSObject.klvr", "");
    fs::create_directories(p / "folder.klvr");
    EXPECT_EQ(klvr::listSourceFiles(p), (std::vector<std::string>{"Global.NSObject.klvr", "a.NSWindow.klvr", "b.NSObject.klvr"}));
    EXPECT_TRUE(klvr::listSourceFiles(p / "missing").empty());
    EXPECT_EQ(klvr::projectName("/Users/me/My App/"), "My App");
    EXPECT_EQ(klvr::projectName("/Users/me/Hello"), "Hello");
    std::string error;
    EXPECT_FALSE(klvr::readSource(p / "missing.klvr", error));
    EXPECT_EQ(error, "File cannot be read");
}

TEST(Project, ABuildReplacesThePreviousApplicationWhole) {
    QTemporaryDir tmp;
    const fs::path p = fs::path(tmp.path().toStdString()) / "Demo";
    write(p / "Global.NSObject.klvr", "\nEvent AwakeFromNib()\nEnd Event\n");
    write(p / "old.NSObject.klvr", "");
    const fs::path runner = fs::path(tmp.path().toStdString()) / "runner";
    write(runner, "#!/bin/sh\n");
    ASSERT_EQ(klvr::buildApplication(p, {"Global.NSObject.klvr", "old.NSObject.klvr"}, runner, "Release"), "");
    const fs::path app = p / "build" / "Release" / "Demo.app";
    EXPECT_TRUE(fs::exists(app / "Contents" / "Resources" / "old.NSObject.klvr"));
    ASSERT_EQ(klvr::buildApplication(p, {"Global.NSObject.klvr"}, runner, "Release"), "");
    EXPECT_FALSE(fs::exists(app / "Contents" / "Resources" / "old.NSObject.klvr"));
    EXPECT_TRUE(fs::exists(app / "Contents" / "MacOS" / "Demo"));
    EXPECT_FALSE(fs::exists(p / "build" / "Release" / ".Demo.app.partial"));
    // The sources themselves survive removing the application.
    EXPECT_EQ(klvr::cleanProject(p), "");
    EXPECT_TRUE(fs::exists(p / "old.NSObject.klvr"));
    EXPECT_NE(klvr::cleanProject(p / "Global.NSObject.klvr"), "");  // not a folder
    // A missing runner or source is an error that leaves the previous application alone.
    ASSERT_EQ(klvr::buildApplication(p, {"Global.NSObject.klvr"}, runner, "Release"), "");
    EXPECT_NE(klvr::buildApplication(p, {"Global.NSObject.klvr"}, p / "no-runner", "Release"), "");
    EXPECT_NE(klvr::buildApplication(p, {"Global.NSObject.klvr", "gone.NSObject.klvr"}, runner, "Release"), "");
    EXPECT_TRUE(fs::exists(app / "Contents" / "Resources" / "Global.NSObject.klvr"));
    EXPECT_FALSE(fs::exists(p / "build" / "Release" / ".Demo.app.partial"));
}

TEST(Project, CompilingOnManyThreadsAtOnceGivesTheSameVerdicts) {
    // The keyword tables and the node pool are shared or per thread; neither may mix
    // up the results of parallel checks.
    const std::string good = "\nSub A()\n  Dim i As Integer\n  For i = 1 To 3\n    Print(Str(i) & \"x\")\n  Next\nEnd Sub\n";
    const std::string bad = "\nSub A()\n  Dim i As Integer\n  Wend\nEnd Sub\n";
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&, t] {
            klvr::Vocabulary vocabulary;
            klvr::CompileContext context;
            context.vocabulary = &vocabulary;
            for (int i = 0; i < 300; ++i) {
                const bool expectBad = (i + t) % 3 == 0;
                try {
                    const klvr::ClassUnit unit = klvr::compileClass(expectBad ? bad : good, "a.klvr", context);
                    if (expectBad || unit.methods.size() != 1 || unit.methods[0].body.size() != 2)
                        ++wrong;
                } catch (const klvr::LanguageError& error) {
                    if (!expectBad || error.diagnostic.line != 4 || error.diagnostic.message != "Wend without While")
                        ++wrong;
                }
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong.load(), 0);
}

TEST(ProjectFile, KeepsForeignLinesAndEditsOnlyFileReferences) {
    klvr::ProjectFile file = klvr::ProjectFile::parse("// header\r\nname Demo\nsource a.klvr\nfile x.mm\ncustom setting = 1\nfile y.h");
    EXPECT_TRUE(file.hasFile("x.mm"));
    EXPECT_FALSE(file.hasFile("x.m"));  // whole references only, no prefixes
    EXPECT_FALSE(file.hasFile("a.klvr"));  // sources are not file references
    EXPECT_FALSE(file.addFile("x.mm"));
    EXPECT_TRUE(file.addFile("with blank.png"));
    EXPECT_TRUE(file.removeFile("x.mm"));
    EXPECT_FALSE(file.removeFile("x.mm"));
    EXPECT_EQ(file.text(), "// header\nname Demo\nsource a.klvr\ncustom setting = 1\nfile y.h\nfile with blank.png\n");
    EXPECT_EQ(klvr::ProjectFile::parse(file.text()).text(), file.text());
    EXPECT_TRUE(klvr::ProjectFile::parse("").files().empty());
}

}  // namespace
