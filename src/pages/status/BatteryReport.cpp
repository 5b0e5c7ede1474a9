#include "pages/status/BatteryReport.h"

#include <algorithm>

namespace {

constexpr uint8_t kBatteryReportCode = 0x0B;
constexpr uint8_t kAsk = 0x01;

const char *const kConnected = "/page4/png/usb_cnt.png";
const char *const kDisconnected = "/page4/png/usb_dis.png";

// From 90 % on the battery is drawn full.
std::string levelImage(int percent) {
    return "/page4/png/bp_" + std::to_string(percent < 90 ? percent : 100) + ".png";
}

// 10..100
int percentLeft(const std::array<uint8_t, 64> &reply) {
    return std::min((reply[3] + 1) * 10, 100);
}

} // namespace

std::array<uint8_t, 64> makeBatteryRequest() {
    return {kBatteryReportCode, kAsk};
}

BatteryView describeBattery(const std::array<uint8_t, 64> &reply) {
    if (reply[1] == 0)
        return {kDisconnected, "/page4/png/bp_none.png", ""};
    if (reply[2] == 1)
        return {kConnected, "/page4/png/chging.png", ""};
    const int percent = percentLeft(reply);
    return {kConnected, levelImage(percent), std::to_string(percent) + "%"};
}

std::optional<int> LowBatteryWatch::hear(const std::array<uint8_t, 64> &reply) {
    if (reply[1] == 0)
        return std::nullopt;
    if (reply[2] == 1) {
        lastTold_ = 100;
        return std::nullopt;
    }
    const int percent = percentLeft(reply);
    if (percent > 20 || percent >= lastTold_)
        return std::nullopt;
    lastTold_ = percent;
    return percent;
}
