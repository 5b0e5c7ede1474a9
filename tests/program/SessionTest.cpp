// A whole session with mouse and keyboard: every control of every page that is offered, a change of language,
// the tray, a second instance; and sessions that are killed in the middle.
#include "helpers/ProductSettings.h"
#include "program/FormMap.h"
#include "program/StoredSettings.h"
#include "ui/pages/EqPresets.h"

#include <functional>
#include <gtest/gtest.h>
#include <random>
#include <set>

namespace {

using ProductSettings::kProductKey;
using Field = std::function<int(const StoredSettings &)>;

#define STORED(field) ([=](const StoredSettings &stored) -> int { return stored.field; })

class SessionTest : public testing::Test {
protected:
    void SetUp() override { Panel::prepare(); }

    void start() {
        panel.start();
        ASSERT_TRUE(panel.waitForWindow())
            << (panel.running() ? "still running" : "ended with " + std::to_string(panel.waitForEnd()))
            << " after " << (panel.ownJournal().empty() ? "no call" : panel.ownJournal().back());
        Sleep(250); // past the one-shot re-layout
    }

    void click(const std::string &control) {
        used_.insert(control);
        panel.click(map.centreOf(control.c_str()));
    }

    void press(const std::string &control, const Field &field, int wanted) {
        click(control);
        expectStored(control, field, wanted, 0);
    }

    // Drags a slider's handle. The stored field is the slider's value plus `offset`, as exactly as a mouse
    // can aim: where a step is several pixels wide, only the end of the movement will do.
    void slide(const std::string &slider, int from, int to, const Field &field, int minimum = 0,
               int maximum = 100, int offset = 0) {
        used_.insert(slider);
        const POINT start = map.sliderPoint(slider.c_str(), from, minimum, maximum);
        panel.drag(start, map.sliderPoint(slider.c_str(), to, minimum, maximum));
        const int range = maximum - minimum;
        expectStored(slider, field, to + offset, range > 50 ? range / 50 + 1 : 0);
    }

    static void expectStored(const std::string &control, const Field &field, int wanted, int tolerance) {
        int last = 0;
        EXPECT_TRUE(waitUntil([&] {
            last = field(StoredSettings::read());
            return std::abs(last - wanted) <= tolerance;
        })) << control
            << ": stored " << last << ", wanted " << wanted;
    }

    // A double click selects the word that is there.
    void nameCurve(const std::wstring &word) {
        used_.insert("comboBox");
        panel.click(map.centreOf("comboBox"), 2);
        panel.type(word);
    }

    static int stored(const Field &field) { return field(StoredSettings::read()); }

    void useVolumePage();
    void useEqualizerPage();
    void useRoomEffectsPage();
    void useSoundFieldPage();
    void useMicrophonePage();
    void useVoiceEffectsPage();
    void useNoiseReductionPage();
    void useUpgradePage();
    void changeLanguage();

