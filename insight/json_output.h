#pragma once
// A growing JSON text kept in fixed chunks: nothing already written is ever moved or
// copied again, and a piece written in one go (see `room`) stays in one place, so it
// can be repeated later by pointer. Strings are written as UTF-8 with control
// characters, quotes, backslashes and U+FEFF escaped and every other character kept.

#include <QByteArray>
#include <QtGlobal>

#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

// Writes all of `bytes` to the file descriptor, resuming after interruptions; false
// when it cannot.
bool writeBytes(int fd, std::string_view bytes);

class JsonOutput {
public:
    JsonOutput() = default;
    JsonOutput(const JsonOutput&) = delete;
    JsonOutput& operator=(const JsonOutput&) = delete;
    JsonOutput(JsonOutput&&) = default;
    JsonOutput& operator=(JsonOutput&&) = default;

    // Makes sure the next `size` bytes go into one chunk.
    void room(std::size_t size) {
        if (std::size_t(limit_ - next_) < size)
            newChunk(size);
    }
    // Where the next byte goes; valid until the next write.
    const char* position() const { return next_; }

    template <std::size_t N> void literal(const char (&text)[N]) { raw(text, N - 1); }
    void raw(const char* bytes, std::size_t size) {
        room(size);
        std::memcpy(next_, bytes, size);
        next_ += size;
    }
    void number(qint64 value);

    // A whole string literal, quotes included.
    template <class Char> void string(std::basic_string_view<Char> text) {
        room(6 * text.size() + 2);
        *next_++ = '"';
        next_ = escape(next_, text);
        *next_++ = '"';
    }
    // The inside of a string literal, for a string written in pieces.
    template <class Char> void stringPart(std::basic_string_view<Char> text) {
        room(6 * text.size());
        next_ = escape(next_, text);
    }
    void quote() { raw("\"", 1); }

    std::size_t size() const;
    // Writes everything to the file descriptor; false when it cannot.
    bool writeTo(int fd) const;
    QByteArray toByteArray() const;

private:
    struct Chunk {
        std::unique_ptr<char[]> bytes;
        char* begin() const { return bytes.get(); }
    };

    void newChunk(std::size_t atLeast);
    // The used bytes of chunk `i`.
    std::string_view chunk(std::size_t i) const;

    static char* escape(char* to, std::string_view text);   // valid UTF-8
    static char* escape(char* to, std::u16string_view text); // any text

    std::vector<Chunk> chunks_;
    std::vector<std::size_t> used_; // bytes used in each finished chunk
    char* chunkBegin_ = nullptr;
    char* next_ = nullptr;
    char* limit_ = nullptr;
};
