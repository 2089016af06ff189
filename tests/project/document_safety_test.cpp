// Nothing the user typed is lost or overwritten: saves of every modified document,
// changes on disk, read-only files, the file's form and encoding, ordered saves,
// failures off the main thread, the project icon, closing, and the recovery journal.
#include "project/recovery_journal.h"
#include "support/ide_fixture.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QKeyEvent>
#include <QLabel>
#include <QTest>
#include <QThread>

#include <thread>

namespace {

// Waits until everything queued on the view's writer so far is done.
void drainWriter(KLTextView* view) {
    auto done = std::make_shared<std::promise<void>>();
    auto finished = done->get_future();
    view->queueOnWriter([done] { done->set_value(); });
    finished.wait();
    QCoreApplication::sendPostedEvents();
}

void typeKeys(KLTextView* view, const QString& text) {
    for (QChar c : text) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QString(c));
        QCoreApplication::sendEvent(view, &press);
    }
}

void typeAtEnd(KLTextView* view, const QString& text) {
    view->SendScintilla(QsciScintilla::SCI_DOCUMENTEND);
    view->insertAt(text, int(view->lines()) - 1, int(view->text(int(view->lines()) - 1).size()));
}

} // namespace

class DocumentSafety : public IdeFixture {
protected:
    Global& openProject(const QList<std::pair<QString, QByteArray>>& more = {}) {
        Global& g = start();
        QList<std::pair<QString, QByteArray>> files{{"Global.NSObject.klvr", "\nSub G()\nEnd Sub\n"},
                                                    {"b.NSObject.klvr", "\nSub B()\nEnd Sub\n"}};
        files += more;
        project = makeProject("Safe", files);
        g.ProjectOpen(project);
        return g;
    }
    QString file(const QString& name) const { return project + "/" + name; }
    // The one-second pause after typing, and the writes it starts.
    void pause(Global& g) {
        g.tTextDidChangeFired();
        // Twice: a finished save queues the removal of its recovery copy.
        for (int i = 0; i < 2; ++i)
            for (KLTextView* view : g.documentViews())
                drainWriter(view);
    }
    QString project;
};

// ---------------------------------------------------------------- saving

TEST_F(DocumentSafety, EveryModifiedDocumentIsSavedBeforeAPauseCloseSwitchOrQuitAndNoOtherIsWritten) {
    Global& g = openProject({{"c.NSObject.klvr", "\nSub C()\nEnd Sub\n"}});
    const QDateTime untouched = QFileInfo(file("c.NSObject.klvr")).lastModified();
    g.ProjectOpenCode("c.NSObject.klvr"); // opened, never edited
    g.ProjectOpenCode("b.NSObject.klvr");
    typeAtEnd(g.mytextview(), "' in b");
    // Switching within the second: the pause fires while another document is shown.
    g.ProjectOpenCode("Global.NSObject.klvr");
    typeAtEnd(g.mytextview(), "' in Global");
    pause(g);
    EXPECT_TRUE(readFile(file("b.NSObject.klvr")).endsWith("' in b"));
    EXPECT_TRUE(readFile(file("Global.NSObject.klvr")).endsWith("' in Global"));
    EXPECT_EQ(QFileInfo(file("c.NSObject.klvr")).lastModified(), untouched) << "an unmodified file is never written";

    // Closing a document saves it first.
    g.ProjectOpenCode("b.NSObject.klvr");
    typeAtEnd(g.mytextview(), "' closed");
    g.ProjectCloseCode(file("b.NSObject.klvr"));
    EXPECT_TRUE(readFile(file("b.NSObject.klvr")).endsWith("' in b' closed"));

    // Opening another project saves first, without any pause.
    g.ProjectOpenCode("Global.NSObject.klvr");
    typeAtEnd(g.mytextview(), "' last");
    const QString other = makeProject("Other", {{"Global.NSObject.klvr", "\n"}});
    g.ProjectOpen(other);
    EXPECT_TRUE(readFile(file("Global.NSObject.klvr")).endsWith("' in Global' last"));
    EXPECT_EQ(g.ProjectPath, other);

    // So does closing the window.
    typeAtEnd(g.mytextview(), "' quit");
    g.mymainwindow->close();
    EXPECT_TRUE(readFile(other + "/Global.NSObject.klvr").endsWith("' quit"));
    EXPECT_TRUE(RecoveryJournal::entries().isEmpty()) << "nothing unsaved is left in the journal";
}

