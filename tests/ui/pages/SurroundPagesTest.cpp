// The four exclusive switches with the room page and the sound-field page, on the real form.
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
constexpr std::array<size_t, 4> kSwitchBytes{1, 15, 33, 34};

// Bit i of a state is the switch byte kSwitchBytes[i].
void setState(SoundBlock &block, unsigned state) {
    for (size_t i = 0; i < kSwitchBytes.size(); ++i)
        reinterpret_cast<uint8_t *>(&block)[kSwitchBytes[i]] = (state >> i) & 1;
}

class SurroundPagesTest : public PageTest {
protected:
    SurroundPagesTest() { rotationTimer.setInterval(100); }

    // Builds the pages from the block, which must send nothing.
    void start() {
        rotationTimer.stop();
        pages = std::make_unique<QObject>(); // takes the last ones with it
        auto &effects = *new ExclusiveEffects(context(), rotationTimer, pages.get());
        new EqualizerPage(context(), effects, L"", pages.get());
        room = new RoomEffectsPage(context(), effects, pages.get());
        new SoundFieldPage(context(), effects, rotationTimer, pages.get());
        // The main window's part: its slot hands the hidden box's index to the page.
        QObject::connect(form.comboBox_2, QOverload<int>::of(&QComboBox::currentIndexChanged), room,
                         &RoomEffectsPage::selectMode);
        EXPECT_THAT(takeCalls(), IsEmpty());
    }

    std::array<QPushButton *, 4> switches() const {
        return {form.pushButton_32, form.pushButton_14, form.pushButton_33, form.pushButton_6};
    }

    // What the switches show, as bits; their captions, panels and the rotation must agree.
    unsigned shownState() const {
        const std::array<QLabel *, 4> captions{form.label_148, form.label_152, form.label_150, nullptr};
        const std::array<QWidget *, 4> panels{nullptr, form.Page4_P, form.btn_room2, form.widget_24};
        unsigned state = 0;
        for (size_t i = 0; i < 4; ++i) {
            const bool on = shows(switches()[i], "btn_open.png");
            EXPECT_NE(on, shows(switches()[i], "btn_close.png"));
            EXPECT_EQ(switches()[i]->isChecked(), on);
            EXPECT_TRUE(!captions[i] || shows(captions[i], on ? "color: #FFFFFF;" : "color: #444645;"));
            EXPECT_TRUE(!panels[i] || panels[i]->isEnabled() == on);
            state |= static_cast<unsigned>(on) << i;
        }
        EXPECT_EQ(rotationTimer.isActive(), (state & 2) && device.sound.fieldAngleMode == 2);
        return state;
    }

    void expectFieldButton(int marked) const {
        expectMarked("Page4_P_%1", 5, marked, "background: rgba(110,110,110,1);",
                     "background: rgba(26,26,26,1);");
    }

    // Drives the clock by hand; a stopped timer does not tick.
    void tick(int times) {
        for (int i = 0; i < times && rotationTimer.isActive(); ++i)
            QMetaObject::invokeMethod(&rotationTimer, "timeout");
    }
    float angle() const { return window.findChildren<SoundFieldView *>().last()->angle(); }

    std::array<QSlider *, 8> sliders() const {
        return {form.page4_L,  form.page4_R,  form.page4_LS, form.page4_RS,
                form.page4_LB, form.page4_RB, form.page4_c,  form.page4_w};
    }
    std::vector<int> shownLevels() const {
        std::vector<int> shown;
        for (const QSlider *slider : sliders())
            shown.push_back(slider->value());
        return shown;
    }

    QTimer rotationTimer;
    std::unique_ptr<QObject> pages;
    RoomEffectsPage *room = nullptr;
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
    expectMarked("btn_room%1", 3, 0); // there is no room 0x5A
    expectMarked("btn_env%1", 4, 0);
}

// The device event listener presses the virtual 7.1 switch from its own thread.
TEST_F(SurroundPagesTest, ClickFromAnotherThreadArrivesOnThisOne) {
    setState(device.sound, 4);
    start();
    std::thread([this] { emit form.pushButton_32->clicked(); }).join();
    EXPECT_THAT(takeCalls(), IsEmpty());
    settle();
    EXPECT_EQ(shownState(), 1U);
    EXPECT_THAT(takeCalls(), ElementsAre(kWrite));
}

TEST_F(SurroundPagesTest, RoomsNeedTheSwitchAndAChange) {
    device.sound.room = 1;
    start();
    emit form.btn_room2->clicked();
    EXPECT_THAT(takeCalls(), IsEmpty());
    expectMarked("btn_room%1", 3, 1);

    form.pushButton_33->click();
    takeCalls();
    form.btn_room1->click(); // the stored one
    EXPECT_THAT(takeCalls(), IsEmpty());
    form.btn_room3->click();
    EXPECT_THAT(takeCalls(), ElementsAre(kWrite));
    EXPECT_EQ(recorder.sound.room, 3);
    expectMarked("btn_room%1", 3, 3);
}

