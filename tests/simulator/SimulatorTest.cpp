// The command that steers the simulated headset; its memory is used by the tests of the program.
#include "device/DeviceApi.h"
#include "device/qor_ecd_api.h"

#include <gtest/gtest.h>
#include <process.h>
#include <string>

static constexpr uint32_t kKey = DeviceApi::kAccessKey;

static intptr_t headset(const std::string &words) { // its exit code
    return _spawnl(_P_WAIT, HEADSET, "headset", words.c_str(), nullptr);
}

// Byte of the answer to a battery request.
template<size_t Index>
static int32_t battery() {
    const uint8_t request[64] = {0x0B, 0x01};
    uint8_t answer[64] = {};
    return _hid_trans_data(kKey, 0x040B, 0xF779, 3, 2, request, answer) == 64 ? answer[Index] : -1;
}

TEST(Simulator, CommandsWorkWhileTheLibraryIsLoaded) {
    EXPECT_EQ(headset("reset"), 0);
    const struct {
        const char *words;
        int32_t (*call)();
        int32_t usual, afterwards;
    } cases[] = {
        {"battery 30", battery<3>, 6, 2},
        {"refuse", battery<1>, 1, -1},
        {"unplug", [] { return getDeviceCount(kKey); }, 1, 0},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(c.call(), c.usual) << c.words;
        EXPECT_EQ(headset(c.words), 0);
        EXPECT_EQ(c.call(), c.afterwards) << c.words;
    }
}
