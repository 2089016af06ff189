// The real IDE is started on a project, types through its test hook and is killed
// (SIGKILL) at random moments, again and again. After every kill the file on disk is
// a whole version of the text (never cut short, never two texts mixed), and the next
// start offers back at least everything the recovery journal had reported written.
#include <QCryptographicHash>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "support/test_environment.h"

namespace {

const QString kIde = QStringLiteral(KELVARO_APP_DIR "/Contents/MacOS/kelvaro");

// One IDE being killed over and over, in a home folder and project of its own.
struct Chain {
    QTemporaryDir home;
    QString project;
    QString file;
    QByteArray target; // the text the hook types, from the file's original text on
    qint64 originalSize = 0;
    qint64 journaled = 0; // the largest copy the journal reported written
    std::unique_ptr<QProcess> ide;
    QByteArray pending; // output not yet read as whole lines
    int offers = 0;     // starts that began with more than the original text

    explicit Chain(int n) {
        project = home.filePath(QStringLiteral("Typed %1").arg(n)); // a blank in the path
        QDir().mkpath(project);
        file = project + QStringLiteral("/Global.NSObject.klvr");
        const QByteArray original = "\nEvent AwakeFromNib()\nEnd Event\n";
        QByteArray typed;
        for (int i = 0; typed.size() < 40000; ++i)
            typed += "' line " + QByteArray::number(i) + " of what was typed\n";
        target = original + typed;
        originalSize = original.size();
        writeFile(file, original);
        writeFile(home.filePath("typing.txt"), target);
    }

    void start() {
        ide = std::make_unique<QProcess>();
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("HOME", home.path());
        env.insert("QT_QPA_PLATFORM", "offscreen");
        env.insert("KELVARO_TEST_TYPE", home.filePath("typing.txt"));
        env.insert("KELVARO_TEST_TYPE_TIMING", "4,25,1050");
        ide->setProcessEnvironment(env);
        ide->setProcessChannelMode(QProcess::SeparateChannels);
        ide->setStandardErrorFile(home.filePath("stderr.txt"));
        ide->start(kIde, {project});
    }

    // Reads what the IDE printed; returns the size of a "document" report, or -1.
    qint64 read(int waitMs) {
        ide->waitForReadyRead(waitMs);
        pending += ide->readAllStandardOutput();
        qint64 document = -1;
        qsizetype end;
        while ((end = pending.indexOf('\n')) >= 0) {
            const QList<QByteArray> words = pending.left(end).split(' ');
            pending.remove(0, end + 1);
            if (words[0] == "journaled" && words.size() == 2) {
                journaled = std::max(journaled, words[1].toLongLong());
            } else if (words[0] == "document" && words.size() == 3) {
                document = words[1].toLongLong();
                const QByteArray sha = QCryptographicHash::hash(target.left(document), QCryptographicHash::Sha1).toHex();
                EXPECT_EQ(words[2], sha) << "the document at start-up is a beginning of what was typed";
            } else if (words[0] == "mismatch") {
                ADD_FAILURE() << "the document at start-up is not a beginning of what was typed";
            }
        }
        return document;
    }

    void kill() {
        ide->kill();
        ide->waitForFinished(5000);
        read(0);
    }
};

} // namespace

TEST(KillRecovery, EveryJournaledKeystrokeIsOfferedBackAndNoFileIsEverTorn) {
    constexpr int kKills = 200; // in two chains side by side
    const quint32 randomStart = QRandomGenerator::global()->generate();
    QRandomGenerator random(randomStart);
    SCOPED_TRACE("random start " + std::to_string(randomStart));
    std::vector<std::unique_ptr<Chain>> chains;
    for (int n = 0; n < 2; ++n)
        chains.push_back(std::make_unique<Chain>(n));

    for (int round = 0; round < kKills / 2; ++round) {
        for (auto& chain : chains) {
            const qint64 journaledBefore = chain->journaled;
            chain->start();
            qint64 document = -1;
            QElapsedTimer started;
            started.start();
            // A start on a busy machine (a parallel build) can take many seconds.
            while (document < 0 && started.elapsed() < 120000 && chain->ide->state() != QProcess::NotRunning)
                document = chain->read(100);
            ASSERT_GE(document, 0) << "round " << round << ": the IDE did not start in "
                                   << started.elapsed() << " ms; it wrote:\n"
                                   << readFile(chain->home.filePath("stderr.txt")).right(2000).toStdString();
            EXPECT_GE(document, journaledBefore) << "round " << round << ": a journaled keystroke was not offered back";
            chain->offers += document > chain->originalSize;
        }
        // Both type; each is killed at its own random moment within one and a half seconds.
        QElapsedTimer typing;
        typing.start();
        std::vector<qint64> killAt;
        for (size_t i = 0; i < chains.size(); ++i)
            killAt.push_back(random.bounded(1500));
        for (size_t killed = 0; killed < chains.size();) {
            killed = 0;
            for (size_t i = 0; i < chains.size(); ++i) {
                if (chains[i]->ide->state() == QProcess::NotRunning) {
                    ++killed;
                    continue;
                }
                if (typing.elapsed() >= killAt[i])
                    chains[i]->kill();
                else
                    chains[i]->read(5);
            }
        }
        for (auto& chain : chains) {
            const QByteArray onDisk = readFile(chain->file);
            ASSERT_TRUE(chain->target.startsWith(onDisk) && onDisk.size() >= chain->originalSize)
                << "round " << round << ": the file is torn or mixed (" << onDisk.size() << " bytes)";
        }
    }
    for (auto& chain : chains) {
        EXPECT_GT(chain->journaled, chain->originalSize) << "the journal wrote copies";
        EXPECT_GT(chain->offers, 10) << "starts found typed text to go on from";
    }
}