// By button, by the box or by the window's slot: a choice is one write, also of the position that is set
// already.
TEST_F(SurroundPagesTest, PositionIsSentOnceWhicheverWayItComes) {
    device.sound.position = 4;
    start();
    expectMarked("btn_env%1", 4, 4);
    const struct {
        int position;
        std::function<void()> act;
    } choices[] = {
        {3, [this] { form.btn_env3->click(); }}, {4, [this] { form.btn_env4->click(); }},
        {4, [this] { form.btn_env4->click(); }}, {2, [this] { form.comboBox_2->setCurrentIndex(1); }},
        {3, [this] { room->selectMode(2); }},
    };
    for (const auto &choice : choices) {
        choice.act();
        EXPECT_EQ(recorder.sound.position, choice.position);
        expectMarked("btn_env%1", 4, choice.position);
        EXPECT_EQ(form.comboBox_2->currentIndex(), choice.position - 1);
        EXPECT_THAT(takeCalls(), ElementsAre(kWrite));
    }
    for (const int ignored : {-1, 4})
        room->selectMode(ignored);
    EXPECT_THAT(takeCalls(), IsEmpty());
}

TEST_F(SurroundPagesTest, FieldTurnsWithItsClock) {
    setState(device.sound, 2);
    device.sound.fieldAngleMode = 9;
    start();
    EXPECT_FALSE(rotationTimer.isActive());
    device.sound.fieldAngleMode = 1;
    start();
    tick(3);
    EXPECT_FLOAT_EQ(angle(), -3);
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
        tick(step.ticks);
        EXPECT_EQ(recorder.sound.fieldAngleMode, step.mode);
        expectFieldButton(step.mode);
        EXPECT_FLOAT_EQ(angle(), step.angle) << step.mode;
        EXPECT_THAT(takeCalls(), ElementsAre(kWrite));
    }
}

TEST_F(SurroundPagesTest, WhileTheFieldIsOffOnlySpeakerSlidersDoAnything) {
    start();
    for (QPushButton *button : {form.Page4_P_1, form.Page4_P_2, form.Page4_P_3, form.Page4_P_4,
                                form.Page4_P_5, form.Page4_P_6, form.Page4_P_7})
        emit button->clicked();
    form.horizontalSlider_14->setValue(-7);
    EXPECT_THAT(takeCalls(), IsEmpty());
    EXPECT_THAT(device.sound.speakerLevel, Each(0));
    EXPECT_EQ(device.sound.fieldAngleMode, 0);
    expectFieldButton(0);
    EXPECT_FALSE(rotationTimer.isActive());

    for (size_t i = 0; i < 8; ++i) {
        sliders()[i]->setValue(-static_cast<int>(i) - 2);
        EXPECT_THAT(takeCalls(), ElementsAre(kWrite));
    }
    EXPECT_THAT(recorder.sound.speakerLevel, ElementsAre(-2, -3, -4, -5, -6, -7, -8, -9));
}

// Levels beyond their range, as a device may hold them, are shown at the slider's end and stepped as they
// are.
TEST_F(SurroundPagesTest, MasterStepsAndRestoreMoveAllLevelsInOneWrite) {
    setState(device.sound, 2);
    device.sound.fieldAngleMode = 2;
    const int8_t stored[] = {-12, -13, 4, 0, 3, -128, 127, 2};
    std::memcpy(device.sound.speakerLevel, stored, sizeof stored);
    start();
    EXPECT_THAT(shownLevels(), ElementsAre(-12, -13, 4, 0, 3, -13, 4, 2));
    EXPECT_EQ(form.horizontalSlider_14->value(), -12);

    form.Page4_P_6->click();
    EXPECT_THAT(recorder.sound.speakerLevel, ElementsAre(-13, -13, 3, -1, 2, -13, 126, 1));
    EXPECT_EQ(form.horizontalSlider_14->value(), -13);
    form.Page4_P_7->click();
    EXPECT_THAT(recorder.sound.speakerLevel, ElementsAre(-12, -12, 4, 0, 3, -12, 4, 2));
    EXPECT_THAT(shownLevels(), ElementsAre(-12, -12, 4, 0, 3, -12, 4, 2));
    form.horizontalSlider_14->setValue(-6);
    EXPECT_THAT(recorder.sound.speakerLevel, Each(-6));
    EXPECT_THAT(shownLevels(), Each(-6));
    EXPECT_EQ(form.RB_V->text(), "-6db");
    tick(20);
    form.Page4_P_5->click();
    EXPECT_THAT(recorder.sound.speakerLevel, Each(0));
    EXPECT_EQ(recorder.sound.fieldAngleMode, 4);
    EXPECT_THAT(shownLevels(), Each(0));
    EXPECT_EQ(form.horizontalSlider_14->value(), 0);
    EXPECT_FLOAT_EQ(angle(), 0);
    EXPECT_FALSE(rotationTimer.isActive());
    expectFieldButton(5);
    EXPECT_THAT(takeCalls(), ElementsAre(kWrite, kWrite, kWrite, kWrite));
}

} // namespace
