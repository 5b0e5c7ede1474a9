// The LED page, the battery display and the status strip.
#include "ui/pages/BatteryStatus.h"
#include "ui/pages/LedPage.h"
#include "ui/pages/PageTest.h"
#include "ui/pages/StatusStrip.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <QImage>
#include <QTest>

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

class LedPageTest : public PageTest {
protected:
    LedPageTest() {
        device.usbIds = {{1, 2, 3, 4}};
        form.comboBox_3->setCurrentIndex(3);
        page = std::make_unique<LedPage>(context(), nullptr);
        form.horizontalSlider_18->setValue(100);
        EXPECT_THAT(recorder.calls, IsEmpty());
    }

    // Bytes 0..5 of every report sent since the last call; what follows them must be 0.
    std::vector<std::vector<int>> takeReports() {
        std::vector<std::vector<int>> taken;
        for (const auto &report : recorder.reports) {
            EXPECT_TRUE(std::all_of(report.begin() + 6, report.end(), [](int byte) { return byte == 0; }));
            taken.emplace_back(report.begin(), report.begin() + 6);
        }
        recorder.reports.clear();
        EXPECT_THAT(recorder.repliesWanted, Each(false));
        EXPECT_THAT(takeCalls(), Each("_hid_trans_data(1, 2, 3, 4)"));
        return taken;
    }

    // The one report that was just sent, and what the controls tell about it.
    void expectSent(int red, int green, int blue) {
        EXPECT_THAT(takeReports(), ElementsAre(std::vector<int>{0x0A, 3, 100, red, green, blue}));
        EXPECT_EQ(form.lineEdit->text(), QString::number(red));
        EXPECT_EQ(form.lineEdit_2->text(), QString::number(green));
        EXPECT_EQ(form.lineEdit_3->text(), QString::number(blue));
        EXPECT_EQ(form.lineEdit_5->text(), QString("3,100,%1,%2,%3").arg(red).arg(green).arg(blue));
        const QString colour = QString("rgb(%1, %2, %3)").arg(red).arg(green).arg(blue);
        EXPECT_TRUE(form.label_color_pat_2->styleSheet().contains(colour)) << colour.toStdString();
    }

    std::unique_ptr<LedPage> page;
};

TEST_F(LedPageTest, FixedColoursSendOneReportEach) {
    const struct {
        QPushButton *button;
        int red, green, blue;
    } cases[] = {
        {form.pushButton_35, 255, 0, 0},     {form.pushButton_36, 255, 255, 0},
        {form.pushButton_37, 0, 255, 0},     {form.pushButton_38, 0, 255, 255},
        {form.pushButton_39, 255, 0, 255},   {form.pushButton_40, 0, 0, 255},
        {form.pushButton_43, 255, 255, 255},
    };
    for (const auto &c : cases) {
        c.button->click();
        expectSent(c.red, c.green, c.blue);
    }
}

TEST_F(LedPageTest, EntriesAreCheckedAndSentAtOnce) {
    const struct {
        const char *text;
        int sent;
    } cases[] = {{"12", 12}, {"300", 255}, {"-5", 0}, {"", 0}};
    for (const auto &c : cases) {
        form.lineEdit_3->setText(c.text);
        expectSent(255, 255, c.sent);
    }
    QTest::keyClick(form.lineEdit_3, '3');
    expectSent(255, 255, 3); // the 0 of the emptied field has gone
    QTest::keyClick(form.lineEdit_3, Qt::Key_Return);
    expectSent(255, 255, 3);
}

TEST_F(LedPageTest, FieldsFilledFromCodeWaitForTheSendButton) {
    {
        const FlagScope filling(volume.volumeUpdating);
        form.lineEdit->setText("400");
        form.lineEdit_2->setText("-5");
        form.lineEdit_3->setText("x");
    }
    form.comboBox_3->setCurrentIndex(4);
    EXPECT_THAT(recorder.calls, IsEmpty());
    recorder.transferResult = 0; // refused: nobody is told
    form.pushButton_9->click();
    EXPECT_EQ(form.lineEdit_5->text(), "4,100,255,-5,0");
    EXPECT_THAT(takeReports(), ElementsAre(std::vector<int>{0x0A, 4, 100, 255, 0xFB, 0}));
}

