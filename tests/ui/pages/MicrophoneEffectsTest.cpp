// The voice effects and the noise reduction.
#include "ui/pages/NoiseReductionPage.h"
#include "ui/pages/VoiceEffectsPage.h"

#include "ui/pages/PageTest.h"

#include <gmock/gmock.h>
#include <memory>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kWrite[] = "setDeviceProperty(1)";

class VoiceEffectsPageTest : public PageTest {
protected:
    void start(uint8_t on, uint8_t voice = 2) {
        head.voiceEffectOn = on;
        head.voiceEffect = voice;
        head.effectLevel = 70;
        page.reset();
        page = std::make_unique<VoiceEffectsPage>(context(), nullptr);
    }

    // 1..4, or 0 when not exactly one button is marked.
    int markedVoice() const {
        int sum = 0, count = 0, voice = 0;
        for (const QPushButton *button : {form.btn_mh1, form.btn_mh2, form.btn_mh3, form.btn_mh4}) {
            ++voice;
            const bool red = button->styleSheet().contains("border: 1px solid #ef0303;");
            EXPECT_NE(red, button->styleSheet().contains("border: none;"));
            sum += red ? voice : 0;
            count += red;
        }
        return count == 1 ? sum : 0;
    }

    void expectPanel(bool on) {
        EXPECT_TRUE(form.pushButton_8->styleSheet().contains(on ? "btn_open.png" : "btn_close.png"));
        EXPECT_EQ(form.btn_mh1->isEnabled(), on);
        EXPECT_EQ(form.horizontalSlider_15->isEnabled(), on);
        EXPECT_EQ(form.checkBox_6->isChecked(), on);
    }

    SystemHead &head = device.system.head;
    std::unique_ptr<VoiceEffectsPage> page;
};

TEST_F(VoiceEffectsPageTest, VoicesWorkOnlyWhileTheSwitchIsOn) {
    start(1, 255);
    EXPECT_EQ(markedVoice(), 0);
    start(0);
    emit form.btn_mh3->clicked(); // a disabled button, pressed by code
    EXPECT_THAT(recorder.calls, IsEmpty());
    EXPECT_EQ(head.voiceEffect, 2);
    EXPECT_EQ(markedVoice(), 2);

    start(1);
    form.btn_mh3->click();
    form.btn_mh1->click();
    EXPECT_THAT(recorder.calls, ElementsAre(kWrite, kWrite));
    EXPECT_EQ(recorder.system.head.voiceEffect, 1);
    EXPECT_EQ(recorder.system.headCopy.voiceEffect, 1);
    EXPECT_EQ(markedVoice(), 1);
}

TEST_F(VoiceEffectsPageTest, EveryControlIsOneWrite) {
    start(0);
    expectPanel(false);
    form.pushButton_8->click();
    EXPECT_EQ(recorder.system.head.voiceEffectOn, 1);
    expectPanel(true);
    form.checkBox_6->click();
    EXPECT_EQ(recorder.system.head.voiceEffectOn, 0);
    expectPanel(false);
    form.pushButton_8->click();
    form.checkBox_5->click();
    EXPECT_EQ(recorder.system.head.echoOn, 1);
    form.horizontalSlider_15->setValue(100);
    EXPECT_EQ(recorder.system.head.effectLevel, 100);
    form.Page4_P_8->click();
    EXPECT_EQ(recorder.system.head.effectLevel, 99);
    form.Page4_P_9->click();
    form.Page4_P_9->click(); // already at the end: nothing to send
    EXPECT_EQ(recorder.system.head.effectLevel, 100);
    form.pushButton_30->click();
    EXPECT_EQ(recorder.system.head.effectLevel, 50);
    EXPECT_EQ(recorder.calls, std::vector<std::string>(8, kWrite));
}

class NoiseReductionPageTest : public PageTest {
protected:
    void start(uint8_t on, int32_t level) {
        head.noiseReductionOn = on;
        head.noiseLevel = level;
        page.reset();
        page = std::make_unique<NoiseReductionPage>(context(), nullptr);
    }

    void expectPanel(bool on) {
        EXPECT_TRUE(form.pushButton_29->styleSheet().contains(on ? "btn_open.png" : "btn_close.png"));
        EXPECT_TRUE(form.label_208->styleSheet().contains(on ? "jiangzao_pic.png" : "jiangzao_pic_nor.png"));
        EXPECT_EQ(form.horizontalSlider_17->isEnabled(), on);
        EXPECT_EQ(form.pushButton_31->isEnabled(), on);
    }

    SystemHead &head = device.system.head;
    std::unique_ptr<NoiseReductionPage> page;
};

TEST_F(NoiseReductionPageTest, SwitchShowsItselfAndWrites) {
    start(0, 30);
    EXPECT_EQ(form.horizontalSlider_17->maximum(), 100);
    EXPECT_EQ(form.horizontalSlider_17->value(), 30);
    EXPECT_THAT(recorder.calls, IsEmpty());
    for (const bool on : {false, true}) {
        expectPanel(on);
        form.pushButton_29->click();
        EXPECT_EQ(recorder.system.head.noiseReductionOn, !on);
    }
    EXPECT_THAT(recorder.calls, ElementsAre(kWrite, kWrite));
}

TEST_F(NoiseReductionPageTest, LevelIsStoredOnlyWhileOnAndResetDoesNotWrite) {
    start(0, 31);
    form.horizontalSlider_17->setValue(90);
    EXPECT_EQ(head.noiseLevel, 31);
    start(1, 31);
    form.pushButton_31->click();
    EXPECT_EQ(head.noiseLevel, 50);
    EXPECT_EQ(form.horizontalSlider_17->value(), 50);
    EXPECT_THAT(recorder.calls, IsEmpty());
    form.horizontalSlider_17->setValue(51); // the slider's handler is awake again
    EXPECT_EQ(recorder.system.head.noiseLevel, 51);
    EXPECT_THAT(recorder.calls, ElementsAre(kWrite));
}

} // namespace
