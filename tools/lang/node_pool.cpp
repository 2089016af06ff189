#include "tools/lang/node_pool.h"

#include <memory>
#include <mutex>
#include <new>
#include <vector>

namespace klvr {

namespace {

constexpr std::size_t kGranule = 16;
constexpr std::size_t kClasses = 16;  // nodes up to 256 bytes; bigger ones use the heap
constexpr std::size_t kChunkBytes = 256 * 1024;

// Chunks live until the process ends: a node freed on another thread than the one that
// made it simply joins that thread's free list.
std::mutex chunkMutex;
std::vector<std::unique_ptr<std::byte[]>>& chunks() {
    static std::vector<std::unique_ptr<std::byte[]>> all;
    return all;
}

struct FreeNode {
    FreeNode* next;
};

struct ThreadPool {
    FreeNode* free[kClasses] = {};
    std::byte* cursor = nullptr;
    std::size_t left = 0;
};

thread_local ThreadPool pool;

std::size_t classOf(std::size_t bytes) { return (bytes + kGranule - 1) / kGranule - 1; }

}  // namespace

// Under AddressSanitizer every node comes from the heap, so that a node used after it
// was freed is reported instead of hidden by its reuse.
#if defined(__SANITIZE_ADDRESS__)
#define KLVR_POOL_OFF 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KLVR_POOL_OFF 1
#endif
#endif
#ifndef KLVR_POOL_OFF
#define KLVR_POOL_OFF 0
#endif

void* NodePool::allocate(std::size_t bytes) {
    const std::size_t sizeClass = classOf(bytes);
    if (KLVR_POOL_OFF || sizeClass >= kClasses)
        return ::operator new(bytes);
    if (FreeNode* node = pool.free[sizeClass]) {
        pool.free[sizeClass] = node->next;
        return node;
    }
    const std::size_t rounded = (sizeClass + 1) * kGranule;
    if (pool.left < rounded) {
        auto chunk = std::make_unique<std::byte[]>(kChunkBytes);
        pool.cursor = chunk.get();
        pool.left = kChunkBytes;
        std::lock_guard<std::mutex> lock(chunkMutex);
        chunks().push_back(std::move(chunk));
    }
    void* node = pool.cursor;
    pool.cursor += rounded;
    pool.left -= rounded;
    return node;
}

void NodePool::release(void* node, std::size_t bytes) noexcept {
    if (!node)
        return;
    const std::size_t sizeClass = classOf(bytes);
    if (KLVR_POOL_OFF || sizeClass >= kClasses) {
        ::operator delete(node);
        return;
    }
    auto* freed = static_cast<FreeNode*>(node);
    freed->next = pool.free[sizeClass];
    pool.free[sizeClass] = freed;
}

}  // namespace klvr
