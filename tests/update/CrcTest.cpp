#include "update/Crc32.h"

#include <fstream>
#include <gtest/gtest.h>
#include <numeric>
#include <string>
#include <vector>

namespace {

uint32_t bitByBit(const std::vector<uint8_t> &bytes, size_t from, size_t count) {
    uint32_t crc = 0xFFFFFFFFu;
    for (size_t i = 0; i < count; ++i) {
        crc ^= bytes[from + i];
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

TEST(Crc, KnownVectorsWithoutFinalInversion) {
    // The published check values of CRC-32 are the complements.
    const struct {
        std::string text;
        uint32_t usual;
    } vectors[] = {{"", 0x00000000},
                   {"a", 0xE8B7BE43},
                   {"123456789", 0xCBF43926},
                   {"The quick brown fox jumps over the lazy dog", 0x414FA339}};
    for (const auto &vector : vectors)
        EXPECT_EQ(crcRegister(vector.text.data(), vector.text.size()), ~vector.usual) << vector.text;
    EXPECT_EQ(crcRegister(std::vector<uint8_t>(1000, 0).data(), 1000),
              bitByBit(std::vector<uint8_t>(1000), 0, 1000));
}

TEST(Crc, EveryLengthAndAlignmentAgreesWithTheDefinition) {
    const std::vector<uint8_t> bytes = mixedBytes(400);
    for (size_t from : {0, 1, 7})
        for (size_t count = 0; count <= 330; ++count) {
            const uint32_t expected = bitByBit(bytes, from, count);
            ASSERT_EQ(crcRegister(&bytes[from], count), expected) << from << " " << count;
            ASSERT_EQ(crcRegisterByTable(&bytes[from], count), expected) << from << " " << count;
        }
}

TEST(Crc, PiecesGiveTheSameAsTheWhole) {
    const std::vector<uint8_t> bytes = mixedBytes(5000);
    const uint32_t whole = crcRegister(bytes.data(), bytes.size());
    for (size_t first : {0u, 1u, 63u, 64u, 65u, 4999u, 5000u})
        EXPECT_EQ(crcRegister(bytes.data() + first, bytes.size() - first, crcRegister(bytes.data(), first)),
                  whole);
}

class FileCrc : public ::testing::Test {
protected:
    std::filesystem::path folder = std::filesystem::temp_directory_path() / "qor_crc_test";

    void SetUp() override { std::filesystem::create_directories(folder); }
    void TearDown() override { std::filesystem::remove_all(folder); }

    std::filesystem::path write(const char *name, const std::vector<uint8_t> &bytes) {
        std::ofstream file(folder / name, std::ios::binary);
        file.write(reinterpret_cast<const char *>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        return folder / name;
    }
};

TEST_F(FileCrc, CoversWholeFilesOfAnySize) {
    for (size_t size : {size_t{1}, size_t{344}, size_t{1} << 20, (size_t{1} << 20) + 1, size_t{3} << 20}) {
        const std::vector<uint8_t> bytes = mixedBytes(size);
        uint32_t crc = 0;
        EXPECT_EQ(fileCrc(write("file", bytes), crc), static_cast<int64_t>(size));
        EXPECT_EQ(crc, crcRegisterByTable(bytes.data(), bytes.size())) << size;
    }
}

TEST_F(FileCrc, MissingAndEmptyFilesLeaveTheResultAlone) {
    uint32_t crc = 77;
    EXPECT_EQ(fileCrc(folder / "missing", crc), -1);
    EXPECT_EQ(fileCrc(write("empty", {}), crc, folder / "copy"), -2);
    EXPECT_EQ(crc, 77u);
    EXPECT_FALSE(std::filesystem::exists(folder / "copy"));
}

TEST_F(FileCrc, CopiesTheBytes) {
    const std::vector<uint8_t> bytes = mixedBytes(1500000);
    uint32_t crc = 0, copyCrc = 1;
    fileCrc(write("file", bytes), crc, folder / "copy");
    EXPECT_EQ(fileCrc(folder / "copy", copyCrc), 1500000);
    EXPECT_EQ(copyCrc, crc);
    EXPECT_EQ(fileCrc(folder / "file", copyCrc, folder / "no folder" / "copy"), 1500000);
}

} // namespace
