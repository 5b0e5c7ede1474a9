// A whole session with mouse and keyboard: every page, the controls of each, a change of language, the tray,
// a second instance; and sessions that are killed in the middle.
#include "helpers/ProductSettings.h"
#include "program/FormMap.h"
#include "program/StoredSettings.h"

#include <gtest/gtest.h>
#include <random>

namespace {

using ProductSettings::kProductKey;

class SessionTest : public testing::Test {
protected:
    void SetUp() override { Panel::prepare(); }

    void start() {
        panel.start();
        ASSERT_TRUE(panel.waitForWindow());
        Sleep(250); // past the one-shot re-layout
    }

    void click(const char *control) { panel.click(map.centreOf(control)); }

    void drag(const char *slider, int from, int to, int minimum = 0, int maximum = 100) {
        const POINT start = map.sliderPoint(slider, from, minimum, maximum);
        panel.drag(start, map.sliderPoint(slider, to, minimum, maximum));
    }

    // Waits until the value that `read` takes from the stored settings is within 2 of the wanted one, which
    // is as exactly as a mouse can aim.
    template<typename Read>
    static void expectStored(int wanted, Read read, int tolerance = 0) {
        const auto difference = [&] {
            return std::abs(static_cast<int>(read(StoredSettings::read())) - wanted);
        };
        EXPECT_TRUE(waitUntil([&] { return difference() <= tolerance; })) << "off by " << difference();
    }

