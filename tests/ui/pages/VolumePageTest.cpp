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

using Calls = std::vector<std::string>;

struct Levels {
    int master, left, right;
};

Calls playback(int volume) {
    return {"_SetVolum(" + std::to_string(volume) + ", 0, 0)"};
}

Calls operator+(Calls calls, const Calls &more) {
    calls.insert(calls.end(), more.begin(), more.end());
    return calls;
}

const Calls kWrite{"setDeviceProperty(2)"};
const Calls kMuted{"_SetMasterMute(1, 0)"};
const Calls kSounding{"_SetMasterMute(0, 0)"};

} // namespace

class VolumePageTest : public PageTest {
protected:
    VolumePageTest() { Registry::CreateKey(ProductSettings::kProductKey); }

    ~VolumePageTest() override {
        recorder.reset(); // drops callbacks into this object
    }

    // Builds the page on a device with these levels; gives the calls of its set-up.
    Calls open(Levels levels, bool locked = false) {
        SoundBlock &sound = device.sound;
        sound.masterVolume = static_cast<int8_t>(levels.master);
        sound.leftVolume = static_cast<int8_t>(levels.left);
        sound.rightVolume = static_cast<int8_t>(levels.right);
        device.system.sound = sound; // as the device initialisation leaves it
        ProductSettings::writeDword(L"vol_locked", locked ? 1 : 0);
        page.reset();
        VolumePage::Services services;
        services.startTimersAndWatcher = [this] {
            recorder.calls.push_back("timers and watcher");
            watcher = std::make_unique<SystemVolumeWatcher>();
            return watcher.get();
        };
        services.startListener = [this] { recorder.calls.push_back("listener"); };
        page = std::make_unique<VolumePage>(context(), services, nullptr);
        return takeCalls();
    }

    Calls takeCalls() { return std::exchange(recorder.calls, {}); }

    Calls callsOf(QSlider *slider, int value) {
        slider->setValue(value);
        return takeCalls();
    }

    Calls callsOf(QAbstractButton *button) {
        button->click();
        return takeCalls();
    }

    Calls callsOfWindows(float level, bool muted) {
        endpoint.notifyFromAudioThread(level, muted);
        settle();
        return takeCalls();
    }

    // The levels in the block, the last one sent included, and everything that shows them.
    void expectShown(Levels levels) {
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
    }

    void expectSent(Levels levels) {
        expectShown(levels);
        EXPECT_EQ(memcmp(&recorder.sound, &device.sound, sizeof device.sound), 0);
        EXPECT_EQ(memcmp(&device.system.sound, &device.sound, sizeof device.sound), 0);
        EXPECT_FALSE(volume.volumeUpdating || volume.volumeSelfSet);
    }

