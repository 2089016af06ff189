#pragma once
// Spreading independent work over the cores with plain threads (which ThreadSanitizer
// sees whole, unlike a pool inside an uninstrumented library).

#include <QtGlobal>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

inline int coreCount() { return int(std::max(1u, std::thread::hardware_concurrency())); }

// Calls `each(i)` once for every i in [0, count), on one thread per core with the calling
// thread among them, each thread taking the next index; returns when all are done.
template <class Each> void forEachOnEveryCore(qsizetype count, Each each) {
    std::atomic<qsizetype> next{0};
    auto work = [&] {
        for (qsizetype i = next++; i < count; i = next++)
            each(i);
    };
    const qsizetype workers = std::min<qsizetype>(count, coreCount());
    std::vector<std::thread> threads;
    for (qsizetype w = 1; w < workers; ++w)
        threads.emplace_back(work);
    work();
    for (std::thread& thread : threads)
        thread.join();
}