TEST_F(DocumentSafety, AFailedSaveKeepsTheTextSaysWhyOnceAndKeepsTheDocumentOpen) {
    Global& g = openProject();
    g.ProjectOpenCode("b.NSObject.klvr");
    KLTextView* b = g.mytextview();
    typeAtEnd(b, "' kept");
    // Made read-only after it was opened (a privileged user is refused too).
    QFile::setPermissions(file("b.NSObject.klvr"), QFileDevice::ReadOwner);
    pause(g);
    typeAtEnd(b, "!");
    pause(g);
    const auto messages = testPanels().messages();
    ASSERT_EQ(messages.size(), 1u) << "told in a message box the first time only";
    EXPECT_EQ(messages[0].title, "Could not save " + file("b.NSObject.klvr"));
    EXPECT_TRUE(g.mycode->statusbar->text().contains("Could not save b.NSObject.klvr: "));
    EXPECT_TRUE(b->isModified());

    // Closing it asks; Cancel keeps it open with its text.
    testPanels().queueAnswer("Cancel");
    g.ProjectCloseCode(file("b.NSObject.klvr"));
    EXPECT_EQ(g.documentView(file("b.NSObject.klvr")), b);
    EXPECT_TRUE(b->text().endsWith("' kept!"));
    QFile::setPermissions(file("b.NSObject.klvr"), QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    pause(g);
    EXPECT_TRUE(readFile(file("b.NSObject.klvr")).endsWith("' kept!"));
}

TEST_F(DocumentSafety, SavesLandInTheOrderTheyWereMade) {
    Global& g = openProject();
    KLTextView* view = g.mytextview();
    const QString big(2'000'000, QLatin1Char('x'));
    for (int i = 0; i < 10; ++i) {
        view->setText(big + QString::number(i));
        view->saveInBackground(view->fileName());
    }
    view->setText("final\n");
    ASSERT_TRUE(view->save(view->fileName()));
    drainWriter(view);
    EXPECT_EQ(readFile(view->fileName()), QByteArray("final\n"));
    EXPECT_FALSE(view->isModified());
}

// ---------------------------------------------------------------- changes on disk

TEST_F(DocumentSafety, AnUnmodifiedDocumentReloadsQuietlyAtItsLine) {
    Global& g = openProject();
    g.ProjectOpenCode("b.NSObject.klvr");
    KLTextView* b = g.mytextview();
    b->gotoLine(3);
    writeFile(file("b.NSObject.klvr"), "\nSub B()\n  Print(2)\nEnd Sub\n' more\n");
    g.checkDocumentsOnDisk();
    EXPECT_TRUE(b->text().contains("Print(2)"));
    EXPECT_FALSE(b->isModified());
    EXPECT_EQ(b->line(), 3);
    EXPECT_TRUE(testPanels().shown().empty());
    b->undo(); // the earlier text is one Undo away
    EXPECT_FALSE(b->text().contains("Print(2)"));

    // The file watcher notices a change by itself.
    b->redo();
    b->setModified(false);
    writeFile(file("b.NSObject.klvr"), "' rewritten by a formatter\n");
    EXPECT_TRUE(QTest::qWaitFor([&] { return b->text() == "' rewritten by a formatter\n"; }, 5000));
}

TEST_F(DocumentSafety, AChangedOrDeletedFileAsksOnceAndKeepsBothVersionsReachable) {
    Global& g = openProject();
    g.ProjectOpenCode("b.NSObject.klvr");
    KLTextView* b = g.mytextview();
    typeAtEnd(b, "' mine");
    writeFile(file("b.NSObject.klvr"), "' theirs\n");
    pause(g); // the save finds the change and asks; the question is dismissed
    typeAtEnd(b, " and more");
    pause(g);
    EXPECT_EQ(testPanels().questions().size(), 1u) << "asked once for one change";
    EXPECT_EQ(readFile(file("b.NSObject.klvr")), QByteArray("' theirs\n")) << "never overwritten unasked";

    // Compare shows both texts, then Keep Mine saves mine and keeps theirs beside it.
    testPanels().queueAnswer("Compare");
    testPanels().queueAnswer("Keep Mine");
    g.performUserSave();
    const auto messages = testPanels().messages();
    ASSERT_FALSE(messages.empty());
    EXPECT_TRUE(messages.back().text.contains("- ' theirs"));
    EXPECT_TRUE(messages.back().text.contains("+ ' mine and more"));
    EXPECT_TRUE(readFile(file("b.NSObject.klvr")).endsWith("' mine and more"));
    EXPECT_EQ(readFile(file("b.NSObject.klvr.trash")), QByteArray("' theirs\n"));

    // Take Disk's shows the other program's text; Undo brings mine back.
    typeAtEnd(b, "!");
    writeFile(file("b.NSObject.klvr"), "' third\n");
    testPanels().queueAnswer("Take Disk's");
    g.checkDocumentsOnDisk();
    EXPECT_EQ(b->text(), "' third\n");
    b->undo();
    EXPECT_TRUE(b->text().endsWith("' mine and more!"));

    // A file deleted on disk is never recreated unasked.
    const size_t asked = testPanels().questions().size();
    QFile::remove(file("b.NSObject.klvr"));
    pause(g); // asked; dismissed
    pause(g);
    EXPECT_FALSE(QFileInfo::exists(file("b.NSObject.klvr")));
    ASSERT_EQ(testPanels().questions().size(), asked + 1);
    EXPECT_TRUE(testPanels().questions().back().title.contains("was deleted by another program"));
    testPanels().queueAnswer("Save Again");
    g.performUserSave();
    EXPECT_TRUE(readFile(file("b.NSObject.klvr")).endsWith("' mine and more!"));
}

// ---------------------------------------------------------------- form of the file

TEST_F(DocumentSafety, EachFileKeepsItsFormReadOnlyLineEndsByteOrderMarkAndEncoding) {
    const QByteArray latin("' caf\xe9 \x80 na\xefve\n\x81\x8d\xff\n", 20);
    Global& g = openProject({{"r.NSObject.klvr", "\nSub R()\nEnd Sub\n"},
                             {"w.NSObject.klvr", "\xef\xbb\xbf' top\r\nSub W()\r\nEnd Sub\r\n"},
                             {"l.NSObject.klvr", latin}});
    // A read-only file says so and refuses typing.
    QFile::setPermissions(file("r.NSObject.klvr"), QFileDevice::ReadOwner);
    g.ProjectOpenCode("r.NSObject.klvr");
    KLTextView* r = g.mytextview();
    EXPECT_TRUE(r->isReadOnly());
    EXPECT_TRUE(g.mycode->documentInfo->text().contains("Read-only"));
    typeKeys(r, "xy");
    EXPECT_EQ(r->text(), "\nSub R()\nEnd Sub\n");
    ASSERT_EQ(testPanels().messages().size(), 1u);
    EXPECT_EQ(testPanels().messages()[0].title, "\u201cr.NSObject.klvr\u201d is read-only.");
    EXPECT_TRUE(g.mycode->statusbar->text().contains("read-only"));
    g.pubEventChosen("  Event Init()");
    EXPECT_EQ(r->text(), "\nSub R()\nEnd Sub\n");

    // Insertions keep the line ends, the byte order mark and the undo history.
    g.ProjectOpenCode("w.NSObject.klvr");
    KLTextView* w = g.mytextview();
    EXPECT_EQ(g.mycode->documentInfo->text(), "UTF-8 with BOM \u00b7 CRLF");
    typeKeys(w, "x"); // at the start of the file, where the cursor opens
    g.pubEventChosen("  Event Init()");
    const QByteArray bytes = w->documentBytes();
    EXPECT_TRUE(bytes.startsWith("\xef\xbb\xbfx' top\r\n"));
    EXPECT_TRUE(bytes.endsWith("\r\n\r\nEvent Init()\r\n  \r\nEnd Event\r\n"));
    EXPECT_EQ(bytes.count("\n"), bytes.count("\r\n")) << "no bare line feed";
    EXPECT_EQ(w->selectedText(), "\nEvent Init()"); // found and selected as it is searched
    w->undo(); // the event, in one step
    EXPECT_EQ(w->documentBytes(), QByteArray("\xef\xbb\xbfx' top\r\nSub W()\r\nEnd Sub\r\n"));
    w->undo(); // the typing before it is still there
    EXPECT_EQ(w->documentBytes(), QByteArray("\xef\xbb\xbf' top\r\nSub W()\r\nEnd Sub\r\n"));

    // A Windows-1252 file is shown and saved in its encoding.
    g.ProjectOpenCode("l.NSObject.klvr");
    KLTextView* l = g.mytextview();
    EXPECT_TRUE(l->text().startsWith(QString::fromUtf8("' café € naïve\n")));
    EXPECT_EQ(g.mycode->documentInfo->text(), "Windows-1252 \u00b7 LF");
    typeKeys(l, QString::fromUtf8("é\u2192"));
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(l->text().left(3), QString::fromUtf8("é' "));
    ASSERT_EQ(testPanels().questions().size(), 1u);
    EXPECT_EQ(testPanels().questions()[0].title, QString::fromUtf8("\u2192 cannot be written in Windows-1252."));
    ASSERT_TRUE(g.mycode->Save(l->fileName()));
    EXPECT_EQ(readFile(l->fileName()), "\xe9" + latin) << "one encoding, every other byte as it was";

    // Converting is the user's choice; the file is UTF-8 from then on.
    testPanels().queueAnswer("Convert to UTF-8");
    typeKeys(l, QString::fromUtf8("\u2192"));
    QCoreApplication::sendPostedEvents();
    typeKeys(l, QString::fromUtf8("\u2192"));
    ASSERT_TRUE(g.mycode->Save(l->fileName()));
    EXPECT_TRUE(readFile(l->fileName()).startsWith(QString::fromUtf8("é\u2192' café € naïve").toUtf8()));
}

// ---------------------------------------------------------------- the rest

TEST_F(DocumentSafety, AFailureOnAnotherThreadIsReportedOnTheMainThread) {
    start();
    QThread thread;
    QObject worker;
    worker.moveToThread(&thread);
    thread.start();
    QMetaObject::invokeMethod(&worker, [] { throw KLException("NSGenericException", "from a reading thread"); });
    ASSERT_TRUE(QTest::qWaitFor([] { return !testPanels().messages().empty(); }, 5000));
    thread.quit();
    thread.wait();
    EXPECT_TRUE(testPanels().messages()[0].onMainThread);
    EXPECT_TRUE(testPanels().messages()[0].text.startsWith("from a reading thread"));
}

// ---------------------------------------------------------------- recovery journal

TEST_F(DocumentSafety, TheJournalHoldsExactlyWhatIsUnsavedAndIsOfferedBack) {
    Global& g = openProject();
    g.ProjectOpenCode("b.NSObject.klvr");
    KLTextView* b = g.mytextview();
    typeAtEnd(b, "' unsaved");
    g.recoveryJournal()->writePass(g.documentViews());
    drainWriter(b);
    auto entries = RecoveryJournal::entries();
    ASSERT_EQ(entries.size(), 1);
    EXPECT_EQ(entries[0].path, file("b.NSObject.klvr"));
    EXPECT_TRUE(entries[0].bytes.endsWith("' unsaved"));
    pause(g); // saved: the copy goes
    EXPECT_TRUE(RecoveryJournal::entries().isEmpty());

    // A run that stops without saving leaves its copy; the next start offers it.
    typeAtEnd(b, " again");
    g.recoveryJournal()->writePass(g.documentViews());
    drainWriter(b);
    b->setModified(false); // as if the process had died: nothing saves it now
    global.reset();
    ASSERT_EQ(RecoveryJournal::entries().size(), 1);
    testPanels().queueAnswer("Restore");
    Global& again = start();
    ASSERT_EQ(testPanels().questions().size(), 1u);
    EXPECT_TRUE(testPanels().questions()[0].text.contains(file("b.NSObject.klvr")));
    EXPECT_TRUE(readFile(file("b.NSObject.klvr")).endsWith("' unsaved again"));
    EXPECT_EQ(again.ProjectCurrentFilename(), file("b.NSObject.klvr"));
    drainWriter(again.mytextview());
    drainWriter(again.mytextview());
    EXPECT_TRUE(RecoveryJournal::entries().isEmpty()) << "restoring removes the copy";
}