    void expectMuteShown(bool muted) {
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

TEST_F(VolumePageTest, SetUpKeepsTheOrderOfItsCalls) {
    for (const int master : {44, 0}) {
        device.sound.muted = master != 0; // the master volume alone decides
        EXPECT_THAT(open({master, master, 0}),
                    ElementsAre("_getVolum(0, 0)", "timers and watcher", "listener",
                                master ? kSounding.front() : kMuted.front()));
        expectShown({master, master, 0});
        expectMuteShown(master == 0);
    }
    EXPECT_EQ(form.verticalSlider_4->maximum(), 100);
}

TEST_F(VolumePageTest, SlidersMoveEachOther) {
    struct Case {
        QSlider *slider;
        bool locked;
        int value;
        Levels after;
    };
    const Case cases[] = {
        {form.verticalSlider_4, false, 100, {100, 50, 100}},
        {form.horizontalSlider_16, false, 10, {10, 0, 10}},
        {form.verticalSlider_5, false, 60, {80, 60, 80}},
        {form.verticalSlider_7, false, 95, {95, 30, 95}},
        {form.verticalSlider_5, true, 70, {70, 70, 70}},
        {form.verticalSlider_7, true, 20, {20, 20, 20}},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.slider->objectName().toStdString() + (c.locked ? " locked" : ""));
        open({80, 30, 80}, c.locked);
        EXPECT_THAT(callsOf(c.slider, c.value), playback(c.after.master) + kWrite);
        expectSent(c.after);
        EXPECT_THAT(callsOf(c.slider, c.value), IsEmpty());
    }
}

TEST_F(VolumePageTest, SilenceMutesAndSoundUnmutes) {
    for (QSlider *slider :
         {form.verticalSlider_4, form.horizontalSlider_16, form.verticalSlider_5, form.verticalSlider_7}) {
        SCOPED_TRACE(slider->objectName().toStdString());
        open({40, 40, 40}, true);
        EXPECT_THAT(callsOf(slider, 0), playback(0) + kWrite + kMuted);
        expectMuteShown(true);
        EXPECT_THAT(callsOf(slider, 5), playback(5) + kWrite + kSounding + playback(5));
        expectMuteShown(false);
        EXPECT_THAT(callsOf(slider, 6), playback(6) + kWrite);
    }
    // Muted by hand: the next move of the master brings the sound back.
    callsOf(form.pushButton_12);
    EXPECT_THAT(callsOf(form.verticalSlider_4, 7), playback(7) + kWrite + kSounding + playback(7));
}

TEST_F(VolumePageTest, OnlyTheUnlockedLeftChannelLetsItsEchoThrough) {
    for (QSlider *slider :
         {form.verticalSlider_4, form.horizontalSlider_16, form.verticalSlider_5, form.verticalSlider_7})
        for (const bool locked : {false, true}) {
            SCOPED_TRACE(slider->objectName().toStdString() + (locked ? " locked" : ""));
            open({40, 40, 20}, locked);
            std::vector<bool> selfSet;
            recorder.onSetVolume = [&](int32_t) {
                EXPECT_TRUE(volume.volumeUpdating);
                selfSet.push_back(volume.volumeSelfSet);
                endpoint.notify(0.99f, false); // an echo on this thread must change nothing
            };
            slider->setValue(90);
            EXPECT_THAT(selfSet, ElementsAre(locked || slider != form.verticalSlider_5));
            EXPECT_EQ(device.sound.masterVolume, 90);
            recorder.onSetVolume = nullptr;
        }
}

TEST_F(VolumePageTest, ButtonsToggleAndWrite) {
    open({40, 40, 20});
    EXPECT_THAT(callsOf(form.pushButton_12), kMuted + kWrite);
    expectMuteShown(true);
    EXPECT_THAT(callsOf(form.pushButton_13), kSounding + kWrite);
    expectMuteShown(false);
    EXPECT_THAT(callsOf(form.pushButton_7), kWrite);
    EXPECT_EQ(recorder.sound.pageSwitch, 1);
    for (const bool locked : {true, false}) {
        EXPECT_THAT(callsOf(form.pushButton_4), IsEmpty());
        EXPECT_EQ(form.pushButton_4->styleSheet().contains("icon_lock.png"), locked);
        EXPECT_EQ(ProductSettings::readDword(L"vol_locked"), locked ? 1u : 0u);
    }
}

TEST_F(VolumePageTest, FollowsWindowsWithoutSettingItAgain) {
    open({44, 44, 20});
    EXPECT_THAT(callsOfWindows(0.455f, false), kWrite) << "only the mute state within the dead band";
    expectSent({44, 44, 20});
    {
        const FlagScope selfSet(volume.volumeSelfSet);
        EXPECT_THAT(callsOfWindows(0.805f, false), kWrite) << "the mute state only";
    }
    {
        const FlagScope updating(volume.volumeUpdating);
        EXPECT_THAT(callsOfWindows(0.805f, true), IsEmpty());
    }
    expectSent({44, 44, 20});
    EXPECT_THAT(callsOfWindows(0.605f, false), kWrite + kWrite);
    expectSent({60, 60, 36});
    EXPECT_THAT(callsOfWindows(0.615f, false), kWrite + kWrite);
    expectSent({61, 61, 37});
    EXPECT_THAT(callsOfWindows(0.615f, true), kWrite);
    expectMuteShown(true);
    EXPECT_THAT(callsOfWindows(0.625f, false), kWrite + kSounding + playback(62) + kWrite);
    expectMuteShown(false);
    EXPECT_THAT(callsOfWindows(0.0f, false), kWrite + kMuted + kWrite);
    expectMuteShown(false); // Windows' own word on the mute state comes last
}

TEST_F(VolumePageTest, DraggingWithWindowsEchoingEndsWhereTheUserLeftIt) {
    for (QSlider *slider : {form.verticalSlider_4, form.verticalSlider_5, form.verticalSlider_7}) {
        SCOPED_TRACE(slider->objectName().toStdString());
        open({1, 1, 0});
        recorder.onSetVolume = [this](int32_t percent) {
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
        takeCalls();
        settle();
        EXPECT_THAT(takeCalls(), IsEmpty()) << "the loop goes on by itself";
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
    expectSent({30, 30, 30});
    expectMuteShown(false);
}
