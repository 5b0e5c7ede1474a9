#include "ui/pages/BatteryReport.h"

#include <gtest/gtest.h>

namespace {

BatteryView viewOf(int usb, int charging, int step) {
    std::array<uint8_t, 64> reply;
    reply.fill(0xEE); // the other bytes mean nothing
    reply[1] = static_cast<uint8_t>(usb);
    reply[2] = static_cast<uint8_t>(charging);
    reply[3] = static_cast<uint8_t>(step);
    return describeBattery(reply);
}

TEST(BatteryReport, ShowsEachStep) {
    const struct {
        int step;
        const char *percentage, *image;
    } cases[] = {
        {0, "10%", "/page4/png/bp_10.png"},     {1, "20%", "/page4/png/bp_20.png"},
        {2, "30%", "/page4/png/bp_30.png"},     {3, "40%", "/page4/png/bp_40.png"},
        {4, "50%", "/page4/png/bp_50.png"},     {5, "60%", "/page4/png/bp_60.png"},
        {6, "70%", "/page4/png/bp_70.png"},     {7, "80%", "/page4/png/bp_80.png"},
        {8, "90%", "/page4/png/bp_100.png"},    {9, "100%", "/page4/png/bp_100.png"},
        {128, "100%", "/page4/png/bp_100.png"}, {255, "100%", "/page4/png/bp_100.png"},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.step);
        const BatteryView view = viewOf(1, 0, c.step);
        EXPECT_EQ(view.usbImage, "/page4/png/usb_cnt.png");
        EXPECT_EQ(view.batteryImage, c.image);
        EXPECT_EQ(view.percentage, c.percentage);
    }
}

TEST(BatteryReport, ConnectionAndChargingComeFirst) {
    const BatteryView absent = viewOf(0, 1, 4);
    EXPECT_EQ(absent.usbImage, "/page4/png/usb_dis.png");
    EXPECT_EQ(absent.batteryImage, "/page4/png/bp_none.png");
    EXPECT_EQ(absent.percentage, "");
    const BatteryView charging = viewOf(7, 1, 4);
    EXPECT_EQ(charging.usbImage, "/page4/png/usb_cnt.png");
    EXPECT_EQ(charging.batteryImage, "/page4/png/chging.png");
    EXPECT_EQ(charging.percentage, "");
    EXPECT_EQ(viewOf(255, 2, 2).percentage, "30%"); // only 1 is charging
}

} // namespace
