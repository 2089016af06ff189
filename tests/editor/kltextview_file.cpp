// Loading and saving: the bytes of a file survive open, edit elsewhere, save; saves
// are atomic; a failed save keeps the text and its modified state.
#include "editor_test_texts.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

QByteArray readAll(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<unreadable>");
}

void writeAll(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
}

// Inserts text at the end of the last line; the caret stays in front of it.
void typeAtEnd(KLTextView& view, const QString& text) {
    view.SendScintilla(QsciScintilla::SCI_DOCUMENTEND);
    view.insert(text);
}

} // namespace

TEST(KLTextViewFile, BytesSurviveOpenEditSave) {
    QTemporaryDir dir;
    struct Case {
        const char* name;
        QByteArray bytes;
    };
    const Case cases[] = {
        {"CRLF", QByteArray("Sub A()\r\n  x = 1\r\nEnd Sub\r\n")},
        {"LF without final break", QByteArray("Sub A()\n  x = 1\nEnd Sub")},
        {"not UTF-8", QByteArray("' caf\xe9 na\xefve\n\xff\xfe odd\nDim x\n")},
        {"NUL byte", QByteArray("a\0b\nDim y\n", 10)},
        {"UTF-8 with BOM", QByteArray("\xef\xbb\xbf' Größe\nDim z\n")},
    };
    for (const Case& c : cases) {
        const QString path = dir.filePath(QString::fromLatin1(c.name) + ".klvr");
        writeAll(path, c.bytes);
        KLTextView view;
        ASSERT_TRUE(view.load(path)) << c.name;
        EXPECT_EQ(view.fileName(), path);
        EXPECT_FALSE(view.isModified()) << c.name;
        EXPECT_EQ(view.documentBytes(), c.bytes) << c.name;

        // An edit on the last line, with a new line break in the file's own style.
        typeAtEnd(view, "'");
        view.SendScintilla(QsciScintilla::SCI_NEWLINE);
        EXPECT_TRUE(view.isModified());
        ASSERT_TRUE(view.save(path)) << c.name;
        EXPECT_FALSE(view.isModified());
        const QByteArray eol = view.usesCrlf() ? QByteArray("\r\n") : QByteArray("\n");
        EXPECT_EQ(readAll(path), c.bytes + eol + "'") << c.name;
    }
}

TEST(KLTextViewFile, LoadFailsForMissingFilesAndFolders) {
    QTemporaryDir dir;
    KLTextView view;
    view.setText("kept");
    EXPECT_FALSE(view.load(dir.filePath("missing.klvr")));
    EXPECT_FALSE(view.load(dir.path()));
    EXPECT_FALSE(view.load(QString()));
    EXPECT_EQ(view.text(), QStringLiteral("kept"));
    EXPECT_TRUE(view.fileName().isEmpty());
}

TEST(KLTextViewFile, FailedSaveKeepsTextAndModifiedState) {
    QTemporaryDir dir;
    const QString path = dir.filePath("Locked.NSObject.klvr");
    writeAll(path, "original\n");
    KLTextView view;
    ASSERT_TRUE(view.load(path));
    typeAtEnd(view, "more");
    QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::ReadUser);
    EXPECT_FALSE(view.save(path)) << "a read-only file is not replaced";
    EXPECT_TRUE(view.isModified());
    EXPECT_EQ(view.documentBytes(), QByteArray("original\nmore"));
    EXPECT_EQ(readAll(path), QByteArray("original\n"));

    EXPECT_FALSE(view.save(dir.filePath("no/such/folder/x.klvr")));
    EXPECT_FALSE(view.save(QString()));
    EXPECT_TRUE(view.isModified());
    // No temporary files are left behind by the failed attempts.
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{"Locked.NSObject.klvr"});
}

TEST(KLTextViewFile, BackgroundSavesWriteInOrderAndReport) {
    QTemporaryDir dir;
    const QString path = dir.filePath("Bg.NSObject.klvr");
    writeAll(path, "v0\n");
    KLTextView view;
    ASSERT_TRUE(view.load(path));
    std::vector<std::shared_future<bool>> saves;
    for (int i = 1; i <= 20; ++i) {
        view.setText(QStringLiteral("v%1\n").arg(i));
        saves.push_back(view.saveInBackground(path));
    }
    for (auto& s : saves)
        EXPECT_TRUE(s.get());
    EXPECT_EQ(readAll(path), QByteArray("v20\n")) << "the last text is what stays on disk";
    QCoreApplication::processEvents(); // the save point arrives on the interface thread
    EXPECT_FALSE(view.isModified());

    // A change after the snapshot keeps the text modified.
    view.setText("newer\n");
    auto pending = view.saveInBackground(path);
    view.insert("x");
    EXPECT_TRUE(pending.get());
    QCoreApplication::processEvents();
    EXPECT_TRUE(view.isModified());

    EXPECT_FALSE(view.saveInBackground(dir.filePath("missing/dir/f.klvr")).get());
}
