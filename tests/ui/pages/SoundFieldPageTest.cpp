#include "ui/pages/SoundFieldPage.h"

#include "ui/pages/PageTest.h"
#include "ui/pages/SoundFieldView.h"

#include <array>
#include <cstring>
#include <gmock/gmock.h>
#include <memory>

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kWrite[] = "setDeviceProperty(2)";

class SoundFieldPageTest : public PageTest {
protected:
    SoundFieldPageTest() { rotationTimer.setInterval(100); }

    void start(uint8_t on, uint8_t mode, const std::array<int8_t, 8> &levels = {}) {
        device.sound.soundFieldOn = on;
        device.sound.fieldAngleMode = mode;
        std::memcpy(device.sound.speakerLevel, levels.data(), levels.size());
        page.reset();
        effects = std::make_unique<ExclusiveEffects>(context(), rotationTimer, nullptr);
        page = std::make_unique<SoundFieldPage>(context(), *effects, rotationTimer, nullptr);
    }

    // Drives the clock by hand; a stopped timer does not tick.
    void tick(int times) {
        for (int i = 0; i < times; ++i) {
            if (rotationTimer.isActive())
                QMetaObject::invokeMethod(&rotationTimer, "timeout");
        }
    }

    float angle() const { return window.findChild<SoundFieldView *>()->angle(); }
    std::array<QSlider *, 8> sliders() const {
        return {form.page4_L,  form.page4_R,  form.page4_LS, form.page4_RS,
                form.page4_LB, form.page4_RB, form.page4_c,  form.page4_w};
    }
    std::vector<int> levels() const { return {device.sound.speakerLevel, device.sound.speakerLevel + 8}; }
    std::vector<int> shownLevels() const {
        std::vector<int> shown;
        for (const QSlider *slider : sliders())
            shown.push_back(slider->value());
        return shown;
    }
    QPushButton *button(int number) const {
        return window.findChild<QPushButton *>(QString("Page4_P_%1").arg(number));
    }
    int highlighted() const {
        int result = 0;
        for (int number = 1; number <= 5; ++number) {
            const QString style = button(number)->styleSheet();
            const bool selected = style.contains("background: rgba(110,110,110,1);");
            EXPECT_NE(selected, style.contains("background: rgba(26,26,26,1);")) << style.toStdString();
            if (selected)
                result = result ? -1 : number;
        }
        return result;
    }

    QTimer rotationTimer;
    std::unique_ptr<ExclusiveEffects> effects;
    std::unique_ptr<SoundFieldPage> page;
};

} // namespace

TEST_F(SoundFieldPageTest, SetUpShowsTheBlockAndSendsNothing) {
    const std::array<int8_t, 8> stored{-13, -5, 0, 4, 127, -128, 1, 2};
    start(1, 9, stored);
    EXPECT_THAT(shownLevels(), ElementsAre(-13, -5, 0, 4, 4, -13, 1, 2));
    EXPECT_EQ(form.L_V->text(), "-13db");
    EXPECT_EQ(form.horizontalSlider_14->value(), -13);
    EXPECT_EQ(std::memcmp(device.sound.speakerLevel, stored.data(), 8), 0);
    EXPECT_FALSE(rotationTimer.isActive());
    EXPECT_THAT(recorder.calls, IsEmpty());
}

TEST_F(SoundFieldPageTest, RotationStepsWithItsClock) {
    start(1, 1); // set-up starts it
    tick(3);
    EXPECT_FLOAT_EQ(angle(), -3);
    const struct {
        int button, ticks;
        float angle;
    } steps[] = {
        {2, 5, 2},
        {3, 5, 2},     // hold
        {1, 400, -38}, // more than a turn: the same as 38 steps
        {4, 5, 0},     // centre
    };
    for (const auto &step : steps) {
        button(step.button)->click();
        EXPECT_EQ(recorder.sound.fieldAngleMode, step.button);
        EXPECT_EQ(highlighted(), step.button);
        tick(step.ticks);
        EXPECT_FLOAT_EQ(angle(), step.angle) << step.button;
    }
    EXPECT_EQ(recorder.writes[2], 4); // one per button, none per tick
}

TEST_F(SoundFieldPageTest, WhileOffOnlySpeakerSlidersDoAnything) {
    start(0, 2, {1, 1, 1, 1, 1, 1, 1, 1});
    for (int number = 1; number <= 7; ++number)
        emit button(number)->clicked();
    form.horizontalSlider_14->setValue(-7);
    EXPECT_THAT(recorder.calls, IsEmpty());
    EXPECT_THAT(levels(), Each(1));
    EXPECT_EQ(device.sound.fieldAngleMode, 2);
    EXPECT_EQ(highlighted(), 0);
    EXPECT_FALSE(rotationTimer.isActive());

    for (size_t i = 0; i < 8; ++i) {
        recorder.calls.clear();
        sliders()[i]->setValue(-static_cast<int>(i) - 2);
        EXPECT_THAT(recorder.calls, ElementsAre(kWrite));
    }
    EXPECT_THAT(recorder.sound.speakerLevel, ElementsAre(-2, -3, -4, -5, -6, -7, -8, -9));
}

TEST_F(SoundFieldPageTest, MasterAndStepsMoveAllLevelsInOneWrite) {
    start(1, 4, {-12, -13, 4, 0, 3, -128, 127, 2});
    form.Page4_P_6->click();
    EXPECT_THAT(levels(), ElementsAre(-13, -13, 3, -1, 2, -13, 126, 1));
    EXPECT_EQ(form.horizontalSlider_14->value(), -13);
    form.Page4_P_7->click();
    EXPECT_THAT(levels(), ElementsAre(-12, -12, 4, 0, 3, -12, 4, 2));
    EXPECT_EQ(shownLevels(), levels());
    EXPECT_EQ(form.horizontalSlider_14->value(), -12);
    form.horizontalSlider_14->setValue(-6);
    EXPECT_THAT(recorder.sound.speakerLevel, Each(-6));
    EXPECT_THAT(shownLevels(), Each(-6));
    EXPECT_EQ(form.RB_V->text(), "-6db");
    EXPECT_THAT(recorder.calls, ElementsAre(kWrite, kWrite, kWrite));
}

TEST_F(SoundFieldPageTest, RestoreCentresAndFlattensInOneWrite) {
    start(1, 2, {4, 4, 4, 4, 4, 4, 4, 4});
    tick(20);
    form.Page4_P_5->click();
    EXPECT_THAT(recorder.calls, ElementsAre(kWrite));
    EXPECT_THAT(recorder.sound.speakerLevel, Each(0));
    EXPECT_EQ(recorder.sound.fieldAngleMode, 4);
    EXPECT_THAT(shownLevels(), Each(0));
    EXPECT_FLOAT_EQ(angle(), 0);
    EXPECT_FALSE(rotationTimer.isActive());
    EXPECT_EQ(highlighted(), 5);
}
