// Keeping the user's text: every modified document is saved before it could be lost,
// a failed save is told and retried, a file that another program changed or deleted is
// never overwritten or recreated behind the user's back, read-only files say so, and
// the recovery journal holds what is not saved yet.
#include "editor/code.h"
#include "editor/kltextview.h"
#include "frame/global.h"
#include "project/recovery_journal.h"
#include "project/trash_name.h"

#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QGuiApplication>
#include <QTimer>

namespace {

using document_file::WriteStatus;

QString quoted(const QString& path) { return QStringLiteral("\u201c") + KLVR_FILENAME(path) + QStringLiteral("\u201d"); }

// The lines in which two texts differ: what stands between their common first and
// last lines, at most `limit` lines of each (linear in the texts' length).
QString differences(const QString& disk, const QString& mine, int limit = 40) {
    const QStringList a = disk.split(QLatin1Char('\n'));
    const QStringList b = mine.split(QLatin1Char('\n'));
    qsizetype head = 0;
    while (head < a.size() && head < b.size() && a[head] == b[head])
        ++head;
    qsizetype tail = 0;
    while (tail < a.size() - head && tail < b.size() - head && a[a.size() - 1 - tail] == b[b.size() - 1 - tail])
        ++tail;
    auto block = [&](const QStringList& lines, const QString& title, QChar mark) {
        const qsizetype count = lines.size() - head - tail;
        QString out = title.arg(head + 1).arg(head + count) + QLatin1Char('\n');
        for (qsizetype i = 0; i < count && i < limit; ++i)
            out += mark + QLatin1Char(' ') + lines[head + i] + QLatin1Char('\n');
        if (count > limit)
            out += QStringLiteral("  (%1 more lines)\n").arg(count - limit);
        return out;
    };
    return block(a, QStringLiteral("On disk, lines %1 to %2:"), QLatin1Char('-')) + QLatin1Char('\n') +
           block(b, QStringLiteral("In Kelvaro, lines %1 to %2:"), QLatin1Char('+'));
}

} // namespace

QList<KLTextView*> Global::documentViews() const {
    QList<KLTextView*> views;
    for (qint64 i = 0; i < KLVR_NSDICTIONARY_COUNT(codes); ++i)
        if (auto* view = qobject_cast<KLTextView*>(KLVR_NSMUTABLEDICTIONARY_VALUE(codes, i).object()))
            views << view;
    return views;
}

RecoveryJournal* Global::recoveryJournal() {
    if (!journal_) {
        journal_ = new RecoveryJournal(this);
        connect(journal_, &RecoveryJournal::due, this, [this] { journal_->writePass(documentViews()); });
    }
    return journal_;
}

void Global::adoptDocument(KLTextView* view) {
    recoveryJournal()->watch(view);
    if (!documentWatcher_) {
        documentWatcher_ = new QFileSystemWatcher(this);
        // Changes arrive in bursts (a write, a rename): they are looked at together.
        connect(documentWatcher_, &QFileSystemWatcher::fileChanged, this, [this](const QString& path) {
            if (pendingDiskChecks_.isEmpty())
                QTimer::singleShot(150, this, [this] {
                    const QSet<QString> paths = std::exchange(pendingDiskChecks_, {});
                    for (const QString& p : paths)
                        if (KLTextView* v = documentView(p))
                            checkDocumentOnDisk(v);
                });
            pendingDiskChecks_.insert(path);
        });
        // Coming back to the IDE is when users expect it to notice what they did elsewhere.
        connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
            if (state == Qt::ApplicationActive)
                QTimer::singleShot(0, this, &Global::checkDocumentsOnDisk);
        });
    }
    documentWatcher_->addPath(view->fileName());
    connect(view, &KLTextView::saveFinished, this,
            [this, view](int status, const QString& error) { documentSaveFinished(view, status, error); });
    connect(view, &KLTextView::readOnlyEditAttempted, this, [this, view] {
        ProjectStatusBar(KLVR_FILENAME(view->fileName()) + QStringLiteral(" is read-only: it cannot be changed here."));
        if (readOnlyShown_.contains(view))
            return;
        readOnlyShown_.insert(view);
        KLVR_MSGBOX(quoted(view->fileName()) + QStringLiteral(" is read-only."),
                    QStringLiteral("Kelvaro cannot save changes to ") + view->fileName() +
                        QStringLiteral(". Allow writing to the file to edit it here."));
    });
    connect(view, &KLTextView::charactersRefused, this, [this, view](const QString& refused) {
        const QString encoding = view->encodingName();
        ProjectStatusBar(refused + QStringLiteral(" cannot be written in ") + encoding + QStringLiteral(": not inserted."));
        const int answer = klvrAsk(refused + QStringLiteral(" cannot be written in ") + encoding + QLatin1Char('.'),
                                   quoted(view->fileName()) + QStringLiteral(" is a ") + encoding +
                                       QStringLiteral(" file, which cannot hold these characters, so they were not "
                                                      "inserted. Convert the file to UTF-8 to use them."),
                                   {QStringLiteral("OK"), QStringLiteral("Convert to UTF-8")});
        if (answer == 1 && view == mytextview())
            ConvertToUtf8();
    });
}

