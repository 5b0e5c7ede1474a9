#include "ui/pages/VolumePage.h"

#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "ui/pages/FakeEndpoint.h"
#include "ui/pages/PageTest.h"
#include "ui/pages/SystemVolumeWatcher.h"

#include <gmock/gmock.h>

#include <memory>
#include <thread>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct Levels {
    int master, left, right;
};

const std::string kWrite = "setDeviceProperty(2)";
const std::string kMute = "_SetMasterMute(1, 0)";
const std::string kUnmute = "_SetMasterMute(0, 0)";

std::string setTo(int volume) {
    return "_SetVolum(" + std::to_string(volume) + ", 0, 0)";
}

class VolumePageTest : public PageTest {
protected:
    VolumePageTest() { Registry::CreateKey(ProductSettings::kProductKey); }
    ~VolumePageTest() override {
        recorder.reset(); // drops callbacks into this object
    }

    // Builds the page on a device with these levels.
    void open(Levels levels, bool locked = false) {
        SoundBlock &sound = device.sound;
        sound.masterVolume = static_cast<int8_t>(levels.master);
        sound.leftVolume = static_cast<int8_t>(levels.left);
        sound.rightVolume = static_cast<int8_t>(levels.right);
        device.system.sound = sound; // as the device initialisation leaves it
        ProductSettings::writeDword(L"vol_locked", locked ? 1 : 0);
        page.reset();
        VolumePage::Services services;
        services.startTimersAndWatcher = [this] {
            watcher = std::make_unique<SystemVolumeWatcher>();
            return watcher.get();
        };
        services.startListener = [] {};
        page = std::make_unique<VolumePage>(context(), services, nullptr);
    }

    // The calls of an action. Those of _SetVolum whose echo from Windows would be followed are marked.
    template<typename Act>
    std::vector<std::string> callsIn(Act act) {
        recorder.calls.clear();
        recorder.onSetVolume = [this](int32_t) {
            EXPECT_TRUE(volume.volumeUpdating);
            if (!volume.volumeSelfSet)
                recorder.calls.back() += " followed";
        };
        act();
        recorder.onSetVolume = nullptr;
        EXPECT_FALSE(volume.volumeUpdating || volume.volumeSelfSet);
        return recorder.calls;
    }
    auto callsOf(QSlider *slider, int value) {
        return callsIn([=] { slider->setValue(value); });
    }
    auto callsOf(QAbstractButton *button) {
        return callsIn([=] { button->click(); });
    }
    auto callsOfWindows(float level, bool muted) {
        return callsIn([=] {
            endpoint.notifyFromAudioThread(level, muted);
            settle();
        });
    }

    // In the block, on everything that shows it, and on the device.
    void expectLevels(Levels levels) {
        const SoundBlock &sound = device.sound;
        EXPECT_EQ(sound.masterVolume, levels.master);
        EXPECT_EQ(sound.leftVolume, levels.left);
        EXPECT_EQ(sound.rightVolume, levels.right);
        EXPECT_EQ(form.label_56->text(), QString::number(levels.master));
        EXPECT_EQ(form.label_57->text(), QString::number(levels.left));
        EXPECT_EQ(form.label_59->text(), QString::number(levels.right));
        EXPECT_EQ(form.verticalSlider_4->value(), levels.master);
        EXPECT_EQ(form.horizontalSlider_16->value(), levels.master);
        EXPECT_EQ(form.verticalSlider_5->value(), levels.left);
        EXPECT_EQ(form.verticalSlider_7->value(), levels.right);
        EXPECT_EQ(memcmp(&recorder.sound, &sound, sizeof sound), 0);
        EXPECT_EQ(memcmp(&device.system.sound, &sound, sizeof sound), 0);
    }

    void expectMuted(bool muted) {
        EXPECT_EQ(device.sound.muted, muted ? 1 : 0);
        for (const QPushButton *button : {form.pushButton_12, form.pushButton_13})
            EXPECT_EQ(button->styleSheet(),
                      QStringLiteral("background-image: url(:%1);")
                          .arg(muted ? "/right/png/silent-volumeHigh.png" : "/left/png/y1.png"));
    }

    FakeEndpoint endpoint;
    std::unique_ptr<SystemVolumeWatcher> watcher;
    std::unique_ptr<VolumePage> page;
};

} // namespace

