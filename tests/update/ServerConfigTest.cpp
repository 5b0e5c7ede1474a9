#include "update/ServerConfig.h"

#include "update/Crc32.h"

#include <fstream>
#include <gtest/gtest.h>
#include <stdexcept>

namespace {

constexpr std::array<uint8_t, 8> kKey{0x10, 0x32, 0x54, 0x76, 0x98, 0xBA, 0xDC, 0xFE};

ServerConfig fullConfig() {
    ServerConfig config;
    config.server.address = "192.168.10.255";
    config.server.port = 0x00012121; // more than a port, to see all four bytes
    config.server.user = std::string(32, 'u');
    config.server.password = std::string(32, 'p');
    config.reserved = 0xA1B2C3D4;
    config.folder = std::string(256, 'f');
    return config;
}

class ServerConfigFile : public ::testing::Test {
protected:
    std::filesystem::path path = std::filesystem::temp_directory_path() / "qor_netcfg_test.fsc";

    void TearDown() override { std::filesystem::remove(path); }

    int32_t load(const void *bytes, size_t count, ServerConfigRecord &record) {
        std::ofstream file(path, std::ios::binary | std::ios::trunc);
        file.write(static_cast<const char *>(bytes), static_cast<std::streamsize>(count));
        file.close();
        return loadServerConfig(path, record);
    }
};

TEST_F(ServerConfigFile, TextsMayFillTheirFields) {
    const ServerConfigRecord stored = makeServerConfig(fullConfig(), kKey);
    ServerConfigRecord record;
    ASSERT_EQ(load(stored.data(), stored.size(), record), 1);
    const ServerConfig config = getServerConfig(record);
    EXPECT_EQ(config.server.address, "192.168.10.255");
    EXPECT_EQ(config.server.port, 0x00012121u);
    EXPECT_EQ(config.server.user, std::string(32, 'u'));
    EXPECT_EQ(config.server.password, std::string(32, 'p'));
    EXPECT_EQ(config.reserved, 0xA1B2C3D4u);
    EXPECT_EQ(config.folder, std::string(256, 'f'));
}

// A record put together by hand from the layout, so that a maker and a reader wrong in the same way are
// found.
TEST_F(ServerConfigFile, HasTheFixedLayout) {
    ServerConfigRecord plain{};
    std::copy(kKey.begin(), kKey.end(), plain.begin());
    const uint8_t head[] = {10, 0, 200, 7, 0x15, 0x08, 0, 0, 0xD4, 0xC3, 0xB2, 0xA1, 'u', 's', 'e', 'r'};
    std::copy(std::begin(head), std::end(head), plain.begin() + 8);
    plain[52] = 'p';
    plain[84] = 'f';
    ServerConfigRecord stored = plain;
    for (size_t i = 0; i <= 331; ++i)
        stored[8 + i] ^= static_cast<uint8_t>((i % 256) ^ kKey[i % 8]);
    const uint32_t check = crcRegisterByTable(stored.data(), 340);
    for (size_t i = 0; i < 4; ++i)
        stored[340 + i] = static_cast<uint8_t>(check >> (8 * i));

    ServerConfigRecord record;
    ASSERT_EQ(load(stored.data(), stored.size(), record), 1);
    const ServerConfig config = getServerConfig(record);
    EXPECT_EQ(config.server.address, "10.0.200.7");
    EXPECT_EQ(config.server.port, 2069u);
    EXPECT_EQ(config.reserved, 0xA1B2C3D4u);
    EXPECT_EQ(config.server.user, "user");
    EXPECT_EQ(config.server.password, "p");
    EXPECT_EQ(config.folder, "f");
    EXPECT_EQ(makeServerConfig(config, kKey), stored);
}

TEST_F(ServerConfigFile, DamageAndWrongSizesAreFound) {
    const ServerConfigRecord stored = makeServerConfig(fullConfig(), kKey);
    ServerConfigRecord record;
    for (size_t i = 0; i < stored.size(); ++i)
        for (int bit = 0; bit < 8; bit += i % 16 == 0 ? 1 : 7) {
            ServerConfigRecord damaged = stored;
            damaged[i] ^= static_cast<uint8_t>(1 << bit);
            ASSERT_EQ(load(damaged.data(), damaged.size(), record), -1) << "byte " << i << " bit " << bit;
        }
    std::array<uint8_t, 345> longer{};
    std::copy(stored.begin(), stored.end(), longer.begin());
    for (size_t size : {0, 1, 343, 345})
        EXPECT_EQ(load(longer.data(), size, record), -2) << size;
    std::filesystem::remove(path);
    EXPECT_EQ(loadServerConfig(path, record), -1);
}

TEST(MakeServerConfig, RefusesWhatDoesNotFit) {
    const auto refuses = [](auto change) {
        ServerConfig config = fullConfig();
        change(config);
        EXPECT_THROW(makeServerConfig(config, kKey), std::invalid_argument);
    };
    for (const char *address : {"", "1.2.3", "1.2.3.256", "1.2.3.4.5", "1.2.3.4 ", "1.2.3.-4"})
        refuses([&](ServerConfig &config) { config.server.address = address; });
    refuses([](ServerConfig &config) { config.server.user += 'u'; });
    refuses([](ServerConfig &config) { config.server.password += 'p'; });
    refuses([](ServerConfig &config) { config.folder += 'f'; });
    refuses([](ServerConfig &config) { config.folder = std::string("a\0b", 3); });
}

} // namespace
