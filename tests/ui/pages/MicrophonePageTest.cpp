#include "ui/pages/MicrophonePage.h"

#include "ui/pages/PageTest.h"

#include <gmock/gmock.h>
#include <memory>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr char kRunning[] = "_is_task_running(normal.exe)";
constexpr char kStart[] = "_start_task(normal.exe, \"\", 0, null)";
constexpr char kKill[] = "_kill_task(normal.exe)";
constexpr char kWrite[] = "setDeviceProperty(1)";
constexpr char kSilent[] = "/right/png/silent-volumeHigh.png";
constexpr char kSound[] = "/left/png/y1.png";

class MicrophonePageTest : public PageTest {
protected:
    MicrophonePageTest() {
        device.system.head.micLevel = 40;
        device.system.head.monitorLevel = 25;
    }

    // Builds the page and forgets the calls of its set-up.
    void start() {
        page = std::make_unique<MicrophonePage>(context(), nullptr);
        recorder.calls.clear();
    }

    std::vector<std::string> callsOf(const std::function<void()> &act) {
        recorder.calls.clear();
        act();
        return recorder.calls;
    }

    void expectImages(const char *mute, const char *monitoring) {
        EXPECT_THAT(form.pushButton_15->styleSheet().toStdString(), HasSubstr(mute));
        EXPECT_THAT(form.pushButton_16->styleSheet().toStdString(), HasSubstr(monitoring));
    }

    SystemHead &head = device.system.head;
    std::unique_ptr<MicrophonePage> page;
};

TEST_F(MicrophonePageTest, SetUpSendsTheLevelThenStartsMonitoring) {
    const struct {
        uint8_t muted, monitoring;
        int32_t running;
        std::vector<std::string> calls;
        const char *muteImage, *monitoringImage;
    } cases[] = {
        {0, 0, 0, {"_SetVolum(40, 1, 0)"}, kSound, kSilent},
        {0, 1, 0, {"_SetVolum(40, 1, 0)", kRunning, kStart}, kSound, kSound},
        {1, 1, 1, {"_SetVolum(0, 1, 0)", kRunning}, kSilent, kSound},
        {0, 1, -1, {"_SetVolum(40, 1, 0)", kRunning, kStart}, kSound, kSound},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(testing::Message() << int(c.muted) << " " << int(c.monitoring) << " " << c.running);
        head.micMuted = c.muted;
        head.monitoringOn = c.monitoring;
        recorder.taskRunning = c.running;
        EXPECT_EQ(callsOf([this] { MicrophonePage(context(), nullptr); }), c.calls);
        EXPECT_EQ(form.verticalSlider->value(), 40);
        EXPECT_EQ(form.label_15->text(), "40");
        EXPECT_EQ(form.verticalSlider_2->value(), 25);
        EXPECT_EQ(form.label_16->text(), "25");
        expectImages(c.muteImage, c.monitoringImage);
    }
}

TEST_F(MicrophonePageTest, LevelSliderSendsEachStepAndMutesAtZero) {
    start();
    EXPECT_THAT(callsOf([this] { form.verticalSlider->setValue(41); }),
                ElementsAre("_SetVolum(41, 1, 0)", kWrite));
    EXPECT_EQ(form.label_15->text(), "41");
    EXPECT_EQ(recorder.system.head.micLevel, 41);
    EXPECT_EQ(recorder.system.headCopy.micLevel, 41);

    EXPECT_THAT(callsOf([this] { form.verticalSlider->setValue(0); }),
                ElementsAre("_SetVolum(0, 1, 0)", kWrite));
    EXPECT_EQ(recorder.system.head.micMuted, 1);
    expectImages(kSilent, kSilent);

    EXPECT_THAT(callsOf([this] { form.verticalSlider->setValue(100); }),
                ElementsAre("_SetVolum(100, 1, 0)", kWrite));
    EXPECT_EQ(recorder.system.head.micMuted, 0);
    expectImages(kSound, kSilent);
}

TEST_F(MicrophonePageTest, MonitoringSliderStartsTheHelperOnceAndStopsItAtZero) {
    start();
    EXPECT_THAT(callsOf([this] { form.verticalSlider_2->setValue(26); }),
                ElementsAre(kRunning, kStart, kWrite));
    EXPECT_EQ(form.label_16->text(), "26");
    EXPECT_EQ(recorder.system.head.monitorLevel, 26);
    EXPECT_EQ(recorder.system.head.monitoringOn, 1);
    expectImages(kSound, kSound);

    recorder.taskRunning = 1;
    EXPECT_THAT(callsOf([this] { form.verticalSlider_2->setValue(27); }), ElementsAre(kRunning, kWrite));

    EXPECT_THAT(callsOf([this] { form.verticalSlider_2->setValue(0); }), ElementsAre(kKill, kWrite));
    EXPECT_EQ(recorder.system.head.monitoringOn, 0);
    expectImages(kSound, kSilent);

    // The library still counts the helper as running: it is taken at its word.
    EXPECT_THAT(callsOf([this] { form.verticalSlider_2->setValue(5); }), ElementsAre(kRunning, kWrite));
    EXPECT_EQ(recorder.system.head.monitoringOn, 1);
}

TEST_F(MicrophonePageTest, ButtonsSwitchAndKeepTheLevels) {
    start();
    const auto expectClick = [this](QPushButton *button, const std::vector<std::string> &calls, bool muted,
                                    bool monitoring) {
        SCOPED_TRACE(button->objectName().toStdString());
        EXPECT_EQ(callsOf([button] { button->click(); }), calls);
        EXPECT_EQ(recorder.system.head.micMuted, muted);
        EXPECT_EQ(recorder.system.head.monitoringOn, monitoring);
        expectImages(muted ? kSilent : kSound, monitoring ? kSound : kSilent);
    };
    expectClick(form.pushButton_15, {"_SetVolum(0, 1, 0)", kWrite}, true, false);
    expectClick(form.pushButton_15, {"_SetVolum(40, 1, 0)", kWrite}, false, false);
    for (QPushButton *button : {form.pushButton_16, form.btn_uninstall_mic}) {
        expectClick(button, {kRunning, kStart, kWrite}, false, true);
        expectClick(button, {kKill, kWrite}, false, false);
    }
    expectClick(form.pushButton_5, {kWrite}, false, false);
    EXPECT_EQ(recorder.system.head.micPageSwitch, 1);
    EXPECT_THAT(form.pushButton_5->styleSheet().toStdString(), HasSubstr("btn_open.png"));
    EXPECT_EQ(recorder.system.head.micLevel, 40);
    EXPECT_EQ(recorder.system.head.monitorLevel, 25);
}

} // namespace
