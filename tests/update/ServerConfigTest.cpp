// The server configuration, and the CRC by which it and the installers are recognised.

#include "update/ServerConfig.h"
#include "update/Crc32.h"

#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace {

const std::filesystem::path kPath =
    std::filesystem::temp_directory_path() / ("qor_file_test_" + std::to_string(getpid()));

void write(const std::string &bytes) {
    std::ofstream(kPath, std::ios::binary) << bytes;
}

TEST(StoredFiles, HaveTheComplementOfThePublishedCrc) {
    EXPECT_EQ(crcRegister("123456789", 9), ~0xCBF43926u);
    uint32_t crc = 77;
    EXPECT_EQ(fileCrc(kPath, crc), -1);
    write("");
    EXPECT_EQ(fileCrc(kPath, crc), -2);
    EXPECT_EQ(crc, 77u);
    const std::string bytes = std::string(1 << 20, 'x') + 'y'; // one more than is read at once
    write(bytes);
    EXPECT_EQ(fileCrc(kPath, crc), static_cast<int64_t>(bytes.size()));
    EXPECT_EQ(crc, crcRegister(bytes.data(), bytes.size()));
    std::filesystem::remove(kPath);
}

TEST(StoredFiles, ServerConfigurationHasAFixedLayoutAndShowsDamage) {
    const std::array<uint8_t, 8> key{0x10, 0x32, 0x54, 0x76, 0x98, 0xBA, 0xDC, 0xFE};
    const std::string user(32, 'u'); // fills its field
    const ServerConfig config{{"10.0.200.255", 0x10815, user, "p"}, 0xA1B2C3D4, "f"};
    const ServerConfigRecord stored = makeServerConfig(config, key);
    // The check field of the record as another program put it together.
    EXPECT_EQ(std::string(stored.end() - 4, stored.end()), "\xB2\xB9\x39\xB0");

    ServerConfigRecord record;
    EXPECT_EQ(loadServerConfig(kPath, record), -1) << "missing";
    std::string bytes(stored.begin(), stored.end());
    write(bytes);
    ASSERT_EQ(loadServerConfig(kPath, record), 1);
    EXPECT_EQ(makeServerConfig(getServerConfig(record), key), stored);
    for (char &byte : bytes) {
        byte ^= 4;
        write(bytes);
        ASSERT_EQ(loadServerConfig(kPath, record), -1) << "byte " << &byte - bytes.data();
        byte ^= 4;
    }
    for (size_t size : {345, 343, 0}) {
        std::filesystem::resize_file(kPath, size);
        EXPECT_EQ(loadServerConfig(kPath, record), -2) << size;
    }
    std::filesystem::remove(kPath);
}

} // namespace
