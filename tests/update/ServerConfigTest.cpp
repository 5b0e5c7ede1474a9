#include "update/ServerConfig.h"

#include "update/Crc32.h"

#include <algorithm>
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

constexpr std::array<uint8_t, 8> kKey{0x10, 0x32, 0x54, 0x76, 0x98, 0xBA, 0xDC, 0xFE};

class ServerConfigFile : public ::testing::Test {
protected:
    std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("qor_netcfg_test_" + std::to_string(getpid()));

    void TearDown() override { std::filesystem::remove(path); }

    int32_t load(const void *bytes, size_t count, ServerConfigRecord &record) {
        std::ofstream file(path, std::ios::binary | std::ios::trunc);
        file.write(static_cast<const char *>(bytes), static_cast<std::streamsize>(count));
        file.close();
        return loadServerConfig(path, record);
    }

    // A record put together by hand from the layout, so that a maker and a reader wrong in the same way are
    // found. The user's name fills its field.
    static ServerConfigRecord storedByHand() {
        ServerConfigRecord record{};
        std::copy(kKey.begin(), kKey.end(), record.begin());
        const uint8_t numbers[] = {10, 0, 200, 255, 0x15, 0x08, 1, 0, 0xD4, 0xC3, 0xB2, 0xA1};
        std::copy(std::begin(numbers), std::end(numbers), record.begin() + 8);
        std::fill_n(record.begin() + 20, 32, uint8_t{'u'});
        record[52] = 'p';
        record[84] = 'f';
        for (size_t i = 0; i <= 331; ++i)
            record[8 + i] ^= static_cast<uint8_t>((i % 256) ^ kKey[i % 8]);
        const uint32_t check = crcRegister(record.data(), 340);
        for (size_t i = 0; i < 4; ++i)
            record[340 + i] = static_cast<uint8_t>(check >> (8 * i));
        return record;
    }
};

TEST_F(ServerConfigFile, HasAFixedLayout) {
    const ServerConfigRecord stored = storedByHand();
    ServerConfigRecord record;
    ASSERT_EQ(load(stored.data(), stored.size(), record), 1);
    const ServerConfig config = getServerConfig(record);
    EXPECT_EQ(config.server.address, "10.0.200.255");
    EXPECT_EQ(config.server.port, 0x10815u);
    EXPECT_EQ(config.reserved, 0xA1B2C3D4u);
    EXPECT_EQ(config.server.user, std::string(32, 'u'));
    EXPECT_EQ(config.server.password, "p");
    EXPECT_EQ(config.folder, "f");
    EXPECT_EQ(makeServerConfig(config, kKey), stored);
}

TEST_F(ServerConfigFile, DamageAndWrongSizesAreFound) {
    const ServerConfigRecord stored = storedByHand();
    ServerConfigRecord record;
    for (size_t i = 0; i < stored.size(); ++i) {
        ServerConfigRecord damaged = stored;
        damaged[i] ^= static_cast<uint8_t>(1 << i % 8);
        ASSERT_EQ(load(damaged.data(), damaged.size(), record), -1) << "byte " << i;
    }
    std::array<uint8_t, 345> longer{};
    std::copy(stored.begin(), stored.end(), longer.begin());
    for (size_t size : {0, 343, 345})
        EXPECT_EQ(load(longer.data(), size, record), -2) << size;
    std::filesystem::remove(path);
    EXPECT_EQ(loadServerConfig(path, record), -1);
}

} // namespace