void Global::forgetDocument(KLTextView* view) {
    if (documentWatcher_ && !view->fileName().isEmpty())
        documentWatcher_->removePath(view->fileName());
    diskQuestions_.remove(view);
    saveFailureShown_.remove(view);
    readOnlyShown_.remove(view);
    view->disconnect(this);
}

bool Global::saveModifiedDocuments(SaveWait wait, KLTextView* except) {
    bool allWritten = true;
    for (KLTextView* view : documentViews()) {
        if (view == except || !view->needsSave() || view->isFileReadOnly())
            continue;
        // A difference with the disk that the user has not settled holds the save.
        if (diskQuestions_.contains(view)) {
            allWritten = false;
            continue;
        }
        if (wait == SaveWait::Wait)
            allWritten = view->save(view->fileName()) && allWritten;
        else
            view->saveInBackground(view->fileName());
    }
    return allWritten;
}

bool Global::saveBeforeLettingGo(const QList<KLTextView*>& views) {
    QList<KLTextView*> unsaved;
    for (KLTextView* view : views) {
        if (!view->isModified() || view->isFileReadOnly())
            continue;
        // A question left open is asked again now: this is the last chance.
        if (diskQuestions_.contains(view) && !diskQuestions_[view].open) {
            diskQuestions_.remove(view);
            checkDocumentOnDisk(view);
        }
        if (!diskQuestions_.contains(view) && view->save(view->fileName()))
            continue;
        if (view->isModified())
            unsaved << view;
    }
    if (unsaved.isEmpty())
        return true;
    QStringList names;
    for (KLTextView* view : unsaved)
        names << view->fileName();
    const int answer = klvrAsk(
        unsaved.size() == 1 ? quoted(names[0]) + QStringLiteral(" has changes that could not be saved.")
                            : QStringLiteral("%1 documents have changes that could not be saved.").arg(unsaved.size()),
        names.join(QLatin1Char('\n')) +
            QStringLiteral("\n\nDiscarding throws these changes away. Cancel keeps the documents open."),
        {QStringLiteral("Cancel"), QStringLiteral("Discard Changes")});
    if (answer != 1)
        return false;
    for (KLTextView* view : unsaved)
        recoveryJournal()->remove(view->fileName(), view);
    return true;
}

void Global::documentSaveFinished(KLTextView* view, int status, const QString& error) {
    const QString name = KLVR_FILENAME(view->fileName());
    switch (WriteStatus(status)) {
    case WriteStatus::Written:
        saveFailureShown_.remove(view);
        // The save wrote the copy of its text first; it goes once the file holds the
        // text, or is renewed when there was typing since.
        if (view->isModified())
            recoveryJournal()->writePass({view});
        else
            recoveryJournal()->remove(view->fileName(), view);
        return;
    case WriteStatus::ChangedOnDisk:
    case WriteStatus::DeletedOnDisk:
        checkDocumentOnDisk(view);
        return;
    case WriteStatus::Failed:
        ProjectStatusBar(QStringLiteral("Could not save ") + name + QStringLiteral(": ") + error);
        if (userSaveUnderWay_ || saveFailureShown_.contains(view))
            return;
        saveFailureShown_.insert(view);
        KLVR_MSGBOX(QStringLiteral("Could not save ") + view->fileName(),
                    QStringLiteral("The file could not be written: ") + error +
                        QStringLiteral(".\nThe text stays in the editor, unsaved; Kelvaro tries again after the "
                                       "next change."));
        return;
    }
}

void Global::checkDocumentsOnDisk() {
    for (KLTextView* view : documentViews())
        checkDocumentOnDisk(view);
}

void Global::checkDocumentOnDisk(KLTextView* view) {
    const QString path = view->fileName();
    if (path.isEmpty() || diskQuestions_.value(view).open)
        return;
    // The watch ends when the file is replaced or removed; it follows the new file.
    if (documentWatcher_ && !documentWatcher_->files().contains(path) && QFileInfo::exists(path))
        documentWatcher_->addPath(path);
    const DiskStamp now = DiskStamp::of(path);
    if (now == view->diskStamp())
        return;
    if (!now.exists) {
        settleDeletedOnDisk(view);
        return;
    }
    const std::optional<QByteArray> disk = document_file::readAll(path);
    if (!disk)
        return; // being written or unreadable: the next change or check looks again
    const quint64 fingerprint = document_file::fingerprint(*disk);
    if (fingerprint == view->diskFingerprint() || *disk == view->documentBytes()) {
        // Touched, or written with the very text the editor holds.
        view->setDiskState(now, fingerprint);
        if (*disk == view->documentBytes())
            view->setModified(false);
        diskQuestions_.remove(view);
        return;
    }
    if (!view->isModified()) {
        reloadFromDisk(view, *disk, now);
        return;
    }
    settleChangedOnDisk(view, *disk, now);
}

