// `kelvaro --screenshot FILE PROJECT`: the real executable, with neither a display nor a
// platform chosen, opens the project and writes a picture of the main window.
#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>
#include <QSet>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct ShotRun {
    int status = -1;
    QByteArray err;
};

ShotRun screenshot(const QString& home, const QStringList& args) {
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        env.remove(name);
    env.insert("HOME", home);
    process.setProcessEnvironment(env);
    process.start(KELVARO_APP_DIR "/Contents/MacOS/kelvaro", QStringList{"--screenshot"} + args);
    EXPECT_TRUE(process.waitForFinished(120000));
    return {process.exitCode(), process.readAllStandardError()};
}

bool copyFolder(const QString& from, const QString& to) {
    QDir().mkpath(to);
    for (const QString& name : QDir(from).entryList(QDir::Files))
        if (!QFile::copy(from + "/" + name, to + "/" + name))
            return false;
    return true;
}

} // namespace

TEST(Screenshot, PictureOfTheOpenedProjectIsWrittenAndAnUnwritableOneIsReported) {
    QTemporaryDir home;
    QTemporaryDir work;
    const QString project = work.filePath("My Hello");
    ASSERT_TRUE(copyFolder(KELVARO_SOURCE_DIR "/resources/Examples/Hello", project));
    const ShotRun unwritable = screenshot(home.path(), {work.filePath("no such folder/shot.png"), project});
    EXPECT_EQ(unwritable.status, 1);
    EXPECT_TRUE(unwritable.err.contains("could not write")) << unwritable.err.toStdString();

    const QString picture = work.filePath("shot \"1\".png");
    const ShotRun run = screenshot(home.path(), {picture, project});
    ASSERT_EQ(run.status, 0) << run.err.toStdString();
    const QImage image(picture);
    ASSERT_FALSE(image.isNull());
    EXPECT_GE(image.width(), 400);
    EXPECT_GE(image.height(), 300);
    // A real window: toolbar icons and coloured code give many colours, a blank one few.
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); y += 3)
        for (int x = 0; x < image.width(); x += 3)
            colours.insert(image.pixel(x, y));
    EXPECT_GT(colours.size(), 50);
    // The project was opened, not only shown: it is remembered as the last project.
    QFile last(home.filePath("Library/Kelvaro/LastProject.txt"));
    ASSERT_TRUE(last.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromUtf8(last.readAll()).trimmed(), project);
}