TEST_F(LedPageTest, PaletteClickTakesThePixelUnderTheMouse) {
    const QImage palette(":/page4/png/pallete.png");
    ASSERT_EQ(palette.size(), form.label_color_pat->size());
    for (const QPoint &click : {QPoint(40, 128), QPoint(200, 60)}) {
        QTest::mouseClick(form.pushButton_palette, Qt::LeftButton, Qt::NoModifier, click);
        const QColor pixel = palette.pixelColor(click);
        expectSent(pixel.red(), pixel.green(), pixel.blue());
    }
    page->pickPaletteColour(256, 5); // beside it
    EXPECT_THAT(recorder.calls, IsEmpty());
}

class BatteryStatusTest : public PageTest {};

TEST_F(BatteryStatusTest, ShowsEachReplyAndKeepsItWhenRefused) {
    device.usbIds = {{0x040B, 0xF779, 3, 2}};
    QTimer timer;
    BatteryStatus status(context(), timer, nullptr);
    const struct {
        int32_t result;
        uint8_t usb, charging, step;
        const char *usbImage, *batteryImage, *percentage;
    } cases[] = {
        {64, 1, 0, 0, "usb_cnt", "bp_10", "10%"},     {64, 1, 0, 1, "usb_cnt", "bp_20", "20%"},
        {64, 1, 0, 2, "usb_cnt", "bp_30", "30%"},     {64, 1, 2, 3, "usb_cnt", "bp_40", "40%"},
        {64, 1, 0, 4, "usb_cnt", "bp_50", "50%"},     {1, 255, 255, 5, "usb_cnt", "bp_60", "60%"},
        {64, 1, 0, 6, "usb_cnt", "bp_70", "70%"},     {64, 1, 0, 7, "usb_cnt", "bp_80", "80%"},
        {64, 1, 0, 8, "usb_cnt", "bp_100", "90%"},    {64, 1, 0, 9, "usb_cnt", "bp_100", "100%"},
        {64, 1, 0, 255, "usb_cnt", "bp_100", "100%"}, {64, 7, 1, 4, "usb_cnt", "chging", ""},
        {0, 0, 0, 0, "usb_cnt", "chging", ""},        {-1, 0, 0, 0, "usb_cnt", "chging", ""},
        {64, 0, 1, 4, "usb_dis", "bp_none", ""},
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
    EXPECT_THAT(recorder.calls, Each("_hid_trans_data(1035, 63353, 3, 2)"));
    EXPECT_THAT(recorder.reports, Each(std::array<uint8_t, 64>{0x0B, 0x01}));
    EXPECT_EQ(recorder.reports.size(), std::size(cases));
}

class StatusStripTest : public PageTest {
protected:
    // Numbers of the lit labels: captions and values of speaker, equalizer, sound field, microphone, voice
    // effects and noise reduction.
    std::string lit() const {
        std::string numbers;
        for (const char *number :
             {"138", "149", "151", "154", "158", "139", "147", "156", "153", "159", "155"}) {
            const auto *label = window.findChild<QLabel *>(QString("label_") + number);
            const bool on = shows(label, "color: #FFFFFF;");
            EXPECT_NE(on, shows(label, "color: #444645;")) << number;
            numbers += on ? std::string(number) + " " : "";
        }
        return numbers;
    }
};

TEST_F(StatusStripTest, FollowsEveryWriteOfTheSettings) {
    device.sound.muted = 1;
    device.system.head.voiceEffectOn = 1;
    auto strip = std::make_unique<StatusStrip>(context(), nullptr);
    EXPECT_EQ(lit(), "139 147 156 153 ");

    device.sound.equalizerOn = device.sound.soundFieldOn = 1;
    device.system.head.noiseReductionOn = 1;
    device.saveType2Block();
    device.sound.muted = 0; // after the write, but in the same handler
    settle();
    EXPECT_EQ(lit(), "138 149 151 154 158 139 147 156 153 159 155 ");

    // The window writes a last time when it is destroyed; a refresh may be under way then.
    device.saveType1Block();
    strip.reset();
    EXPECT_FALSE(device.written);
    settle();
}

} // namespace
