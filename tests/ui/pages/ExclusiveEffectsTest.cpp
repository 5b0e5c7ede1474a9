// The four exclusive switches on the real form.
#include "ui/pages/EqualizerPage.h"
#include "ui/pages/PageTest.h"
#include "ui/pages/RoomEffectsPage.h"
#include "ui/pages/SoundFieldPage.h"

#include <array>
#include <cstring>
#include <gmock/gmock.h>
#include <memory>
#include <thread>

namespace {

using testing::ElementsAre;

constexpr std::array<size_t, 4> kBytes{1, 15, 33, 34}; // in the order of kAllEffects

class ExclusiveEffectsTest : public PageTest {
protected:
    ExclusiveEffectsTest() { rotationTimer.setInterval(100); }

    void start(unsigned state, uint8_t angleMode) {
        for (size_t i = 0; i < kBytes.size(); ++i)
            byte(kBytes[i]) = (state >> i) & 1;
        device.sound.fieldAngleMode = angleMode;
        rotationTimer.stop();
        pages = std::make_unique<QObject>(); // takes the last ones with it
        auto &effects = *new ExclusiveEffects(context(), rotationTimer, pages.get());
        new EqualizerPage(context(), effects, L"", pages.get());
        new RoomEffectsPage(context(), effects, pages.get());
        new SoundFieldPage(context(), effects, rotationTimer, pages.get());
    }

    uint8_t &byte(size_t offset) { return reinterpret_cast<uint8_t *>(&device.sound)[offset]; }
    unsigned state() {
        unsigned bits = 0;
        for (size_t i = 0; i < kBytes.size(); ++i)
            bits |= static_cast<unsigned>(byte(kBytes[i])) << i;
        return bits;
    }

    std::array<QPushButton *, 4> switches() const {
        return {form.pushButton_32, form.pushButton_14, form.pushButton_33, form.pushButton_6};
    }

    // What the switches and captions show, as bits; they must agree where an effect has a caption.
    unsigned shown() const {
        const std::array<QLabel *, 4> captions{form.label_148, form.label_152, form.label_150, nullptr};
        unsigned bits = 0;
        for (size_t i = 0; i < 4; ++i) {
            const QString style = switches()[i]->styleSheet();
            const bool on = style.contains("btn_open.png");
            EXPECT_NE(on, style.contains("btn_close.png"));
            EXPECT_EQ(switches()[i]->isChecked(), on) << i;
            if (captions[i]) {
                EXPECT_EQ(captions[i]->styleSheet().contains("color: #FFFFFF;"), on) << i;
            }
            bits |= static_cast<unsigned>(on) << i;
        }
        return bits;
    }

    QTimer rotationTimer;
    std::unique_ptr<QObject> pages;
};

} // namespace

TEST_F(ExclusiveEffectsTest, SwitchesShowAndWriteTheGroup) {
    for (const unsigned before : {0U, 2U, 8U, 15U}) {
        for (unsigned effect = 0; effect < 4; ++effect) {
            SCOPED_TRACE(testing::Message() << "state " << before << ", switch " << effect);
            start(before, 2);
            recorder.reset();
            EXPECT_EQ(shown(), before);
            EXPECT_EQ(rotationTimer.isActive(), (before & 2) != 0);

            switches()[effect]->click();

            const unsigned own = 1U << effect;
            const unsigned after = before & own ? before & ~own : own;
            EXPECT_EQ(state(), after);
            EXPECT_EQ(shown(), after);
            EXPECT_EQ(rotationTimer.isActive(), (after & 2) != 0);
            EXPECT_THAT(recorder.calls, ElementsAre("setDeviceProperty(2)"));
            EXPECT_EQ(std::memcmp(&recorder.sound, &device.sound, sizeof device.sound), 0);
        }
    }
}

// The device event listener presses the virtual 7.1 switch from its own thread.
TEST_F(ExclusiveEffectsTest, ClickFromAnotherThreadArrivesOnThisOne) {
    start(4, 0);
    recorder.reset();
    std::thread([this] { emit form.pushButton_32->clicked(); }).join();
    EXPECT_TRUE(recorder.calls.empty());
    settle();
    EXPECT_EQ(state(), 1U);
    EXPECT_EQ(shown(), 1U);
    EXPECT_EQ(recorder.writes[2], 1);
}
