// The four exclusive switches with the room page and the sound-field page.
#include "ui/pages/EqualizerPage.h"
#include "ui/pages/PageTest.h"
#include "ui/pages/RoomEffectsPage.h"
#include "ui/pages/SoundFieldPage.h"
#include "ui/pages/SoundFieldView.h"

#include <array>
#include <cstring>
#include <gmock/gmock.h>
#include <thread>

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kWrite[] = "setDeviceProperty(2)";

// Bit i of a state is the i-th of these switch bytes.
void setState(SoundBlock &block, unsigned state) {
    unsigned bit = 0;
    for (const size_t byte : {1, 15, 33, 34})
        reinterpret_cast<uint8_t *>(&block)[byte] = state >> bit++ & 1;
}

class SurroundPagesTest : public PageTest {
protected:
    // Builds the pages from the block, which must send nothing.
    void start() {
        rotationTimer.stop();
        pages = std::make_unique<QObject>(); // takes the last ones with it
        auto &effects = *new ExclusiveEffects(context());
        auto &equalizer = *new EqualizerPage(context(), effects, L"");
        auto &soundField = *new SoundFieldPage(context(), effects, rotationTimer);
        auto &room = *new RoomEffectsPage(context(), effects);
        for (QObject *page : std::initializer_list<QObject *>{&effects, &equalizer, &soundField, &room})
            page->setParent(pages.get());
        EXPECT_THAT(takeCalls(), IsEmpty());
    }

    std::array<QPushButton *, 4> switches() const {
        return {form.pushButton_32, form.pushButton_14, form.pushButton_33, form.pushButton_6};
    }

    // What the switches show, as bits; their panels and the rotation must agree.
    unsigned shownState() const {
        unsigned state = 0;
        for (unsigned i = 0; i < 4; ++i)
            state |= static_cast<unsigned>(shows(switches()[i], "btn_open.png")) << i;
        EXPECT_EQ(form.Page4_P->isEnabled(), (state & 2) != 0);
        EXPECT_EQ(form.btn_room2->isEnabled(), (state & 4) != 0);
        EXPECT_EQ(form.widget_24->isEnabled(), (state & 8) != 0);
        EXPECT_EQ(rotationTimer.isActive(), (state & 2) && device.sound.fieldAngleMode == 2);
        return state;
    }

    // The picture's angle after so many ticks of the clock; a stopped one does not tick.
    float angleAfter(int ticks) {
        for (int i = 0; i < ticks && rotationTimer.isActive(); ++i)
            QMetaObject::invokeMethod(&rotationTimer, "timeout");
        return window.findChildren<SoundFieldView *>().last()->angle();
    }

    QTimer rotationTimer;
    std::unique_ptr<QObject> pages;
};

// All sixteen states, also those that the panel itself never makes: on wins alone, off touches nobody else.
TEST_F(SurroundPagesTest, AtMostOneSwitchIsOnAfterOneWasSwitchedOn) {
    SoundBlock expected;
    std::memset(&expected, 0x5A, sizeof expected); // no byte but the switches may change
    expected.fieldAngleMode = 2;
    for (unsigned before = 0; before < 16; ++before) {
        for (unsigned effect = 0; effect < 4; ++effect) {
            SCOPED_TRACE(testing::Message() << "state " << before << ", switch " << effect);
            setState(expected, before);
            device.sound = expected;
            start();
            EXPECT_EQ(shownState(), before);

            switches()[effect]->click();

            const unsigned own = 1U << effect;
            const unsigned after = before & own ? before & ~own : own;
            EXPECT_EQ(shownState(), after);
            setState(expected, after);
            EXPECT_EQ(std::memcmp(&recorder.sound, &expected, sizeof expected), 0);
            EXPECT_THAT(takeCalls(), ElementsAre(kWrite));
        }
    }
}

// The device event listener presses the virtual 7.1 switch from its own thread.
TEST_F(SurroundPagesTest, ClickFromAnotherThreadArrivesOnThisOne) {
    start();
    std::thread([this] { emit form.pushButton_32->clicked(); }).join();
    EXPECT_THAT(takeCalls(), IsEmpty());
    QCoreApplication::sendPostedEvents();
    EXPECT_THAT(takeCalls(), ElementsAre(kWrite));
}

TEST_F(SurroundPagesTest, FieldTurnsWithItsClock) {
    setState(device.sound, 2);
    device.sound.fieldAngleMode = 1;
    start();
    EXPECT_FLOAT_EQ(angleAfter(3), -3);
    const struct {
        QPushButton *button;
        int mode, ticks;
        float angle;
    } steps[] = {
        {form.Page4_P_2, 2, 5, 2},
        {form.Page4_P_3, 3, 5, 2},     // hold
        {form.Page4_P_1, 1, 400, -38}, // more than a turn: the same as 38 steps
        {form.Page4_P_4, 4, 5, 0},     // centre
    };
    for (const auto &step : steps) {
        step.button->click();
        EXPECT_EQ(recorder.sound.fieldAngleMode, step.mode);
        EXPECT_FLOAT_EQ(angleAfter(step.ticks), step.angle) << step.mode;
        EXPECT_THAT(takeCalls(), ElementsAre(kWrite));
    }
}

// Levels beyond their range, as a device may hold them, are shown at the slider's end and stepped as they
// are.
TEST_F(SurroundPagesTest, MasterStepsAndRestoreMoveAllLevelsInOneWrite) {
    setState(device.sound, 2);
    const int8_t stored[] = {-12, -13, 4, 0, 3, -128, 127, 2};
    std::memcpy(device.sound.speakerLevel, stored, sizeof stored);
    start();
    EXPECT_EQ(form.page4_RB->value(), -13);
    form.Page4_P_6->click();
    EXPECT_THAT(recorder.sound.speakerLevel, ElementsAre(-13, -13, 3, -1, 2, -13, 126, 1));
    EXPECT_EQ(form.horizontalSlider_14->value(), -13); // the first speaker's
    form.Page4_P_7->click();
    EXPECT_THAT(recorder.sound.speakerLevel, ElementsAre(-12, -12, 4, 0, 3, -12, 4, 2));
    form.horizontalSlider_14->setValue(-6);
    EXPECT_THAT(recorder.sound.speakerLevel, Each(-6));
    EXPECT_EQ(form.RB_V->text(), "-6db");
    form.Page4_P_5->click();
    EXPECT_THAT(recorder.sound.speakerLevel, Each(0));
    EXPECT_EQ(form.page4_RB->value(), 0);
    EXPECT_THAT(takeCalls(), ElementsAre(kWrite, kWrite, kWrite, kWrite));
}

} // namespace
