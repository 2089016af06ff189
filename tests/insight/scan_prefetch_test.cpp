// Scans prefetched at start-up are used only for files that did not change since they
// were read; the rest is scanned as usual. Lists made later, on first request, from
// several threads at once, are the lists of an immediate scan.
#include "insight/parser.h"
#include "insight/scan_prefetch.h"
#include "insight/declaration_scanner.h"
#include "scanner_random_source.h"
#include "scanner_reference.h"
#include "support/test_environment.h"

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <thread>

namespace {

// A folder of `count` generated sources; the paths as the opening names them.
QStringList makeFolder(const QTemporaryDir& dir, int count) {
    QStringList paths;
    for (int i = 0; i < count; ++i)
        paths << writeFile(dir.path() + QString("/C%1.NSObject.klvr").arg(i), randomKelvaroSource(quint32(i + 1), 80).toUtf8());
    return paths;
}

QString storedDifference(parser& p, const QString& path, const QString& text) {
    const DeclarationLists expected = scanDeclarations(text);
    if (!p.GetAll(path))
        return "not stored";
    DeclarationLists stored;
    stored.all = *p.GetAll(path);
    for (DeclarationKind kind : allDeclarationKinds())
        stored.kinds[int(kind)] = *p.GetList(kind, path);
    stored.lineSeparators = *p.GetLineSeparators(path);
    stored.lineSeparatorsType = *p.GetLineSeparatorsType(path);
    stored.locals = *p.GetLocalList(path);
    return firstDifference(expected, stored);
}

} // namespace

TEST(ScanPrefetch, UnchangedFilesAreTakenChangedOnesScannedAgain) {
    QTemporaryDir dir;
    const QStringList paths = makeFolder(dir, 60);
    scan_prefetch::start(dir.path());
    scan_prefetch::waitForAll();

    // After the prefetch read them: one file gets new text, one disappears, one keeps its
    // size but gets a new time.
    writeFile(paths[3], "\nSub Changed(a As Integer)\n");
    QFile::remove(paths[4]);
    {
        QFile same(paths[5]);
        ASSERT_TRUE(same.open(QIODevice::ReadWrite));
        ASSERT_TRUE(same.setFileTime(QDateTime::currentDateTime().addSecs(-3600), QFileDevice::FileModificationTime));
    }

    const int takenBefore = scan_prefetch::takenCount();
    parser p;
    p.ParseFiles(paths);
    scan_prefetch::finish();
    EXPECT_EQ(scan_prefetch::takenCount() - takenBefore, 57);
    for (const QString& path : paths)
        EXPECT_EQ(storedDifference(p, path, QString::fromUtf8(readFile(path))), "") << path.toStdString();
    EXPECT_EQ(p.GetSub(paths[3])->entry(0).name, "Changed");
    EXPECT_EQ(p.GetAll(paths[4])->entryCount(), 0); // gone: scans as empty text
}

TEST(ScanPrefetch, OtherFoldersAndFinishedPrefetchesAreScannedAsUsual) {
    QTemporaryDir dir;
    QTemporaryDir other;
    const QStringList paths = makeFolder(dir, 5);
    const QStringList elsewhere = makeFolder(other, 5);
    scan_prefetch::start(dir.path());
    scan_prefetch::waitForAll();
    // The same files named another way are not the prefetched paths.
    QStringList spelled;
    for (const QString& path : paths)
        spelled << dir.path() + "/./" + path.section('/', -1);

    const int takenBefore = scan_prefetch::takenCount();
    parser p;
    p.ParseFiles(elsewhere + spelled);
    EXPECT_EQ(scan_prefetch::takenCount(), takenBefore);
    scan_prefetch::finish();
    p.ParseFiles(paths);
    EXPECT_EQ(scan_prefetch::takenCount(), takenBefore);
    for (const QString& path : elsewhere + spelled + paths)
        EXPECT_EQ(storedDifference(p, path, QString::fromUtf8(readFile(path))), "") << path.toStdString();
}

TEST(ScanPrefetch, FinishWhileFilesAreBeingScannedStopsPromptly) {
    QTemporaryDir dir;
    QByteArray big;
    for (quint32 start = 1; big.size() < (1 << 20); ++start)
        big += randomKelvaroSource(start, 200).toUtf8() + '\n';
    QStringList paths;
    for (int i = 0; i < 40; ++i)
        paths << writeFile(dir.path() + QString("/B%1.NSObject.klvr").arg(i), big);
    for (int round = 0; round < 3; ++round) {
        scan_prefetch::start(dir.path());
        parser p;
        p.ParseFiles(paths.mid(0, 2)); // takes or scans a few while the rest runs
        scan_prefetch::finish();
        EXPECT_EQ(p.GetAll(paths[1])->entryCount(), scanDeclarations(QString::fromUtf8(big)).all.entryCount());
    }
    scan_prefetch::start(dir.path() + "/missing folder");
    scan_prefetch::waitForAll();
    EXPECT_EQ(scan_prefetch::take(paths[0]), nullptr);
    scan_prefetch::finish();
}

TEST(FileScanLists, MadeOnceOnFirstRequestFromManyThreadsAtOnce) {
    for (quint32 start = 1; start <= 50; ++start) {
        const QString text = randomKelvaroSource(start, 80);
        const FileScan scan(text.toUtf8());
        std::vector<const DeclarationLists*> seen(4);
        std::vector<std::thread> readers;
        for (size_t t = 0; t < seen.size(); ++t)
            readers.emplace_back([&, t] { seen[t] = &scan.lists(); });
        for (std::thread& reader : readers)
            reader.join();
        for (const DeclarationLists* lists : seen)
            ASSERT_EQ(lists, seen[0]);
        ASSERT_EQ(firstDifference(referenceScan(text), *seen[0]), "") << start;
    }
}
