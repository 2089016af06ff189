// Scans of different files and repeated scans of one file run at once while the main
// thread reads every accessor; every list read must be whole. Runs clean under
// ThreadSanitizer (-DKELVARO_TSAN=ON). Plain std::thread, no signals, so the hot path
// stays in instrumented code.
#include "insight/parser.h"

#include <QSaveFile>
#include <QTemporaryDir>
#include <QSet>
#include <algorithm>
#include <atomic>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

namespace {

// Version `v` of a file: v Subs named S<v>_<i> and v Dims, so a list that mixed two
// scans would show two versions or a wrong count.
QByteArray versionText(int v) {
    QByteArray text = "Class\n";
    for (int i = 0; i < v; ++i)
        text += "Sub S" + QByteArray::number(v) + "_" + QByteArray::number(i) + "(a As T)\n Dim x" +
                QByteArray::number(v) + " As U\nEnd Sub\nDim d" + QByteArray::number(v) + "_" +
                QByteArray::number(i) + "\n";
    return text;
}

void writeAtomically(const QString& path, const QByteArray& bytes) {
    QSaveFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    ASSERT_TRUE(file.commit());
}

// "" when the list is whole: heading count equals entries, and all entries come from
// one version of the file.
QString wholeness(const DeclarationList& list, const QString& word) {
    if (list.rows.size() < 2 || list.rows[0].title != QString("%1 (%2)").arg(word).arg(list.entryCount()))
        return "heading does not match the entries";
    QString version;
    for (qsizetype i = 0; i < list.entryCount(); ++i) {
        const QString name = list.entry(i).name;
        const QString v = name.mid(1, name.indexOf('_') - 1);
        if (version.isEmpty())
            version = v;
        else if (v != version)
            return "entries of two scans: " + version + " and " + v;
    }
    return {};
}

// How many file versions the names ("S<v>_<i>...") come from.
int versionsIn(const QStringList& names) {
    QSet<QString> versions;
    for (const QString& name : names)
        versions.insert(name.mid(1, name.indexOf('_') - 1));
    return int(versions.size());
}

} // namespace

TEST(ParserConcurrency, ReadersAlwaysGetWholeListsWhileScansRun) {
    QTemporaryDir dir;
    parser p;
    constexpr int writers = 3;
    constexpr int rounds = 150;
    QStringList paths;
    for (int w = 0; w < writers; ++w) {
        paths << dir.filePath(QString("File%1.NSObject.klvr").arg(w));
        writeAtomically(paths.last(), versionText(1));
    }
    const QString sharedPath = paths.first();

    std::atomic<int> running{writers + 1};
    std::vector<std::thread> threads;
    for (int w = 0; w < writers; ++w) {
        threads.emplace_back([&, w] {
            for (int r = 0; r < rounds; ++r) {
                writeAtomically(paths[w], versionText(1 + (r * 7 + w) % 9));
                p.ParseFile(paths[w]);
                p.ParseFile(sharedPath); // several threads on one path: the guard decides
            }
            --running;
        });
    }
    threads.emplace_back([&] { // one more thread only hammering the shared path
        for (int r = 0; r < rounds * 2; ++r)
            p.ParseFile(sharedPath);
        --running;
    });

    int reads = 0;
    while (running > 0 || reads == 0) {
        for (const QString& path : paths) {
            if (const auto all = p.GetAll(path)) {
                ASSERT_EQ(wholeness(*all, "All"), "") << path.toStdString();
                ++reads;
            }
            if (const auto subs = p.GetSub(path)) {
                ASSERT_EQ(wholeness(*subs, "Sub"), "");
                ASSERT_EQ(wholeness(*p.GetDim(path), "Dim"), "");
            }
            if (const auto separators = p.GetLineSeparators(path)) {
                ASSERT_TRUE(std::is_sorted(separators->begin(), separators->end()));
            }
            if (const auto names = p.GetLineSeparatorsType(path)) {
                ASSERT_LE(versionsIn(*names), 1);
            }
            if (const auto locals = p.GetLocalList(path)) {
                ASSERT_LE(versionsIn(locals->keys()), 1);
            }
        }
    }
    for (std::thread& t : threads)
        t.join();

    for (const QString& path : paths) {
        EXPECT_FALSE(p.isLocked(path));
        ASSERT_NE(p.GetAll(path), nullptr);
        EXPECT_EQ(p.GetSub(path)->entryCount(), p.GetLineSeparators(path)->size());
    }
    EXPECT_GT(reads, 0);
}