    FormMap map;
    Panel panel;
};

#define STORED(field) ([](const StoredSettings &stored) { return stored.field; })

TEST_F(SessionTest, EverySettingArrivesAndIsThereAfterwards) {
    Registry::WriteDwordValue(kProductKey, L"language", 0);
    start();

    click("bt_y0");
    drag("verticalSlider_4", 60, 30);
    expectStored(30, STORED(sound.masterVolume), 2);
    click("pushButton_12");
    expectStored(1, STORED(sound.muted));
    click("pushButton_13");
    expectStored(0, STORED(sound.muted));
    click("pushButton_4");
    EXPECT_TRUE(waitUntil([] { return Registry::ValueExists(kProductKey, L"vol_locked"); }));

    click("bt_y2");
    click("btn_jhq5");
    expectStored(11, STORED(extension.gain[0]));
    expectStored(6, STORED(extension.gain[9]));
    drag("verticalSlider_19", 26, 5, 0, 40);
    expectStored(-15, STORED(extension.gain[9]), 1);
    click("comboBox");
    panel.type(L"my curve");
    click("pushButton_25");
    EXPECT_TRUE(waitUntil([] { return StoredSettings::curves().curve[0].name[0] == u'm'; }));

    click("bt_y3");
    click("pushButton_33");
    expectStored(1, STORED(sound.roomEffectOn));
    expectStored(0, STORED(sound.equalizerOn));
    click("btn_room3");
    expectStored(3, STORED(sound.room));
    click("btn_env2");
    expectStored(2, STORED(sound.position));
    click("pushButton_32");
    expectStored(1, STORED(sound.virtualSurroundOn));

    click("bt_y4");
    click("pushButton_14");
    expectStored(1, STORED(sound.soundFieldOn));
    click("Page4_P_2");
    expectStored(2, STORED(sound.fieldAngleMode));
    click("Page4_P_7");
    expectStored(1, STORED(sound.speakerLevel[7]));
    drag("page4_L", 1, -8, -13, 4);
    expectStored(-8, STORED(sound.speakerLevel[0]), 1);

    click("bt_y6");
    drag("verticalSlider", 80, 45);
    expectStored(45, STORED(system.micLevel), 2);
    drag("verticalSlider_2", 30, 70);
    expectStored(70, STORED(system.monitorLevel), 2);
    expectStored(1, STORED(system.monitoringOn)); // its helper process runs now

    click("bt_y8");
    click("pushButton_8");
    expectStored(1, STORED(system.voiceEffectOn));
    click("btn_mh3");
    expectStored(3, STORED(system.voiceEffect));
    drag("horizontalSlider_15", 50, 80);
    expectStored(80, STORED(system.effectLevel), 2);

    click("bt_y9");
    drag("horizontalSlider_17", 50, 20);
    expectStored(20, STORED(system.noiseLevel), 2);
    click("pushButton_29");
    expectStored(0, STORED(system.noiseReductionOn));

    // English, by the keyboard: next entry of the language list, and Confirm.
    click("pushButton_2");
    Sleep(300);
    const POINT dialog{1071 / 2 - 370 / 2, 869 / 2 - 286 / 2};
    panel.click({dialog.x + 42 + 100, dialog.y + 38 + 68});
    Sleep(200);
    panel.press(VK_DOWN);
    panel.press(VK_RETURN);
    panel.click({dialog.x + 42 + 217, dialog.y + 38 + 186});
    EXPECT_TRUE(waitUntil([] { return Registry::ReadDwordValue(kProductKey, L"language") == 1; }));

    const StoredSettings before = StoredSettings::read();
    click("pushButton_1");
    ASSERT_TRUE(waitUntil([&] { return IsIconic(panel.window()); }));
    ShowWindow(panel.window(), SW_RESTORE);
    click("pushButton");
    ASSERT_TRUE(waitUntil([&] { return !IsWindowVisible(panel.window()); }));

    Panel second;
    second.start();
    EXPECT_EQ(0, panel.waitForEnd());
    ASSERT_TRUE(second.waitForWindow());
    EXPECT_EQ(0u, Registry::ReadDwordValue(kProductKey, L"exitCmd"));

    // Nothing was lost, but for what the end of the first instance clears.
    StoredSettings wanted = before;
    wanted.system.monitoringOn = 0;
    const StoredSettings after = StoredSettings::read();
    EXPECT_EQ(0, std::memcmp(&wanted.system, &after.system, sizeof after.system));
    EXPECT_EQ(0, std::memcmp(&wanted.sound, &after.sound, sizeof after.sound));
    EXPECT_EQ(0, std::memcmp(&wanted.extension, &after.extension, sizeof after.extension));
    EXPECT_EQ(0, std::memcmp(StoredSettings::curves().curve[0].gain, after.extension.gain, 10));
    const std::vector<uint8_t> snapshot =
        Registry::ReadBinaryValue(kProductKey, L"{6F8E9E8B-C370-48D3-A20E-D1CA1D61BB3C}");
    ASSERT_EQ(sizeof before.sound, snapshot.size());
    EXPECT_EQ(0, std::memcmp(snapshot.data(), &before.sound, sizeof before.sound));
}

TEST_F(SessionTest, KilledAtAnyMomentItStartsWithConsistentSettings) {
    std::mt19937 random(20261122);
    const char *actions[] = {"bt_y2",         "btn_jhq3",     "pushButton_25", "btn_jhq7",
                             "pushButton_25", "bt_y3",        "btn_env3",      "pushButton_33",
                             "btn_room1",     "pushButton_6", "pushButton_24"};
    for (int round = 0; round < 20; ++round) {
        start();
        const size_t count = random() % std::size(actions);
        for (size_t i = 0; i < count; ++i) {
            click(actions[i]);
            if (i == 1) {
                click("comboBox");
                panel.type(L"c" + std::to_wstring(round % 12));
            }
        }
        Sleep(random() % 20);
        panel.kill();

        const StoredSettings stored = StoredSettings::read();
        const SoundBlock &sound = stored.sound;
        EXPECT_LE(sound.virtualSurroundOn + sound.soundFieldOn + sound.roomEffectOn + sound.equalizerOn, 1)
            << round;
        const EqCurveStore curves = StoredSettings::curves();
        ASSERT_GE(curves.count, 0) << round;
        ASSERT_LE(curves.count, 10) << round;
    }
    start();
    EXPECT_TRUE(panel.running());
}

} // namespace