    FormMap map;
    Panel panel;
    std::set<std::string> used_;
};

void SessionTest::useVolumePage() {
    click("bt_y0");
    slide("verticalSlider_4", 60, 30, STORED(sound.masterVolume));
    slide("verticalSlider_5", 30, 50, STORED(sound.leftVolume));
    slide("verticalSlider_7", 30, 70, STORED(sound.rightVolume));
    slide("horizontalSlider_16", 70, 40, STORED(sound.masterVolume));
    press("pushButton_12", STORED(sound.muted), 1);
    press("pushButton_13", STORED(sound.muted), 0);
    click("pushButton_4");
    EXPECT_TRUE(waitUntil([] { return Registry::ValueExists(kProductKey, L"vol_locked"); }));
}

void SessionTest::useEqualizerPage() {
    click("bt_y2");
    press("pushButton_6", STORED(sound.equalizerOn), 0);
    press("pushButton_6", STORED(sound.equalizerOn), 1);
    for (int preset = 0; preset < EqPresets::kCount; ++preset)
        press("btn_jhq" + std::to_string(preset), STORED(extension.gain[1]),
              EqPresets::kGains[static_cast<size_t>(preset)][1]);
    nameCurve(L"flat");
    click("pushButton_25");
    for (int band = 0; band < 10; ++band)
        slide("verticalSlider_" + std::to_string(10 + band), 20, 3 + 3 * band, STORED(extension.gain[band]),
              0, 40, -20);
    nameCurve(L"mine");
    click("pushButton_25");
    EXPECT_TRUE(waitUntil([] { return StoredSettings::curves().curve[1].name[0] == u'm'; }));
    const int gain = stored(STORED(extension.gain[0]));
    press("pushButton_26", STORED(extension.gain[0]), 0);
    click("btn_curve_file");
    panel.press(VK_ESCAPE); // its menu
    nameCurve(L"flat");
    click("pushButton_24");
    EXPECT_TRUE(waitUntil([] { return StoredSettings::curves().curve[0].name[0] == u'm'; }));
    EXPECT_EQ(1, StoredSettings::curves().count);
    const EqCurve curve = StoredSettings::curves().curve[0];
    EXPECT_EQ(u"mine", std::u16string(curve.name));
    EXPECT_EQ(gain, curve.gain[0]);
}

void SessionTest::useRoomEffectsPage() {
    click("bt_y3");
    press("pushButton_32", STORED(sound.virtualSurroundOn), 1);
    press("pushButton_33", STORED(sound.roomEffectOn), 1);
    expectStored("the others of its group", STORED(sound.equalizerOn + stored.sound.virtualSurroundOn), 0, 0);
    for (const int room : {1, 2, 3})
        press("btn_room" + std::to_string(room), STORED(sound.room), room);
    for (const int position : {4, 3, 1, 2})
        press("btn_env" + std::to_string(position), STORED(sound.position), position);
}

void SessionTest::useSoundFieldPage() {
    click("bt_y4");
    press("pushButton_14", STORED(sound.soundFieldOn), 1);
    for (const int mode : {1, 2, 3, 4})
        press("Page4_P_" + std::to_string(mode), STORED(sound.fieldAngleMode), mode);
    press("Page4_P_6", STORED(sound.speakerLevel[7]), -1);
    press("Page4_P_5", STORED(sound.speakerLevel[7]), 0);
    press("Page4_P_7", STORED(sound.speakerLevel[7]), 1);
    slide("horizontalSlider_14", 1, -4, STORED(sound.speakerLevel[7]), -13, 4);
    const int level = stored(STORED(sound.speakerLevel[7]));
    const char *const speakers[] = {"page4_L",  "page4_R",  "page4_LS", "page4_RS",
                                    "page4_LB", "page4_RB", "page4_c",  "page4_w"};
    for (int i = 0; i < 8; ++i)
        slide(speakers[i], level, 3 - 2 * i, STORED(sound.speakerLevel[i]), -13, 4);
}

void SessionTest::useMicrophonePage() {
    click("bt_y6");
    slide("verticalSlider", 80, 45, STORED(system.micLevel));
    press("pushButton_15", STORED(system.micMuted), 1);
    press("pushButton_5", STORED(system.micPageSwitch), 0);
    slide("verticalSlider_2", 30, 70, STORED(system.monitorLevel));
    expectStored("monitoring by its level", STORED(system.monitoringOn), 1, 0);
    press("pushButton_16", STORED(system.monitoringOn), 0);
    press("btn_uninstall_mic", STORED(system.monitoringOn), 1); // its helper process runs now
}

void SessionTest::useVoiceEffectsPage() {
    click("bt_y8");
    press("pushButton_8", STORED(system.voiceEffectOn), 1);
    for (const int voice : {2, 3, 4, 1})
        press("btn_mh" + std::to_string(voice), STORED(system.voiceEffect), voice);
    slide("horizontalSlider_15", 50, 80, STORED(system.effectLevel));
    press("pushButton_30", STORED(system.effectLevel), 50);
    press("Page4_P_8", STORED(system.effectLevel), 49);
    press("Page4_P_9", STORED(system.effectLevel), 50);
    press("checkBox_5", STORED(system.echoOn), 1);
    press("checkBox_6", STORED(system.voiceEffectOn), 0);
}

void SessionTest::useNoiseReductionPage() {
    click("bt_y9");
    slide("horizontalSlider_17", 50, 20, STORED(system.noiseLevel));
    click("pushButton_31"); // arrives with the next write
    press("pushButton_29", STORED(system.noiseReductionOn), 0);
    EXPECT_EQ(50, stored(STORED(system.noiseLevel)));
}

void SessionTest::useUpgradePage() {
    click("bt_y11");
    click("lineEdit_4");
    click("pushButton_10");
    EXPECT_TRUE(waitUntil([&] { return panel.systemDialog() != nullptr; }));
    EXPECT_TRUE(waitUntil([&] {
        panel.press(VK_ESCAPE);
        Sleep(200);
        return !panel.systemDialog();
    }));
    click("pushButton_11");
    EXPECT_EQ(L"Please select a DONGLE binary file to update", panel.answerBox());
    click("pushButton_17");
    EXPECT_EQ(L"Please select a EARPHONE binary file to update", panel.answerBox());
    click("pushButton_18");
    EXPECT_TRUE(panel.running());
}

// English, by the keyboard: next entry of the language list, and Confirm.
void SessionTest::changeLanguage() {
    click("pushButton_3");
    Sleep(200);
    panel.press(VK_ESCAPE);
    Sleep(200);
    click("pushButton_2");
    Sleep(300);
    // The controls stand in a widget of the dialog, 370 x 286 pixels in the middle of the window.
    const POINT inDialog{1071 / 2 - 370 / 2 + 42, 869 / 2 - 286 / 2 + 38};
    panel.click({inDialog.x + 100, inDialog.y + 68}); // the list of languages
    Sleep(200);
    panel.press(VK_DOWN);
    panel.press(VK_RETURN);
    panel.click({inDialog.x + 217, inDialog.y + 186}); // Confirm
    EXPECT_TRUE(waitUntil([] { return Registry::ReadDwordValue(kProductKey, L"language") == 1; }));
}

template<typename Block>
bool same(const Block &one, const Block &other) {
    return std::memcmp(&one, &other, sizeof one) == 0;
}

TEST_F(SessionTest, EverySettingArrivesAndIsThereAfterwards) {
    Registry::WriteDwordValue(kProductKey, L"language", 0);
    start();
    useVolumePage();
    useEqualizerPage();
    useRoomEffectsPage();
    useSoundFieldPage();
    useMicrophonePage();
    useVoiceEffectsPage();
    useNoiseReductionPage();
    useUpgradePage();
    changeLanguage();

    const StoredSettings before = StoredSettings::read();
    click("pushButton_1");
    ASSERT_TRUE(waitUntil([&] { return IsIconic(panel.window()); }));
    ShowWindow(panel.window(), SW_RESTORE);
    click("pushButton");
    ASSERT_TRUE(waitUntil([&] { return !IsWindowVisible(panel.window()); }));

    // Controls that the pages keep out of sight.
    for (const char *hidden : {"pushButton_7", "btn_install_spk", "btn_uninstall_spk", "comboBox_2",
                               "pushButton_27", "btn_install_mic"})
        used_.insert(hidden);
    for (const std::string &control : map.offeredControls())
        EXPECT_TRUE(used_.count(control)) << control << " was not used";

    Panel second;
    second.start();
    EXPECT_EQ(0, panel.waitForEnd());
    ASSERT_TRUE(second.waitForWindow());
    EXPECT_EQ(0u, Registry::ReadDwordValue(kProductKey, L"exitCmd"));

    // Nothing was lost, but for what the end of the first instance clears.
    StoredSettings wanted = before;
    wanted.system.monitoringOn = 0;
    const StoredSettings after = StoredSettings::read();
    EXPECT_TRUE(same(wanted.system, after.system));
    EXPECT_TRUE(same(wanted.sound, after.sound));
    EXPECT_TRUE(same(wanted.extension, after.extension));
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