void Global::reloadFromDisk(KLTextView* view, const QByteArray& disk, const DiskStamp& stamp) {
    const qint64 lineNo = view->line();
    bLockTextDidChange = true;
    view->replaceAllAsOneStep(disk); // Undo brings the earlier text back
    view->setModified(false);
    bLockTextDidChange = false;
    view->gotoLine(lineNo);
    view->setDiskState(stamp, document_file::fingerprint(disk));
    diskQuestions_.remove(view);
    if (view == mytextview()) {
        ProjectStatusBar(QStringLiteral("Reloaded ") + KLVR_FILENAME(view->fileName()) +
                         QStringLiteral(": it was changed on disk"));
        mycode->showDocumentInfo();
    }
}

void Global::settleChangedOnDisk(KLTextView* view, const QByteArray& disk, const DiskStamp& stamp) {
    DiskQuestion& question = diskQuestions_[view];
    if (question.asked == stamp)
        return; // asked once for this change; the user left it open
    question.open = true;
    const QString path = view->fileName();
    const QString trash = freeTrashName(path);
    const QString title = quoted(path) + QStringLiteral(" was changed by another program.");
    const QString text = QStringLiteral("It also has changes made here that are not saved.\n\nKeep Mine saves "
                                        "your text and keeps the text on disk as ") +
                         KLVR_FILENAME(trash) +
                         QStringLiteral(". Take Disk's shows the text on disk; Undo brings yours back.");
    QStringList answers{QStringLiteral("Keep Mine"), QStringLiteral("Take Disk's"), QStringLiteral("Compare")};
    int answer = klvrAsk(title, text, answers);
    if (answer == 2) {
        KLVR_MSGBOX(QStringLiteral("Differences in ") + quoted(path),
                    differences(document_file::decode(disk).utf8, QString::fromUtf8(view->editorBytes())));
        answers.removeLast();
        answer = klvrAsk(title, text, answers);
    }
    if (!diskQuestions_.contains(view))
        return; // let go while the question was open
    diskQuestions_[view].open = false;
    const QString name = KLVR_FILENAME(path);
    if (answer == 0) {
        // Nothing on disk is destroyed: the other program's text is kept beside it.
        const document_file::WriteResult kept = document_file::writeChecked(trash, disk, DiskStamp());
        if (kept.status != WriteStatus::Written) {
            diskQuestions_[view].asked = stamp;
            KLVR_MSGBOX(QStringLiteral("Could not keep the text on disk as ") + trash,
                        kept.error + QStringLiteral(". Nothing was overwritten."));
            return;
        }
        diskQuestions_.remove(view);
        view->setDiskState(stamp, document_file::fingerprint(disk));
        if (view->save(path))
            ProjectStatusBar(QStringLiteral("Saved your text in ") + name + QStringLiteral("; the text on disk is in ") +
                             KLVR_FILENAME(trash));
    } else if (answer == 1) {
        diskQuestions_.remove(view);
        bLockTextDidChange = true;
        view->replaceAllAsOneStep(disk);
        view->setModified(false);
        bLockTextDidChange = false;
        view->setDiskState(stamp, document_file::fingerprint(disk));
        if (journal_)
            journal_->writePass({view});
        ProjectStatusBar(QStringLiteral("Took the text on disk for ") + name + QStringLiteral("; Undo brings yours back"));
    } else {
        diskQuestions_[view].asked = stamp;
        ProjectStatusBar(name + QStringLiteral(" was changed on disk; the changes made here are not saved"));
    }
    if (view == mytextview())
        mycode->showDocumentInfo();
}

void Global::settleDeletedOnDisk(KLTextView* view) {
    const DiskStamp gone;
    DiskQuestion& question = diskQuestions_[view];
    if (question.asked == gone)
        return;
    question.open = true;
    const QString path = view->fileName();
    const int answer =
        klvrAsk(quoted(path) + QStringLiteral(" was deleted by another program."),
                path + QStringLiteral("\n\nKelvaro still has its text. Save Again writes it back; Close closes "
                                      "the document; Keep Open keeps the text here without saving it."),
                {QStringLiteral("Save Again"), QStringLiteral("Close"), QStringLiteral("Keep Open")});
    if (!diskQuestions_.contains(view))
        return;
    diskQuestions_[view].open = false;
    if (answer == 0) {
        diskQuestions_.remove(view);
        view->setDiskState(gone, 0);
        view->save(path);
        if (documentWatcher_)
            documentWatcher_->addPath(path);
    } else if (answer == 1) {
        diskQuestions_.remove(view);
        recoveryJournal()->remove(path, view);
        discardDocument(path);
    } else {
        diskQuestions_[view].asked = gone;
        ProjectStatusBar(KLVR_FILENAME(path) + QStringLiteral(" was deleted on disk; its text is kept here, unsaved"));
    }
}

