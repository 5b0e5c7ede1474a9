#include "ui/pages/RoomEffectsPage.h"

#include "ui/pages/PageTest.h"

#include <array>
#include <gmock/gmock.h>
#include <memory>

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
        effects = std::make_unique<ExclusiveEffects>(context(), rotationTimer, nullptr);
        page = std::make_unique<RoomEffectsPage>(context(), *effects, nullptr);
        // The main window's part: its slot hands the hidden box's index to the page.
        QObject::connect(form.comboBox_2, QOverload<int>::of(&QComboBox::currentIndexChanged), page.get(),
                         &RoomEffectsPage::selectMode);
    }

    // The number of the only marked button, 0 when none is, -1 when several are.
    template<size_t N>
    static int marked(const std::array<QPushButton *, N> &buttons) {
        int result = 0;
        for (size_t i = 0; i < N; ++i) {
            const bool red = buttons[i]->styleSheet().contains("border: 1px solid #ef0303;");
            EXPECT_NE(red, buttons[i]->styleSheet().contains("border: none;"));
            if (red)
                result = result ? -1 : static_cast<int>(i + 1);
        }
        return result;
    }
    int markedRoom() const { return marked(rooms()); }
    int markedPosition() const { return marked(positions()); }

    std::array<QPushButton *, 3> rooms() const { return {form.btn_room1, form.btn_room2, form.btn_room3}; }
    std::array<QPushButton *, 4> positions() const {
        return {form.btn_env1, form.btn_env2, form.btn_env3, form.btn_env4};
    }

    QTimer rotationTimer;
    std::unique_ptr<ExclusiveEffects> effects;
    std::unique_ptr<RoomEffectsPage> page;
};

} // namespace

TEST_F(RoomEffectsPageTest, SetUpMarksTheStoredChoicesAndSendsNothing) {
    struct Row {
        uint8_t room, position;
        int markedRoom, markedPosition;
    };
    for (const Row &row :
         {Row{1, 4, 1, 4}, Row{3, 1, 3, 1}, Row{0, 0, 0, 0}, Row{77, 77, 0, 0}, Row{4, 5, 0, 0}}) {
        Ui::demoClass fresh;
        QMainWindow freshWindow;
        fresh.setupUi(&freshWindow);
        device.sound.room = row.room;
        device.sound.position = row.position;
        ExclusiveEffects group({freshWindow, fresh, device, volume, language}, rotationTimer, nullptr);
        RoomEffectsPage shown({freshWindow, fresh, device, volume, language}, group, nullptr);
        EXPECT_EQ(marked(std::array<QPushButton *, 3>{fresh.btn_room1, fresh.btn_room2, fresh.btn_room3}),
                  row.markedRoom);
        EXPECT_EQ(marked(std::array<QPushButton *, 4>{fresh.btn_env1, fresh.btn_env2, fresh.btn_env3,
                                                      fresh.btn_env4}),
                  row.markedPosition);
        if (row.markedPosition) {
            EXPECT_EQ(fresh.comboBox_2->currentIndex(), row.position - 1);
        }
        EXPECT_EQ(device.sound.room, row.room);
        EXPECT_EQ(device.sound.position, row.position);
        EXPECT_TRUE(fresh.comboBox_2->isHidden());
        EXPECT_TRUE(fresh.pushButton_27->isHidden());
    }
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

TEST_F(RoomEffectsPageTest, RoomOutOfRangeCanBeLeft) {
    start(1, 77, 0);
    form.btn_room1->click();
    EXPECT_EQ(markedRoom(), 1);
    EXPECT_EQ(recorder.sound.room, 1);
}

// By button, by the box or by the window's slot: a choice is one write, also of the position that is set
// already.
TEST_F(RoomEffectsPageTest, PositionIsSentOnceWhicheverWayItComes) {
    start(0, 1, 1);
    for (const int position : {3, 4, 4, 1}) {
        recorder.calls.clear();
        positions()[static_cast<size_t>(position - 1)]->click();
        EXPECT_EQ(recorder.sound.position, position);
        EXPECT_EQ(form.comboBox_2->currentIndex(), position - 1);
        EXPECT_EQ(markedPosition(), position);
        EXPECT_THAT(recorder.calls, ElementsAre(kWrite));
    }
    recorder.calls.clear();
    form.comboBox_2->setCurrentIndex(1);
    EXPECT_EQ(recorder.sound.position, 2);
    EXPECT_EQ(markedPosition(), 2);
    EXPECT_THAT(recorder.calls, ElementsAre(kWrite));

    recorder.calls.clear();
    page->selectMode(2);
    EXPECT_EQ(recorder.sound.position, 3);
    EXPECT_THAT(recorder.calls, ElementsAre(kWrite));
    for (const int ignored : {-1, 4, 1000})
        page->selectMode(ignored);
    EXPECT_EQ(recorder.calls.size(), 1U);
}
