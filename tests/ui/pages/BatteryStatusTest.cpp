#include "ui/pages/BatteryStatus.h"
#include "ui/pages/PageTest.h"

#include <gmock/gmock.h>
#include <QTimer>

namespace {

using testing::Each;

using Report = std::array<uint8_t, 64>;

using BatteryStatusTest = PageTest;

TEST_F(BatteryStatusTest, ShowsEachReplyAndKeepsItWhenRefused) {
    QTimer timer;
    const BatteryStatus status(context(), timer);
    const struct {
        int32_t result;
        uint8_t usb, charging, step;
        const char *usbImage, *batteryImage, *percentage;
    } cases[] = {
        {64, 1, 0, 0, "usb_cnt", "bp_10", "10%"},    {64, 1, 2, 3, "usb_cnt", "bp_40", "40%"},
        {1, 255, 255, 5, "usb_cnt", "bp_60", "60%"}, {64, 1, 0, 7, "usb_cnt", "bp_80", "80%"},
        {64, 1, 0, 8, "usb_cnt", "bp_100", "90%"},   {64, 1, 0, 255, "usb_cnt", "bp_100", "100%"},
        {64, 7, 1, 4, "usb_cnt", "chging", ""},      {0, 0, 0, 0, "usb_cnt", "chging", ""},
        {-1, 0, 0, 0, "usb_cnt", "chging", ""},      {64, 0, 1, 4, "usb_dis", "bp_none", ""},
    };
    const auto shown = [](const char *image) {
        return QString("background-image: url(:/page4/png/%1.png);").arg(image);
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(&c - cases);
        recorder.reply.fill(0xEE); // the other bytes mean nothing
        recorder.reply[1] = c.usb;
        recorder.reply[2] = c.charging;
        recorder.reply[3] = c.step;
        recorder.transferResult = c.result;
        QMetaObject::invokeMethod(&timer, "timeout");
        EXPECT_EQ(form.label_227->styleSheet(), shown(c.usbImage));
        EXPECT_EQ(form.label_228->styleSheet(), shown(c.batteryImage));
        EXPECT_EQ(form.label_240->text(), c.percentage);
    }
    EXPECT_THAT(recorder.reports, Each(Report{0x0B, 0x01}));
    EXPECT_EQ(recorder.reports.size(), std::size(cases));
}

} // namespace
