#include "update/Crc32.h"

#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

std::vector<uint8_t> mixedBytes(size_t count) {
    std::vector<uint8_t> bytes(count);
    uint32_t state = 12345;
    for (uint8_t &byte : bytes)
        byte = static_cast<uint8_t>((state = state * 1664525u + 1013904223u) >> 24);
    return bytes;
}

TEST(Crc, IsTheComplementOfThePublishedCheckValues) {
    EXPECT_EQ(crcRegister("", 0), ~0x00000000u);
    EXPECT_EQ(crcRegister("123456789", 9), ~0xCBF43926u);
    EXPECT_EQ(crcRegisterByTable("123456789", 9), ~0xCBF43926u);
}

TEST(Crc, EveryLengthAndAlignmentAgreesWithTheTable) {
    const std::vector<uint8_t> bytes = mixedBytes(400);
    for (size_t from : {0, 1, 7})
        for (size_t count = 0; count <= 330; ++count)
            ASSERT_EQ(crcRegister(&bytes[from], count), crcRegisterByTable(&bytes[from], count))
                << from << " " << count;
}

TEST(Crc, OfFiles) {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("qor_crc_test_" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    uint32_t crc = 77;
    EXPECT_EQ(fileCrc(folder / "missing", crc), -1);
    std::ofstream(folder / "file");
    EXPECT_EQ(fileCrc(folder / "file", crc), -2);
    EXPECT_EQ(crc, 77u);
    for (size_t size : {size_t{1}, size_t{1} << 20, (size_t{1} << 20) + 1}) {
        const std::vector<uint8_t> bytes = mixedBytes(size);
        std::ofstream(folder / "file", std::ios::binary)
            .write(reinterpret_cast<const char *>(bytes.data()), static_cast<std::streamsize>(size));
        EXPECT_EQ(fileCrc(folder / "file", crc, folder / "copy"), static_cast<int64_t>(size));
        EXPECT_EQ(crc, crcRegisterByTable(bytes.data(), size)) << size;
        uint32_t copyCrc = 0;
        EXPECT_EQ(fileCrc(folder / "copy", copyCrc), static_cast<int64_t>(size));
        EXPECT_EQ(copyCrc, crc);
    }
    std::filesystem::remove_all(folder);
}

} // namespace
