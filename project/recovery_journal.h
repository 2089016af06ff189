#pragma once
// The recovery journal: a copy of every document whose text differs from its file,
// kept in the support folder's "Recovery" folder, so that a crash, a kill or a power
// cut loses nothing that was typed more than two seconds before it. The start-up
// offers back what a stopped IDE left there.
//
// A document's copy is written within two seconds of a change, and removed as soon as
// the document's file holds its text again. Every write and removal of a copy runs on
// the document view's writer thread, in one queue with the saves of its file, and each
// save writes the copy of the text it saves just before it writes the file. So the
// copy on disk is never older than the file: whenever the IDE is stopped, the copy
// holds the file's text or newer text, and a copy equal to its file is not offered.

#include "editor/document_file.h"

#include <QDateTime>
#include <QHash>
#include <QObject>
#include <QThreadPool>
#include <QTimer>

#include <functional>

class KLTextView;

class RecoveryJournal : public QObject {
    Q_OBJECT
public:
    // One document's copy as the journal holds it.
    struct Entry {
        QString journalFile; // the copy's own file in the Recovery folder
        QString path;        // the document's file
        QDateTime changed;   // when the text was taken (UTC)
        QByteArray bytes;    // the document's bytes as a save would write them
    };

    explicit RecoveryJournal(QObject* parent = nullptr);
    ~RecoveryJournal() override;

    // "<support folder>/Recovery".
    static QString folder();
    // The copies in the Recovery folder, oldest change first; unreadable ones are left out.
    static QList<Entry> entries();
    // The copy's file for a document's file.
    static QString journalFileFor(const QString& path);

    // A new document view: its saves write its copy first.
    void watch(KLTextView* view);
    // A document's text changed: its copy is written when the journal's timer fires,
    // one second after the first change since the last pass. Costs a timer check.
    void noteChange();
    // The pass: writes the copy of every view whose text differs from its file and
    // changed since its last copy, and removes the copies of the views that no longer
    // differ. Called by the timer through due(), and after saves.
    void writePass(const QList<KLTextView*>& views);
    // Removes the copy of a document: on its view's writer when the view is given
    // (after what is queued there), else on the journal's own thread.
    void remove(const QString& path, KLTextView* view = nullptr);
    // Blocks until every removal asked for without a view is done.
    void waitForWrites();

    // Told on the journal's thread after a copy was written (tests and the typing hook).
    std::function<void(const QString& path, qint64 size)> onWritten;

signals:
    // The timer fired: the owner calls writePass with its documents.
    void due();

private:
    QTimer timer_;
    QThreadPool writer_;               // removals of copies whose view is gone, in order
    QHash<QString, qint64> journaled_; // document path -> change count of its last copy
};
