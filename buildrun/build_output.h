#pragma once
// Output of the child process on its way from the task's reading thread to the main
// thread. The compiler's chunks are handled one at a time while the reading thread
// waits, as the error recognition expects. The running application's chunks are
// batched: the reading thread only queues them (waiting only while a megabyte is
// pending, so memory stays bounded and the program is slowed to the pace of the log),
// and the main thread handles them in slices small enough to keep the interface
// responsive.

#include <QByteArray>
#include <QMutex>
#include <QWaitCondition>
#include <deque>

class BuildOutput {
public:
    struct Chunk {
        bool isError = false;
        bool fromApplication = false;
        QByteArray bytes;
    };
    // The most a queued application chunk grows to.
    static constexpr qsizetype kChunkBytes = 8 * 1024;
    // How long the main thread handles application output before it lets other events
    // in (appending 8 KB to a full run log takes about 1.5 ms).
    static constexpr qint64 kSliceNanoseconds = 4'000'000;
    // Application output pending beyond this makes the reading thread wait.
    static constexpr qsizetype kMaxPendingBytes = 1024 * 1024;

    // Queues a chunk (reading thread); true when the main thread must be asked to drain.
    bool push(bool isError, bool fromApplication, const QByteArray& bytes, quint64* sequence);
    // Blocks the reading thread until the chunk `sequence` was handled, or gives up
    // when closed.
    void waitHandled(quint64 sequence);
    // Blocks the reading thread while too much output is pending.
    void waitForRoom();
    // The next chunk to handle (main thread); false when none is left, and then the
    // next push asks for a drain again.
    bool take(Chunk* chunk);
    // The chunk taken last has been handled.
    void handled();
    // Releases every waiting reader; nothing queued afterwards is waited for.
    void close();

private:
    QMutex mutex_;
    QWaitCondition changed_;
    std::deque<Chunk> chunks_;
    qsizetype pendingBytes_ = 0;
    quint64 pushed_ = 0;
    quint64 handled_ = 0;
    quint64 taken_ = 0;
    bool drainAsked_ = false;
    bool closed_ = false;
};
