#include "update/Crc32.h"

#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace {

TEST(Crc, IsTheComplementOfThePublishedCheckValues) {
    EXPECT_EQ(crcRegister("", 0), ~0x00000000u);
    EXPECT_EQ(crcRegister("123456789", 9), ~0xCBF43926u);
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
        std::string bytes(size, 'x');
        bytes.back() = 'y';
        std::ofstream(folder / "file", std::ios::binary) << bytes;
        EXPECT_EQ(fileCrc(folder / "file", crc, folder / "copy"), static_cast<int64_t>(size));
        EXPECT_EQ(crc, crcRegister(bytes.data(), size)) << size;
        uint32_t copyCrc = 0;
        EXPECT_EQ(fileCrc(folder / "copy", copyCrc), static_cast<int64_t>(size));
        EXPECT_EQ(copyCrc, crc);
    }
    std::filesystem::remove_all(folder);
}

} // namespace
