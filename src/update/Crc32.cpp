#include "update/Crc32.h"

#include <array>
#include <cstring>
#include <fstream>
#include <vector>
#include <wmmintrin.h>

namespace {

constexpr uint32_t multiplyByX(uint32_t remainder) {
    constexpr uint32_t kReflectedPolynomial = 0xEDB88320u;
    return (remainder >> 1) ^ (remainder & 1 ? kReflectedPolynomial : 0);
}

// "Slicing by 8": entry [k][b] is what byte b contributes when k more bytes follow it in the same step, so
// that a step takes eight bytes with independent look-ups instead of a chain of single ones.
constexpr size_t kSlices = 8;
using SliceTables = std::array<std::array<uint32_t, 256>, kSlices>;

constexpr SliceTables makeTables() {
    SliceTables tables{};
    for (uint32_t byte = 0; byte < 256; ++byte) {
        uint32_t value = byte;
        for (int bit = 0; bit < 8; ++bit)
            value = multiplyByX(value);
        tables[0][byte] = value;
    }
    for (size_t slice = 1; slice < kSlices; ++slice)
        for (size_t byte = 0; byte < 256; ++byte) {
            const uint32_t shorter = tables[slice - 1][byte];
            tables[slice][byte] = (shorter >> 8) ^ tables[0][shorter & 0xFF];
        }
    return tables;
}

constexpr SliceTables kTables = makeTables();
static_assert(kTables[0][1] == 0x77073096u);

// "Folding": 16 bytes that stand n bits in front of other data have the same CRC as their product with x^n
// mod P added to that data. The constants and the method are those of Intel's white paper "Fast CRC
// Computation for Generic Polynomials Using PCLMULQDQ Instruction" (2009).
constexpr size_t kFoldedBlock = 64; // four registers of 16 bytes

constexpr long long foldConstant(int power) {
    uint32_t remainder = 0x80000000u; // x^0 in the reflected form
    for (int i = 0; i < power; ++i)
        remainder = multiplyByX(remainder);
    return static_cast<long long>(remainder) << 1;
}

constexpr long long kFoldLow = foldConstant(8 * kFoldedBlock + 32);
constexpr long long kFoldHigh = foldConstant(8 * kFoldedBlock - 32);
static_assert(kFoldLow == 0x154442BD4 && kFoldHigh == 0x1C6E41596);

// count >= kFoldedBlock.
__attribute__((target("pclmul"))) uint32_t crcRegisterByFolding(const uint8_t *next, size_t count,
                                                                uint32_t start) noexcept {
    const __m128i constants = _mm_set_epi64x(kFoldHigh, kFoldLow);
    __m128i lanes[4];
    std::memcpy(lanes, next, kFoldedBlock);
    lanes[0] = _mm_xor_si128(lanes[0], _mm_cvtsi32_si128(static_cast<int>(start)));
    next += kFoldedBlock;
    count -= kFoldedBlock;
    for (; count >= kFoldedBlock; count -= kFoldedBlock, next += kFoldedBlock)
        for (size_t i = 0; i < 4; ++i) {
            const __m128i data = _mm_loadu_si128(reinterpret_cast<const __m128i *>(next) + i);
            const __m128i low = _mm_clmulepi64_si128(lanes[i], constants, 0x00);
            const __m128i high = _mm_clmulepi64_si128(lanes[i], constants, 0x11);
            lanes[i] = _mm_xor_si128(_mm_xor_si128(low, high), data);
        }
    // What is left has the CRC of everything so far.
    return crcRegisterByTable(next, count, crcRegisterByTable(lanes, kFoldedBlock, 0));
}

} // namespace

uint32_t crcRegisterByTable(const void *bytes, size_t count, uint32_t start) noexcept {
    const auto *next = static_cast<const uint8_t *>(bytes);
    uint32_t crc = start;
    for (; count >= kSlices; count -= kSlices, next += kSlices) {
        uint64_t value;
        std::memcpy(&value, next, sizeof value); // little-endian, as every x64 processor is
        value ^= crc;
        crc = 0;
        for (size_t i = 0; i < kSlices; ++i)
            crc ^= kTables[kSlices - 1 - i][(value >> (8 * i)) & 0xFF];
    }
    for (; count > 0; --count, ++next)
        crc = (crc >> 8) ^ kTables[0][(crc ^ *next) & 0xFF];
    return crc;
}

uint32_t crcRegister(const void *bytes, size_t count, uint32_t start) noexcept {
    static const bool canFold = __builtin_cpu_supports("pclmul") != 0;
    if (canFold && count >= kFoldedBlock)
        return crcRegisterByFolding(static_cast<const uint8_t *>(bytes), count, start);
    return crcRegisterByTable(bytes, count, start);
}

int64_t fileCrc(const std::filesystem::path &path, uint32_t &crc, const std::filesystem::path &copyPath) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return -1;
    std::ofstream copy;
    std::vector<char> piece(1 << 20);
    uint32_t value = kCrcStart;
    int64_t size = 0;
    while (file) {
        file.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        const std::streamsize count = file.gcount();
        if (count > 0 && size == 0 && !copyPath.empty())
            copy.open(copyPath, std::ios::binary | std::ios::trunc);
        value = crcRegister(piece.data(), static_cast<size_t>(count), value);
        if (copy.is_open())
            copy.write(piece.data(), count);
        size += count;
    }
    if (size < 1 || file.bad())
        return -2;
    crc = value;
    return size;
}
