// libFuzzer entry: reports that the receiver and the headset send. The input is a report of 64 bytes; shorter
// ones are filled with zeros.
#include "fuzz/Require.h"
#include "hid/HidMatching.h"
#include "hid/KeyEvent.h"
#include "hid/UpgradeStage.h"
#include "ui/pages/BatteryReport.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <set>

namespace {

using Report = std::array<uint8_t, KeyEvent::kReportSize>;

void readKeyEvent(const Report &report) {
    const bool press = KeyEvent::isButtonPress(report.data());
    require(press == (std::memcmp(report.data(), "\xFF\xFF\xFF\xFF\x01", 5) == 0));
    for (const uint8_t state : {uint8_t{0}, uint8_t{1}}) {
        Report answer = report;
        KeyEvent::writeAnswer(answer.data(), state);
        require(KeyEvent::isButtonPress(answer.data()) && answer[5] == 1 - state);
        require(std::all_of(answer.begin() + 6, answer.end(), [](uint8_t byte) { return byte == 0; }));
    }
}

void readBattery(const Report &report) {
    static const std::set<std::string> kPictures = [] {
        std::set<std::string> names{"/page4/png/bp_none.png", "/page4/png/chging.png",
                                    "/page4/png/bp_100.png"};
        for (int percent = 10; percent < 90; percent += 10)
            names.insert("/page4/png/bp_" + std::to_string(percent) + ".png");
        return names;
    }();
    const BatteryView view = describeBattery(report);
    require(kPictures.count(view.batteryImage) == 1);
    require(view.usbImage == (report[1] ? "/page4/png/usb_cnt.png" : "/page4/png/usb_dis.png"));
    require(view.percentage.empty() == (report[1] == 0 || report[2] == 1));
    require(view.percentage.empty() || view.percentage.back() == '%');
    require(view.percentage.empty() ||
            (std::stoi(view.percentage) >= 10 && std::stoi(view.percentage) <= 100));
}

void readUpgradeStage(const Report &report) {
    uint32_t stage = 0;
    int32_t value = 0;
    std::memcpy(&stage, report.data(), sizeof stage);
    std::memcpy(&value, report.data() + 4, sizeof value);
    const UpgradeDisplay display = upgradeDisplay(stage, value);
    require((display.status == nullptr) == (stage == 4));
    require(display.progress == (stage == 4   ? std::optional(value)
                                 : stage == 0 ? std::optional(0)
                                              : std::nullopt));
}

void matchPath(const Report &report) {
    const std::wstring path(report.begin(), report.end());
    require(!HidMatching::pathMatches(path, L""));
    const std::wstring pattern = HidMatching::interfacePattern(report[0], report[1]);
    require(pattern.empty() == (report[0] == 0 && report[1] == 0));
    require(pattern.empty() || HidMatching::pathMatches(path + L"&MI_" + pattern.substr(4) + path, pattern));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    Report report{};
    std::copy_n(data, std::min(size, report.size()), report.begin());
    readKeyEvent(report);
    readBattery(report);
    readUpgradeStage(report);
    matchPath(report);
    return 0;
}
