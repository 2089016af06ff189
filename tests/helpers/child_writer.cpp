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
    while (out < outBytes || err < errBytes) {
        long long n = std::min<long long>(65536, outBytes - out);
        if (n > 0) {
            block.resize(size_t(n));
            for (long long i = 0; i < n; ++i)
                block[size_t(i)] = patternByte(out + i, 'a');
            std::fwrite(block.data(), 1, size_t(n), stdout);
            out += n;
        }
        long long m = std::min<long long>(4096, errBytes - err);
        if (m > 0) {
            block.resize(size_t(m));
            for (long long i = 0; i < m; ++i)
                block[size_t(i)] = patternByte(err + i, 'A');
            std::fwrite(block.data(), 1, size_t(m), stderr);
            err += m;
        }
    }
    return 0;
}
