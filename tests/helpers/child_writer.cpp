// A child process for the task tests: writes a numbered pattern to standard output
// and standard error, or misbehaves on request.
//   child_writer OUT_BYTES ERR_BYTES   interleaves both streams, then exits 0
//   child_writer --sleep SECONDS       sleeps (a program that runs until stopped)
//   child_writer --args ARG...         prints each argument on a line of its own
//   child_writer --exit N              exits with status N
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>

// Byte i of a stream is the pattern's byte i, so the reader can check order.
static char patternByte(long long i, char base) { return char(base + i % 23); }

int main(int argc, char** argv) {
    if (argc >= 3 && std::strcmp(argv[1], "--sleep") == 0) {
        std::this_thread::sleep_for(std::chrono::seconds(std::atoi(argv[2])));
        return 0;
    }
    if (argc >= 2 && std::strcmp(argv[1], "--args") == 0) {
        for (int i = 2; i < argc; ++i)
            std::printf("%s\n", argv[i]);
        return 0;
    }
    if (argc >= 3 && std::strcmp(argv[1], "--exit") == 0)
        return std::atoi(argv[2]);
    if (argc < 3)
        return 2;
    long long outBytes = std::atoll(argv[1]), errBytes = std::atoll(argv[2]);
    std::string block;
    long long out = 0, err = 0;
    // Interleaves the two streams in chunks, so both pipes fill while the other is read.
    auto writeChunk = [&block](FILE* stream, long long& written, long long total, long long chunk, char base) {
        const long long n = std::min(chunk, total - written);
        if (n <= 0)
            return;
        block.resize(size_t(n));
        for (long long i = 0; i < n; ++i)
            block[size_t(i)] = patternByte(written + i, base);
        std::fwrite(block.data(), 1, size_t(n), stream);
        written += n;
    };
    while (out < outBytes || err < errBytes) {
        writeChunk(stdout, out, outBytes, 65536, 'a');
        writeChunk(stderr, err, errBytes, 4096, 'A');
    }
    return 0;
}
