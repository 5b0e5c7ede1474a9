#include "ui/pages/BatteryStatus.h"

#include "ui/pages/PageTest.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class BatteryStatusTest : public PageTest {
protected:
    BatteryStatusTest() : status(context(), timer, nullptr) { device.usbIds = {{0x040B, 0xF779, 3, 2}}; }

    void reply(uint8_t usb, uint8_t charging, uint8_t step) {
        recorder.reply[1] = usb;
        recorder.reply[2] = charging;
        recorder.reply[3] = step;
    }

    void expectShown(const char *usbImage, const char *batteryImage, const char *percentage) {
        EXPECT_THAT(form.label_227->styleSheet().toStdString(), HasSubstr(usbImage));
        EXPECT_THAT(form.label_228->styleSheet().toStdString(), HasSubstr(batteryImage));
        EXPECT_EQ(form.label_240->text(), percentage);
    }

    QTimer timer;
    BatteryStatus status;
};

TEST_F(BatteryStatusTest, AsksTheReceiverAndShowsTheReply) {
    reply(1, 0, 4);
    status.refreshBatteryStatus();
    EXPECT_THAT(recorder.calls, ElementsAre("_hid_trans_data(1035, 63353, 3, 2)"));
    ASSERT_EQ(recorder.reports.size(), 1u);
    std::array<uint8_t, 64> request{};
    request[0] = 0x0B;
    request[1] = 0x01;
    EXPECT_EQ(recorder.reports[0], request);
    expectShown(":/page4/png/usb_cnt.png", ":/page4/png/bp_50.png", "50%");
    reply(0, 1, 4);
    status.refreshBatteryStatus();
    expectShown(":/page4/png/usb_dis.png", ":/page4/png/bp_none.png", "");
}

TEST_F(BatteryStatusTest, RefusedRequestLeavesTheLastState) {
    reply(1, 0, 0);
    status.refreshBatteryStatus();
    reply(0, 0, 0);
    for (const int32_t refused : {0, -1}) {
        recorder.transferResult = refused;
        status.refreshBatteryStatus();
        expectShown("usb_cnt.png", "bp_10.png", "10%");
    }
}

} // namespace
