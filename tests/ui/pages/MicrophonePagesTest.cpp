// Microphone, voice effects and noise reduction: settings of the system block, Windows' level and the helper
// process.
#include "ui/pages/MicrophonePage.h"
#include "ui/pages/NoiseReductionPage.h"
#include "ui/pages/PageTest.h"
#include "ui/pages/VoiceEffectsPage.h"

#include <gmock/gmock.h>
#include <limits>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Calls = std::vector<std::string>;

constexpr char kRunning[] = "_is_task_running(normal.exe)";
constexpr char kStart[] = "_start_task(normal.exe, \"\", 0, null)";
constexpr char kKill[] = "_kill_task(normal.exe)";
constexpr char kWrite[] = "setDeviceProperty(1)";
constexpr char kSound[] = "url(:/left/png/y1.png)";
constexpr char kSilent[] = "url(:/right/png/silent-volumeHigh.png)";

class MicrophonePagesTest : public PageTest {
protected:
    template<typename Page>
    void start() {
        pages = std::make_unique<QObject>(); // takes the last one with it
        new Page(context(), pages.get());
    }

    void expectMicrophone(int level, bool muted, int monitorLevel, bool monitoring) {
        EXPECT_EQ(form.verticalSlider->value(), qBound(0, level, 100));
        EXPECT_EQ(form.label_15->text(), QString::number(level));
        EXPECT_EQ(form.verticalSlider_2->value(), qBound(0, monitorLevel, 100));
        EXPECT_EQ(form.label_16->text(), QString::number(monitorLevel));
        EXPECT_TRUE(shows(form.pushButton_15, muted ? kSilent : kSound));
        EXPECT_TRUE(shows(form.pushButton_16, monitoring ? kSound : kSilent));
    }

    void expectPanel(bool on, const QPushButton *switchButton, const std::vector<QWidget *> &parts) {
        EXPECT_TRUE(shows(switchButton, on ? "btn_open.png" : "btn_close.png"));
        for (const QWidget *part : parts)
            EXPECT_EQ(part->isEnabled(), on) << part->objectName().toStdString();
    }

    SystemHead &head = device.system.head;
    std::unique_ptr<QObject> pages;
};

TEST_F(MicrophonePagesTest, SetUpSendsTheLevelThenStartsMonitoring) {
    constexpr int32_t least = std::numeric_limits<int32_t>::min();
    constexpr int32_t most = std::numeric_limits<int32_t>::max();
    const struct {
        int32_t level, monitorLevel;
        uint8_t muted, monitoring;
        int32_t running;
        Calls calls;
    } cases[] = {
        {40, 25, 0, 0, 0, {"_SetVolum(40, 1, 0)"}},
        {40, 25, 0, 1, 0, {"_SetVolum(40, 1, 0)", kRunning, kStart}},
        {40, 25, 1, 1, 1, {"_SetVolum(0, 1, 0)", kRunning}},
        {40, 25, 0, 1, -1, {"_SetVolum(40, 1, 0)", kRunning, kStart}},
        {least, most, 0, 0, 0, {"_SetVolum(-2147483648, 1, 0)"}},
    };
    for (const auto &c : cases) {
        head.micLevel = c.level;
        head.monitorLevel = c.monitorLevel;
        head.micMuted = c.muted;
        head.monitoringOn = c.monitoring;
        recorder.taskRunning = c.running;
        start<MicrophonePage>();
        EXPECT_EQ(takeCalls(), c.calls);
        expectMicrophone(c.level, c.muted, c.monitorLevel, c.monitoring);
    }
}

TEST_F(MicrophonePagesTest, MicrophoneControlsSendInOrder) {
    head.micLevel = 40;
    head.monitorLevel = 25;
    start<MicrophonePage>();
    takeCalls();
    const auto move = [](QSlider *slider, int value) { return [=] { slider->setValue(value); }; };
    const auto click = [](QPushButton *button) { return [=] { button->click(); }; };
    // The library is taken at its word about the helper, even where it still counts a stopped one as running.
    const struct {
        std::function<void()> act;
        int32_t running;
        Calls calls;
        int level, muted, monitorLevel, monitoring;
    } steps[] = {
        {move(form.verticalSlider, 41), 0, {"_SetVolum(41, 1, 0)", kWrite}, 41, 0, 25, 0},
        {move(form.verticalSlider, 0), 0, {"_SetVolum(0, 1, 0)", kWrite}, 0, 1, 25, 0},
        {move(form.verticalSlider, 100), 0, {"_SetVolum(100, 1, 0)", kWrite}, 100, 0, 25, 0},
        {click(form.pushButton_15), 0, {"_SetVolum(0, 1, 0)", kWrite}, 100, 1, 25, 0},
        {click(form.pushButton_15), 0, {"_SetVolum(100, 1, 0)", kWrite}, 100, 0, 25, 0},
        {move(form.verticalSlider_2, 26), 0, {kRunning, kStart, kWrite}, 100, 0, 26, 1},
        {move(form.verticalSlider_2, 27), 1, {kRunning, kWrite}, 100, 0, 27, 1},
        {move(form.verticalSlider_2, 0), 1, {kKill, kWrite}, 100, 0, 0, 0},
        {move(form.verticalSlider_2, 5), 1, {kRunning, kWrite}, 100, 0, 5, 1},
        {click(form.pushButton_16), 1, {kKill, kWrite}, 100, 0, 5, 0},
        {click(form.btn_uninstall_mic), 0, {kRunning, kStart, kWrite}, 100, 0, 5, 1},
    };
    for (const auto &step : steps) {
        SCOPED_TRACE(&step - steps);
        recorder.taskRunning = step.running;
        step.act();
        EXPECT_EQ(takeCalls(), step.calls);
        for (const SystemHead &sent : {recorder.system.head, recorder.system.headCopy}) {
            EXPECT_EQ(int{sent.micLevel}, step.level);
            EXPECT_EQ(sent.micMuted, step.muted);
            EXPECT_EQ(int{sent.monitorLevel}, step.monitorLevel);
            EXPECT_EQ(sent.monitoringOn, step.monitoring);
        }
        expectMicrophone(step.level, step.muted, step.monitorLevel, step.monitoring);
    }
    form.pushButton_5->click();
    EXPECT_THAT(takeCalls(), ElementsAre(kWrite));
    EXPECT_EQ(recorder.system.head.micPageSwitch, 1);
}

