#include "buildrun/build_output.h"

bool BuildOutput::push(bool isError, bool fromApplication, const QByteArray& bytes, quint64* sequence) {
    QMutexLocker lock(&mutex_);
    if (fromApplication && !chunks_.empty()) {
        Chunk& last = chunks_.back();
        if (last.fromApplication && last.isError == isError && last.bytes.size() + bytes.size() <= kChunkBytes) {
            last.bytes += bytes;
            pendingBytes_ += bytes.size();
            *sequence = pushed_;
            return false;
        }
    }
    chunks_.push_back({isError, fromApplication, bytes});
    pendingBytes_ += bytes.size();
    *sequence = ++pushed_;
    const bool ask = !drainAsked_;
    drainAsked_ = true;
    return ask;
}

void BuildOutput::waitHandled(quint64 sequence) {
    QMutexLocker lock(&mutex_);
    while (handled_ < sequence && !closed_)
        changed_.wait(&mutex_);
}

void BuildOutput::waitForRoom() {
    QMutexLocker lock(&mutex_);
    while (pendingBytes_ > kMaxPendingBytes && !closed_)
        changed_.wait(&mutex_);
}

bool BuildOutput::take(Chunk* chunk) {
    QMutexLocker lock(&mutex_);
    if (chunks_.empty()) {
        drainAsked_ = false;
        return false;
    }
    *chunk = std::move(chunks_.front());
    chunks_.pop_front();
    pendingBytes_ -= chunk->bytes.size();
    ++taken_;
    changed_.wakeAll();
    return true;
}

void BuildOutput::handled() {
    QMutexLocker lock(&mutex_);
    handled_ = taken_;
    changed_.wakeAll();
}

void BuildOutput::close() {
    QMutexLocker lock(&mutex_);
    closed_ = true;
    changed_.wakeAll();
}
