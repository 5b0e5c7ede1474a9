#include "update/Crc32.h"

#include <array>
#include <fstream>
#include <vector>

namespace {

constexpr std::array<uint32_t, 256> makeTable() {
    constexpr uint32_t kReflectedPolynomial = 0xEDB88320u;
    std::array<uint32_t, 256> table{};
    for (uint32_t byte = 0; byte < table.size(); ++byte) {
        uint32_t value = byte;
        for (int bit = 0; bit < 8; ++bit)
            value = (value >> 1) ^ (value & 1 ? kReflectedPolynomial : 0);
        table[byte] = value;
    }
    return table;
}

constexpr std::array<uint32_t, 256> kTable = makeTable();
static_assert(kTable[1] == 0x77073096u);

} // namespace

uint32_t crcRegister(const void *bytes, size_t count, uint32_t start) noexcept {
    const auto *next = static_cast<const uint8_t *>(bytes);
    uint32_t crc = start;
    for (; count > 0; --count, ++next)
        crc = (crc >> 8) ^ kTable[(crc ^ *next) & 0xFF];
    return crc;
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
