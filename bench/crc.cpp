// Throughput of the installer CRC against zlib's crc32, on buffers of several sizes. Prints one line per
// size.
#include "update/Crc32.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>
#include <zlib.h>

namespace {

// Bytes per nanosecond of the best of several rounds, each of about 64 MB.
template<typename Function>
double bestThroughput(const std::vector<uint8_t> &bytes, Function crc) {
    const size_t repetitions = std::max<size_t>(1, (size_t{64} << 20) / bytes.size());
    double best = 0;
    for (int round = 0; round < 7; ++round) {
        const auto start = std::chrono::steady_clock::now();
        volatile uint32_t result = 0;
        for (size_t i = 0; i < repetitions; ++i)
            result = crc(bytes);
        const std::chrono::duration<double, std::nano> time = std::chrono::steady_clock::now() - start;
        best = std::max(best, static_cast<double>(repetitions * bytes.size()) / time.count());
    }
    return best;
}

uint32_t ours(const std::vector<uint8_t> &bytes) {
    return crcRegister(bytes.data(), bytes.size());
}

uint32_t oursByTable(const std::vector<uint8_t> &bytes) {
    return crcRegisterByTable(bytes.data(), bytes.size());
}

uint32_t zlibs(const std::vector<uint8_t> &bytes) {
    return ~static_cast<uint32_t>(crc32(0, bytes.data(), static_cast<uInt>(bytes.size())));
}

} // namespace

int main() {
    std::printf("%12s %10s %10s %10s %8s\n", "bytes", "ours GB/s", "table GB/s", "zlib GB/s", "ratio");
    for (const size_t size : {size_t{344}, size_t{65536}, size_t{1} << 20, size_t{50} << 20}) {
        std::vector<uint8_t> bytes(size);
        uint32_t state = 1;
        for (uint8_t &byte : bytes)
            byte = static_cast<uint8_t>((state = state * 1664525u + 1013904223u) >> 24);
        if (ours(bytes) != zlibs(bytes) || oursByTable(bytes) != zlibs(bytes)) {
            std::printf("the results differ for %u bytes\n", static_cast<unsigned>(size));
            return 1;
        }
        const double our = bestThroughput(bytes, ours), zlib = bestThroughput(bytes, zlibs);
        std::printf("%12u %10.2f %10.2f %10.2f %8.2f\n", static_cast<unsigned>(size), our,
                    bestThroughput(bytes, oursByTable), zlib, our / zlib);
    }
    return 0;
}
