#pragma once
// Storage for the few texts a scan has to make itself (a title with a carriage return
// in the middle, a line with its quoted parts removed). Everything else a scan records
// is a view into the scanned text. Chunks never move, so a view into the arena stays
// valid as long as the arena lives, also after its chunks were handed to another arena.

#include <algorithm>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

template <class Char> class TextArena {
public:
    using View = std::basic_string_view<Char>;

    View copy(View text) {
        if (text.empty())
            return {};
        Char* to = allocate(text.size());
        std::memcpy(to, text.data(), text.size() * sizeof(Char));
        return View(to, text.size());
    }

    // `text` without any of the characters `a` and `b`.
    View copyWithout(View text, Char a, Char b) {
        Char* to = allocate(text.size());
        std::size_t kept = 0;
        for (Char c : text)
            if (c != a && c != b)
                to[kept++] = c;
        return View(to, kept);
    }

    // Takes over the chunks of `other`; views into them stay valid.
    void adopt(TextArena&& other) {
        for (auto& chunk : other.chunks_)
            chunks_.push_back(std::move(chunk));
        other.chunks_.clear();
        other.room_ = 0;
    }

private:
    Char* allocate(std::size_t size) {
        if (size > room_) {
            // Chunks grow with the arena: a small file's scan takes one page, a large
            // one's few allocations.
            const std::size_t grown = std::min<std::size_t>(std::size_t(4096) << std::min<std::size_t>(chunks_.size(), 8),
                                                            std::size_t(1) << 20);
            const std::size_t chunkSize = std::max(size, grown / sizeof(Char));
            chunks_.push_back(std::make_unique_for_overwrite<Char[]>(chunkSize));
            next_ = chunks_.back().get();
            room_ = chunkSize;
        }
        Char* at = next_;
        next_ += size;
        room_ -= size;
        return at;
    }

    std::vector<std::unique_ptr<Char[]>> chunks_;
    Char* next_ = nullptr;
    std::size_t room_ = 0;
};
