#include "update/Crc32.h"

#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

uint32_t bitByBit(const uint8_t *bytes, size_t count) {
    uint32_t crc = 0xFFFFFFFFu;
    for (size_t i = 0; i < count; ++i) {
        crc ^= bytes[i];
        for (int bit = 0; bit < 8; ++bit)
            crc = crc & 1 ? (crc >> 1) ^ 0xEDB88320u : crc >> 1;
    }
    return crc;
}

std::vector<uint8_t> mixedBytes(size_t count) {
    std::vector<uint8_t> bytes(count);
    uint32_t state = 12345;
    for (uint8_t &byte : bytes)
        byte = static_cast<uint8_t>((state = state * 1664525u + 1013904223u) >> 24);
    return bytes;
}

TEST(Crc, IsTheComplementOfThePublishedCheckValues) {
    const struct {
        std::string text;
        uint32_t usual;
    } vectors[] = {{"", 0x00000000}, {"a", 0xE8B7BE43}, {"123456789", 0xCBF43926}};
    for (const auto &vector : vectors)
        EXPECT_EQ(crcRegister(vector.text.data(), vector.text.size()), ~vector.usual) << vector.text;
}

TEST(Crc, EveryLengthAndAlignmentAgreesWithTheDefinition) {
    const std::vector<uint8_t> bytes = mixedBytes(400);
    for (size_t from : {0, 1, 7})
        for (size_t count = 0; count <= 330; ++count) {
            const uint32_t expected = bitByBit(&bytes[from], count);
            ASSERT_EQ(crcRegister(&bytes[from], count), expected) << from << " " << count;
            ASSERT_EQ(crcRegisterByTable(&bytes[from], count), expected) << from << " " << count;
        }
}

TEST(Crc, OfFiles) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "qor_crc_test";
    std::filesystem::create_directories(folder);
    uint32_t crc = 77;
    EXPECT_EQ(fileCrc(folder / "missing", crc), -1);
    for (size_t size : {size_t{0}, size_t{1}, size_t{1} << 20, (size_t{1} << 20) + 1, size_t{3} << 20}) {
        const std::vector<uint8_t> bytes = mixedBytes(size);
        std::ofstream(folder / "file", std::ios::binary)
            .write(reinterpret_cast<const char *>(bytes.data()), static_cast<std::streamsize>(size));
        if (size == 0) {
            EXPECT_EQ(fileCrc(folder / "file", crc, folder / "copy"), -2);
            EXPECT_EQ(crc, 77u);
            EXPECT_FALSE(std::filesystem::exists(folder / "copy"));
            continue;
        }
        for (const char *copy : {"copy", "no folder/copy"}) {
            EXPECT_EQ(fileCrc(folder / "file", crc, folder / copy), static_cast<int64_t>(size));
            EXPECT_EQ(crc, bitByBit(bytes.data(), size)) << size;
        }
        uint32_t copyCrc = 0;
        EXPECT_EQ(fileCrc(folder / "copy", copyCrc), static_cast<int64_t>(size));
        EXPECT_EQ(copyCrc, crc);
    }
    std::filesystem::remove_all(folder);
}

} // namespace
