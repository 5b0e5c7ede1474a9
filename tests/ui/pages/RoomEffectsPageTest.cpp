#include "ui/pages/RoomEffectsPage.h"

#include "ui/pages/PageTest.h"

#include <gmock/gmock.h>
#include <memory>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kWrite[] = "setDeviceProperty(2)";

class RoomEffectsPageTest : public PageTest {
protected:
    void start(uint8_t on, uint8_t room, uint8_t position) {
        device.sound.roomEffectOn = on;
        device.sound.room = room;
        device.sound.position = position;
        page.reset();
        effects = std::make_unique<ExclusiveEffects>(context(), rotationTimer, nullptr);
        page = std::make_unique<RoomEffectsPage>(context(), *effects, nullptr);
        // The main window's part: its slot hands the hidden box's index to the page.
        QObject::connect(form.comboBox_2, QOverload<int>::of(&QComboBox::currentIndexChanged), page.get(),
                         &RoomEffectsPage::selectMode);
    }

    // The number of the only marked button, 0 when none is, -1 when several are.
    static int marked(const std::vector<QPushButton *> &buttons) {
        int result = 0;
        for (size_t i = 0; i < buttons.size(); ++i) {
            const bool red = buttons[i]->styleSheet().contains("border: 1px solid #ef0303;");
            EXPECT_NE(red, buttons[i]->styleSheet().contains("border: none;"));
            if (red)
                result = result ? -1 : static_cast<int>(i + 1);
        }
        return result;
    }
    int markedRoom() const { return marked({form.btn_room1, form.btn_room2, form.btn_room3}); }
    int markedPosition() const {
        return marked({form.btn_env1, form.btn_env2, form.btn_env3, form.btn_env4});
    }

    QTimer rotationTimer;
    std::unique_ptr<ExclusiveEffects> effects;
    std::unique_ptr<RoomEffectsPage> page;
};

} // namespace

TEST_F(RoomEffectsPageTest, SetUpMarksTheStoredChoicesAndSendsNothing) {
    start(1, 77, 77);
    EXPECT_EQ(markedRoom(), 0);
    EXPECT_EQ(markedPosition(), 0);
    start(1, 3, 4);
    EXPECT_EQ(markedRoom(), 3);
    EXPECT_EQ(markedPosition(), 4);
    EXPECT_EQ(form.comboBox_2->currentIndex(), 3);
    EXPECT_TRUE(form.comboBox_2->isHidden() && form.pushButton_27->isHidden());
    EXPECT_THAT(recorder.calls, IsEmpty());
}

TEST_F(RoomEffectsPageTest, RoomsNeedTheSwitchAndAChange) {
    start(0, 1, 1);
    emit form.btn_room2->clicked();
    EXPECT_EQ(device.sound.room, 1);
    EXPECT_EQ(markedRoom(), 1);
    EXPECT_THAT(recorder.calls, IsEmpty());

    form.pushButton_33->click();
    recorder.calls.clear();
    form.btn_room1->click(); // the stored one
    EXPECT_THAT(recorder.calls, IsEmpty());
    form.btn_room3->click();
    EXPECT_EQ(recorder.sound.room, 3);
    EXPECT_EQ(markedRoom(), 3);
    EXPECT_THAT(recorder.calls, ElementsAre(kWrite));
}

// By button, by the box or by the window's slot: a choice is one write, also of the position that is set
// already.
TEST_F(RoomEffectsPageTest, PositionIsSentOnceWhicheverWayItComes) {
    start(0, 1, 1);
    const auto expectSent = [this](int position, const std::function<void()> &act) {
        recorder.calls.clear();
        act();
        EXPECT_EQ(recorder.sound.position, position);
        EXPECT_EQ(markedPosition(), position);
        EXPECT_THAT(recorder.calls, ElementsAre(kWrite));
    };
    expectSent(3, [this] { form.btn_env3->click(); });
    expectSent(4, [this] { form.btn_env4->click(); });
    expectSent(4, [this] { form.btn_env4->click(); });
    EXPECT_EQ(form.comboBox_2->currentIndex(), 3);
    expectSent(2, [this] { form.comboBox_2->setCurrentIndex(1); });
    expectSent(3, [this] { page->selectMode(2); });
    recorder.calls.clear();
    for (const int ignored : {-1, 4})
        page->selectMode(ignored);
    EXPECT_THAT(recorder.calls, IsEmpty());
}
