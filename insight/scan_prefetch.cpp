#include "insight/scan_prefetch.h"

#include "insight/source_text.h"

#include <QDir>
#include <QHash>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace {

enum class State { Waiting, Running, Done, Taken };

std::atomic<int> taken{0};

struct Item {
    State state = State::Waiting;
    FileIdentity identity;
    std::shared_ptr<FileScan> scan; // none when the file could not be read
};

class Prefetch {
public:
    explicit Prefetch(const QString& folder) : folder_(folder) {
        const unsigned workers = std::max(1u, std::thread::hardware_concurrency());
        for (unsigned w = 0; w < workers; ++w)
            threads_.emplace_back([this, w] { work(w == 0); });
    }

    ~Prefetch() {
        {
            std::lock_guard lock(mutex_);
            stopping_ = true;
        }
        changed_.notify_all();
        for (std::thread& thread : threads_)
            thread.join();
    }

    Prefetch(const Prefetch&) = delete;
    Prefetch& operator=(const Prefetch&) = delete;

    std::shared_ptr<FileScan> take(const QString& path) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return listed_ || stopping_; });
        const auto found = items_.find(path);
        if (found == items_.end())
            return nullptr;
        Item& item = found.value();
        if (item.state == State::Waiting) {
            item.state = State::Taken; // the caller scans it now
            return nullptr;
        }
        changed_.wait(lock, [&] { return item.state != State::Running; });
        if (item.state != State::Done)
            return nullptr;
        item.state = State::Taken;
        std::shared_ptr<FileScan> scan = std::move(item.scan);
        const FileIdentity read = item.identity;
        lock.unlock();
        if (!scan || fileIdentity(path) != read)
            return nullptr;
        ++taken;
        return scan;
    }

    void waitForAll() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] {
            if (stopping_)
                return true;
            if (!listed_)
                return false;
            for (const Item& item : std::as_const(items_))
                if (item.state == State::Waiting || item.state == State::Running)
                    return false;
            return true;
        });
    }

private:
    void work(bool lists) {
        if (lists)
            list();
        QByteArray buffer; // every file of this thread is read into the same memory
        for (;;) {
            QString path;
            {
                std::unique_lock lock(mutex_);
                changed_.wait(lock, [this] { return listed_ || stopping_; });
                while (next_ < order_.size() && items_[order_[next_]].state != State::Waiting)
                    ++next_;
                if (stopping_ || next_ == order_.size())
                    return;
                path = order_[next_++];
                items_[path].state = State::Running;
            }
            FileIdentity identity;
            const bool read = readSourceBytesInto(path, buffer, &identity);
            std::shared_ptr<FileScan> scan = read ? std::make_shared<FileScan>(buffer) : nullptr;
            {
                std::lock_guard lock(mutex_);
                Item& item = items_[path];
                item.state = State::Done;
                item.identity = identity;
                item.scan = std::move(scan);
            }
            changed_.notify_all();
        }
    }

    void list() {
        const QStringList names = QDir(folder_).entryList({QStringLiteral("*.klvr")}, QDir::Files, QDir::Name);
        {
            std::lock_guard lock(mutex_);
            for (const QString& name : names) {
                const QString path = folder_ + QLatin1Char('/') + name;
                order_.push_back(path);
                items_.insert(path, Item());
            }
            listed_ = true;
        }
        changed_.notify_all();
    }

    const QString folder_;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool listed_ = false;
    bool stopping_ = false;
    std::vector<QString> order_;
    std::size_t next_ = 0;
    QHash<QString, Item> items_; // filled once, before listed_; never rehashed after
    std::vector<std::thread> threads_;
};

// The current prefetch; finished at the latest when the process ends.
struct Current {
    std::mutex mutex;
    std::shared_ptr<Prefetch> prefetch;
    ~Current() {
        std::shared_ptr<Prefetch> last;
        {
            std::lock_guard lock(mutex);
            last = std::move(prefetch);
        }
    }
};

Current& current() {
    static Current instance;
    return instance;
}

} // namespace

namespace scan_prefetch {

void start(const QString& folder) {
    finish();
    if (folder.isEmpty())
        return; // no project to open (an empty name would list the current folder)
    auto prefetch = std::make_shared<Prefetch>(folder);
    std::lock_guard lock(current().mutex);
    current().prefetch = std::move(prefetch);
}

std::shared_ptr<FileScan> take(const QString& path) {
    std::shared_ptr<Prefetch> prefetch;
    {
        std::lock_guard lock(current().mutex);
        prefetch = current().prefetch;
    }
    return prefetch ? prefetch->take(path) : nullptr;
}

void finish() {
    std::shared_ptr<Prefetch> last;
    {
        std::lock_guard lock(current().mutex);
        last = std::move(current().prefetch);
    }
    // The last owner joins the threads as it lets go.
}

void waitForAll() {
    std::shared_ptr<Prefetch> prefetch;
    {
        std::lock_guard lock(current().mutex);
        prefetch = current().prefetch;
    }
    if (prefetch)
        prefetch->waitForAll();
}

int takenCount() { return taken.load(); }

} // namespace scan_prefetch