void Global::ConvertToUtf8(const Value&) {
    KLVR_TRACE("ConvertToUtf8");
    KLTextView* view = mytextview();
    if (!view || !mycode->SomeDocumentOpened() || view->encoding() == TextEncoding::Utf8)
        return;
    view->convertToUtf8();
    if (view->save(view->fileName()))
        ProjectStatusBar(KLVR_FILENAME(view->fileName()) + QStringLiteral(" is now UTF-8"));
    mycode->showDocumentInfo();
}

bool Global::prepareToQuit() {
    if (!saveBeforeLettingGo(documentViews()))
        return false;
    recoveryJournal()->writePass(documentViews());
    recoveryJournal()->waitForWrites();
    for (KLTextView* view : documentViews())
        view->waitForWriter();
    return true;
}

void Global::discardDocument(const QString& path) {
    KLTextView* view = documentView(path);
    if (view)
        forgetDocument(view);
    KLVR_NSMUTABLEDICTIONARY_REMOVE(codes, path);
    if (KLVR_NSDICTIONARY_COUNT(codes) > 0)
        ProjectOpenCode(KLVR_NSMUTABLEDICTIONARY_KEY(codes, 0).toString());
    else
        mycode->SetEmpty();
    if (view)
        view->deleteLater();
}

// ---------------------------------------------------------------- recovery

void Global::offerRecovery() {
    KLVR_TRACE("offerRecovery");
    recoveryJournal();
    for (const RecoveryJournal::Entry& entry : RecoveryJournal::entries()) {
        if (document_file::readAll(entry.path) == entry.bytes) {
            journal_->remove(entry.path); // the file holds that text: nothing to offer
            continue;
        }
        const int answer = klvrAsk(
            QStringLiteral("Restore the unsaved changes to ") + quoted(entry.path) + QLatin1Char('?'),
            QStringLiteral("Kelvaro stopped before it could save the changes made to\n") + entry.path +
                QStringLiteral("\nlast changed %1. Restore puts them back in the editor; Discard throws them away.")
                    .arg(entry.changed.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))),
            {QStringLiteral("Restore"), QStringLiteral("Discard")});
        if (answer == 0)
            restoreFromJournal(entry.path, entry.bytes);
        else if (answer == 1)
            journal_->remove(entry.path);
        // Dismissed: offered again at the next start.
    }
}

void Global::restoreFromJournal(const QString& path, const QByteArray& bytes) {
    const QString folder = QFileInfo(path).absolutePath();
    if (ProjectPath != folder && QFileInfo::exists(folder + QStringLiteral("/Global.NSObject.klvr")) &&
        QFileInfo::exists(path))
        ProjectOpen(folder);
    if (ProjectPath == folder && QFileInfo::exists(path)) {
        ProjectOpenCode(path);
        if (KLTextView* view = documentView(path)) {
            // One undo step, so the file's text stays reachable; the restored text is
            // saved at once, which removes its copy (a save that fails keeps it).
            view->replaceAllAsOneStep(bytes);
            view->save(path);
            ProjectStatusBar(QStringLiteral("Restored the unsaved changes to ") + KLVR_FILENAME(path));
            return;
        }
    }
    // The file is not in a project that can be opened: the text is written back as the
    // file, and what stands there now is kept beside it.
    if (QFileInfo::exists(path)) {
        const std::optional<QByteArray> disk = document_file::readAll(path);
        if (!disk || document_file::writeChecked(freeTrashName(path), *disk, DiskStamp()).status !=
                          WriteStatus::Written) {
            KLVR_MSGBOX(QStringLiteral("Could not restore ") + path,
                        QStringLiteral("The file there could not be kept. The changes stay in ") +
                            RecoveryJournal::journalFileFor(path));
            return;
        }
    }
    const document_file::WriteResult written =
        document_file::writeChecked(path, bytes, DiskStamp::of(path));
    if (written.status != WriteStatus::Written) {
        KLVR_MSGBOX(QStringLiteral("Could not restore ") + path,
                    written.error + QStringLiteral(". The changes stay in ") + RecoveryJournal::journalFileFor(path));
        return;
    }
    journal_->remove(path);
}
