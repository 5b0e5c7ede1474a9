#include "hid/KeyEvent.h"

#include <algorithm>
#include <array>

namespace KeyEvent {

namespace {

constexpr std::array<uint8_t, 5> kButtonPress = {0xFF, 0xFF, 0xFF, 0xFF, 0x01};

} // namespace

bool isButtonPress(const uint8_t *data) {
    return std::equal(kButtonPress.begin(), kButtonPress.end(), data);
}

void writeAnswer(uint8_t *data, uint8_t switchState) {
    std::fill_n(data, kReportSize, uint8_t{0});
    std::copy(kButtonPress.begin(), kButtonPress.end(), data);
    data[kButtonPress.size()] = switchState ^ 1;
}

} // namespace KeyEvent
