// The parser's per-file stores and its guard, with real files in a temporary folder.
#include "insight/parser.h"
#include "support/test_environment.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>

TEST(ParserStores, NeverScannedGivesNothingAndAScanFillsEveryStore) {
    QTemporaryDir dir;
    parser p;
    const QString path = writeFile(dir.filePath("Foo.NSObject.klvr"), "Class\nSub A(x As T)\n Dim y As U\nEnd Sub\nDim z\n");
    EXPECT_EQ(p.GetAll(path), nullptr);
    EXPECT_EQ(p.GetLineSeparators(path), nullptr);
    EXPECT_EQ(p.GetLocalList(path), nullptr);

    p.ParseFile(path);
    ASSERT_NE(p.GetAll(path), nullptr);
    EXPECT_EQ(p.GetAll(path)->rows[0].title, "All (2)");
    EXPECT_EQ(p.GetSub(path)->entry(0).name, "A");
    EXPECT_EQ(p.GetDim(path)->entry(0).name, "z");
    EXPECT_EQ(p.GetFunction(path)->rows[0].title, "Function (0)");
    for (auto get : {&parser::GetAction, &parser::GetConst, &parser::GetEvent, &parser::GetDelegate,
                     &parser::GetIBOutlet, &parser::GetIBAction})
        EXPECT_EQ((p.*get)(path)->entryCount(), 0);
    EXPECT_EQ(*p.GetLineSeparators(path), QList<qint64>{5});
    EXPECT_EQ(*p.GetLineSeparatorsType(path), QStringList{"A"});
    EXPECT_EQ(*p.GetLocalList(path), (QHash<QString, QString>{{"A.x", "T"}, {"A.y", "U"}}));
    // Stores are keyed by the path exactly as given.
    EXPECT_EQ(p.GetAll(dir.path() + "/./Foo.NSObject.klvr"), nullptr);
    EXPECT_FALSE(p.isLocked(path));
    // The shared instance is one object.
    parser* shared = parser::sharedparser();
    ASSERT_NE(shared, nullptr);
    EXPECT_EQ(parser::sharedparser(), shared);
    EXPECT_EQ(KLVR__PARSER(shared), shared);
    EXPECT_EQ(KLVR__PARSER(nullptr), nullptr);
}

TEST(ParserStores, RescanReplacesAndOldListsStayWholeForTheirHolders) {
    QTemporaryDir dir;
    parser p;
    const QString path = writeFile(dir.filePath("A.NSObject.klvr"), "\nSub One()\nSub Two()\n");
    p.ParseFile(path);
    const parser::List before = p.GetSub(path);
    writeFile(dir.filePath("A.NSObject.klvr"), "\nFunction Three() As X\n");
    p.ParseFile(path);
    EXPECT_EQ(before->rows[0].title, "Sub (2)"); // a reader keeps what it got
    EXPECT_EQ(p.GetSub(path)->entryCount(), 0);
    EXPECT_EQ(p.GetFunction(path)->entry(0).type, "X");
    EXPECT_EQ(*p.GetLineSeparatorsType(path), QStringList{"Three"});
}

TEST(ParserStores, UnreadableFileAndEmptyPath) {
    QTemporaryDir dir;
    parser p;
    const QString missing = dir.filePath("Gone.NSObject.klvr");
    p.ParseFile(missing);
    ASSERT_NE(p.GetAll(missing), nullptr); // scanned as empty text
    EXPECT_EQ(p.GetAll(missing)->rows[0].title, "All (0)");
    EXPECT_TRUE(p.GetLocalList(missing)->isEmpty());
    EXPECT_FALSE(p.isLocked(missing));

    p.ParseFile(dir.path()); // a folder reads as nothing, too
    EXPECT_EQ(p.GetSub(dir.path())->entryCount(), 0);

    p.ParseFile(QString());
    EXPECT_EQ(p.GetAll(QString()), nullptr);
}

TEST(ParserStores, SecondRequestWhileAScanIsUnderWayReturnsAtOnce) {
    // A named pipe holds the first scan inside its read until the test writes the text.
    QTemporaryDir dir;
    const QString path = dir.filePath("Slow.NSObject.klvr");
    ASSERT_EQ(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    parser p;
    std::thread first([&] { p.ParseFile(path); });
    while (!p.isLocked(path))
        std::this_thread::yield();

    p.ParseFile(path); // must not block on the pipe
    EXPECT_TRUE(p.isLocked(path));
    EXPECT_EQ(p.GetAll(path), nullptr);

    QFile pipe(path);
    ASSERT_TRUE(pipe.open(QIODevice::WriteOnly));
    pipe.write("\nSub Late()\n");
    pipe.close();
    first.join();
    EXPECT_FALSE(p.isLocked(path));
    ASSERT_NE(p.GetSub(path), nullptr);
    EXPECT_EQ(p.GetSub(path)->entry(0).name, "Late");
}