TEST_F(MicrophonePagesTest, VoicesWorkOnlyWhileTheSwitchIsOn) {
    const std::vector<QWidget *> panel{form.btn_mh1, form.checkBox_5, form.horizontalSlider_15};
    head.voiceEffect = 2;
    head.effectLevel = 70;
    start<VoiceEffectsPage>();
    emit form.btn_mh3->clicked(); // a disabled button, pressed by code
    EXPECT_THAT(takeCalls(), IsEmpty());
    expectMarked("btn_mh%1", 4, 2);

    const struct {
        std::function<void()> act;
        int on, voice, echo, level;
    } steps[] = {
        {[this] { form.pushButton_8->click(); }, 1, 2, 0, 70},
        {[this] { form.btn_mh3->click(); }, 1, 3, 0, 70},
        {[this] { form.checkBox_6->click(); }, 0, 3, 0, 70}, // says and does the same as the switch
        {[this] { form.checkBox_6->click(); }, 1, 3, 0, 70},
        {[this] { form.checkBox_5->click(); }, 1, 3, 1, 70},
        {[this] { form.horizontalSlider_15->setValue(99); }, 1, 3, 1, 99},
        {[this] { form.Page4_P_9->click(); }, 1, 3, 1, 100},
        {[this] { form.Page4_P_8->click(); }, 1, 3, 1, 99},
        {[this] { form.pushButton_30->click(); }, 1, 3, 1, 50},
    };
    for (const auto &step : steps) {
        SCOPED_TRACE(&step - steps);
        step.act();
        EXPECT_THAT(takeCalls(), ElementsAre(kWrite));
        EXPECT_EQ(recorder.system.head.voiceEffectOn, step.on);
        EXPECT_EQ(recorder.system.head.voiceEffect, step.voice);
        EXPECT_EQ(recorder.system.head.echoOn, step.echo);
        EXPECT_EQ(recorder.system.head.effectLevel, step.level);
        expectMarked("btn_mh%1", 4, step.voice);
        EXPECT_EQ(form.checkBox_6->isChecked(), step.on);
        expectPanel(step.on, form.pushButton_8, panel);
    }
}

TEST_F(MicrophonePagesTest, NoiseLevelIsStoredOnlyWhileOnAndResetDoesNotWrite) {
    const std::vector<QWidget *> panel{form.horizontalSlider_17, form.pushButton_31};
    head.noiseLevel = 30;
    start<NoiseReductionPage>();
    EXPECT_EQ(form.horizontalSlider_17->value(), 30);
    form.horizontalSlider_17->setValue(90);
    EXPECT_EQ(int{head.noiseLevel}, 30);
    EXPECT_THAT(takeCalls(), IsEmpty());
    for (const bool on : {true, false, true}) {
        form.pushButton_29->click();
        EXPECT_EQ(recorder.system.head.noiseReductionOn, on);
        EXPECT_TRUE(shows(form.label_208, on ? "jiangzao_pic.png" : "jiangzao_pic_nor.png"));
        expectPanel(on, form.pushButton_29, panel);
        EXPECT_THAT(takeCalls(), ElementsAre(kWrite));
    }
    form.pushButton_31->click();
    EXPECT_EQ(int{head.noiseLevel}, 50);
    EXPECT_EQ(form.horizontalSlider_17->value(), 50);
    EXPECT_THAT(takeCalls(), IsEmpty());
    form.horizontalSlider_17->setValue(51); // the slider's handler is awake again
    EXPECT_EQ(int{recorder.system.head.noiseLevel}, 51);
    EXPECT_THAT(takeCalls(), ElementsAre(kWrite));
}

} // namespace