// The unlocked left channel alone lets the echo of its volume through.
TEST_F(VolumePageTest, SlidersMoveEachOther) {
    const struct {
        QSlider *slider;
        bool locked;
        int value;
        Levels after;
        const char *echo;
    } cases[] = {
        {form.verticalSlider_4, false, 100, {100, 50, 100}, ""},
        {form.horizontalSlider_16, false, 10, {10, 0, 10}, ""},
        {form.verticalSlider_5, false, 60, {80, 60, 80}, " followed"},
        {form.verticalSlider_7, false, 95, {95, 30, 95}, ""},
        {form.verticalSlider_5, true, 70, {70, 70, 70}, ""},
        {form.verticalSlider_7, true, 20, {20, 20, 20}, ""},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.slider->objectName().toStdString() + (c.locked ? " locked" : ""));
        open({80, 30, 80}, c.locked);
        EXPECT_THAT(callsOf(c.slider, c.value), ElementsAre(setTo(c.after.master) + c.echo, kWrite));
        expectLevels(c.after);
    }
}

TEST_F(VolumePageTest, SilenceMutesAndSoundUnmutes) {
    for (QSlider *slider :
         {form.verticalSlider_4, form.horizontalSlider_16, form.verticalSlider_5, form.verticalSlider_7}) {
        SCOPED_TRACE(slider->objectName().toStdString());
        open({40, 40, 40}, true);
        EXPECT_THAT(callsOf(slider, 0), ElementsAre(setTo(0), kWrite, kMute));
        expectMuted(true);
        EXPECT_THAT(callsOf(slider, 5), ElementsAre(setTo(5), kWrite, kUnmute, setTo(5)));
        expectMuted(false);
    }
    open({0, 0, 0});
    expectMuted(true);
}

TEST_F(VolumePageTest, ButtonsToggleAndWrite) {
    open({40, 40, 20});
    EXPECT_THAT(callsOf(form.pushButton_12), ElementsAre(kMute, kWrite));
    expectMuted(true);
    EXPECT_THAT(callsOf(form.pushButton_13), ElementsAre(kUnmute, kWrite));
    expectMuted(false);
    EXPECT_THAT(callsOf(form.pushButton_7), ElementsAre(kWrite));
    EXPECT_EQ(recorder.sound.pageSwitch, 1);
    for (const bool locked : {true, false}) {
        EXPECT_THAT(callsOf(form.pushButton_4), IsEmpty());
        EXPECT_EQ(form.pushButton_4->styleSheet().contains("icon_lock.png"), locked);
        EXPECT_EQ(ProductSettings::readDword(L"vol_locked"), locked ? 1u : 0u);
    }
}

TEST_F(VolumePageTest, FollowsWindowsWithoutSettingItAgain) {
    open({44, 44, 20});
    EXPECT_THAT(callsOfWindows(0.455f, false), ElementsAre(kWrite)) << "dead band: only the mute state";
    volume.volumeUpdating = true;
    endpoint.notifyFromAudioThread(0.805f, true);
    settle();
    volume.volumeUpdating = false;
    expectLevels({44, 44, 20});
    EXPECT_THAT(callsOfWindows(0.615f, false), ElementsAre(kWrite, kWrite));
    expectLevels({61, 61, 37});
    EXPECT_THAT(callsOfWindows(0.615f, true), ElementsAre(kWrite));
    expectMuted(true);
    EXPECT_THAT(callsOfWindows(0.625f, false), ElementsAre(kWrite, kUnmute, setTo(62), kWrite));
    EXPECT_THAT(callsOfWindows(0.0f, false), ElementsAre(kWrite, kMute, kWrite));
    expectMuted(false); // Windows' own word on the mute state comes last
}

TEST_F(VolumePageTest, DraggingWithWindowsEchoingEndsWhereTheUserLeftIt) {
    for (QSlider *slider : {form.verticalSlider_4, form.verticalSlider_5, form.verticalSlider_7}) {
        SCOPED_TRACE(slider->objectName().toStdString());
        open({1, 1, 0});
        recorder.calls.clear();
        recorder.onSetVolume = [this](int32_t percent) {
            endpoint.notify(0.99f, false); // an echo on this thread must change nothing
            endpoint.notifyFromAudioThread(static_cast<float>(percent) / 100.0f, false);
        };
        for (int move = 2; move <= 198; ++move) { // up to 100 and down to 2
            const int value = move <= 100 ? move : 200 - move;
            slider->setValue(value);
            settle();
            ASSERT_NEAR(device.sound.masterVolume, value, 1) << "the scalar is cut to percent on its way";
        }
        EXPECT_EQ(recorder.countOf("_SetMasterMute"), 0u);
        EXPECT_LE(recorder.countOf("_SetVolum"), 197u) << "an echo set the volume again";
        recorder.onSetVolume = nullptr;
    }
}

TEST_F(VolumePageTest, NotificationStormEndsAtTheLastLevel) {
    open({50, 50, 50});
    std::thread audio([this] {
        for (int i = 0; i < 10000; ++i)
            endpoint.notify(static_cast<float>(i % 101) / 100.0f, i % 7 == 0);
        endpoint.notify(0.305f, false);
    });
    audio.join(); // the worst case: all of them wait for the GUI thread at once
    settle();
    expectLevels({30, 30, 30});
    expectMuted(false);
}
