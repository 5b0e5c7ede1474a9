// The volume page with Windows' own volume, whose notifications come from a thread of the audio system.
#include "ui/pages/VolumePage.h"

#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "ui/pages/FakeEndpoint.h"
#include "ui/pages/PageTest.h"
#include "ui/pages/SystemVolumeWatcher.h"

#include <atomic>
#include <future>
#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

struct Levels {
    int master, left, right;
};

constexpr char kWrite[] = "setDeviceProperty(2)";
constexpr char kMute[] = "_SetMasterMute(1, 0)";
constexpr char kUnmute[] = "_SetMasterMute(0, 0)";

std::string setTo(int volume) {
    return "_SetVolum(" + std::to_string(volume) + ", 0, 0)";
}

class VolumePageTest : public PageTest {
protected:
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
        Registry::CreateKey(ProductSettings::kProductKey);
        ProductSettings::writeDword(L"vol_locked", locked ? 1 : 0);
        page.reset();
        VolumePage::Services services;
        services.startTimersAndWatcher = [this] {
            watcher = std::make_unique<SystemVolumeWatcher>();
            return watcher.get();
        };
        services.startListener = [] {};
        page = std::make_unique<VolumePage>(context(), services, nullptr);
        takeCalls();
    }

    std::vector<std::string> callsOf(QSlider *slider, int value) {
        slider->setValue(value);
        return takeCalls();
    }
    std::vector<std::string> callsOfWindows(float level, bool muted) {
        endpoint.notifyFromAudioThread(level, muted);
        QCoreApplication::sendPostedEvents();
        return takeCalls();
    }

    // On everything that shows them, and on the device.
    void expectLevels(Levels levels) {
        EXPECT_EQ(form.label_56->text(), QString::number(levels.master));
        EXPECT_EQ(form.label_57->text(), QString::number(levels.left));
        EXPECT_EQ(form.label_59->text(), QString::number(levels.right));
        EXPECT_EQ(form.verticalSlider_4->value(), levels.master);
        EXPECT_EQ(form.horizontalSlider_16->value(), levels.master);
        EXPECT_EQ(form.verticalSlider_5->value(), levels.left);
        EXPECT_EQ(form.verticalSlider_7->value(), levels.right);
        EXPECT_EQ(recorder.sound.masterVolume, levels.master);
        EXPECT_EQ(recorder.sound.leftVolume, levels.left);
        EXPECT_EQ(recorder.sound.rightVolume, levels.right);
    }

    FakeEndpoint endpoint;
    std::unique_ptr<SystemVolumeWatcher> watcher;
    std::unique_ptr<VolumePage> page;
};

// The unlocked left channel alone lets the echo of its volume through.
TEST_F(VolumePageTest, SlidersMoveEachOther) {
    const struct {
        QSlider *slider;
        bool locked;
        int value;
        Levels after;
        bool followsEcho;
    } cases[] = {
        {form.verticalSlider_4, false, 100, {100, 50, 100}, false},
        {form.horizontalSlider_16, false, 10, {10, 0, 10}, false},
        {form.verticalSlider_5, false, 60, {80, 60, 80}, true},
        {form.verticalSlider_7, false, 95, {95, 30, 95}, false},
        {form.verticalSlider_5, true, 70, {70, 70, 70}, false},
        {form.verticalSlider_7, true, 20, {20, 20, 20}, false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.slider->objectName().toStdString() + (c.locked ? " locked" : ""));
        open({80, 30, 80}, c.locked);
        recorder.onSetVolume = [&](int32_t) { EXPECT_EQ(volume.volumeSelfSet, !c.followsEcho); };
        EXPECT_THAT(callsOf(c.slider, c.value), ElementsAre(setTo(c.after.master), kWrite));
        expectLevels(c.after);
        recorder.onSetVolume = nullptr;
        EXPECT_THAT(callsOf(form.verticalSlider_4, 0), ElementsAre(setTo(0), kWrite, kMute));
        EXPECT_TRUE(shows(form.pushButton_12, "silent-volumeHigh.png"));
        EXPECT_THAT(callsOf(form.verticalSlider_4, 5), ElementsAre(setTo(5), kWrite, kUnmute, setTo(5)));
        EXPECT_FALSE(shows(form.pushButton_12, "silent-volumeHigh.png"));
    }
}

TEST_F(VolumePageTest, FollowsWindowsWithoutSettingItAgain) {
    open({44, 44, 20});
    EXPECT_THAT(callsOfWindows(0.455f, false), ElementsAre(kWrite)) << "dead band: only the mute state";
    EXPECT_THAT(callsOfWindows(0.615f, false), ElementsAre(kWrite, kWrite));
    expectLevels({61, 61, 37});
    EXPECT_THAT(callsOfWindows(0.805f, true), ElementsAre(kWrite)) << "muted: no level";
    EXPECT_EQ(recorder.sound.muted, 1);
    expectLevels({61, 61, 37});
    EXPECT_THAT(callsOfWindows(0.625f, false), ElementsAre(kWrite, kUnmute, setTo(62), kWrite));
    EXPECT_THAT(callsOfWindows(0.0f, false), ElementsAre(kWrite, kMute, kWrite));
    EXPECT_EQ(recorder.sound.muted, 0) << "Windows' own word on the mute state comes last";
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
            QCoreApplication::sendPostedEvents();
            ASSERT_NEAR(device.sound.masterVolume, value, 1) << "the scalar is cut to percent on its way";
        }
        EXPECT_EQ(recorder.countOf("_SetMasterMute"), 0u);
        EXPECT_LE(recorder.countOf("_SetVolum"), 197u) << "an echo set the volume again";
        recorder.onSetVolume = nullptr;
    }
}

TEST(SystemVolumeWatcher, EndsAfterTheNotificationUnderWayAndKeepsNothing) {
    FakeEndpoint endpoint;
    auto watcher = std::make_unique<SystemVolumeWatcher>();
    auto late = endpoint.callback; // the audio system may not have let go of it yet
    std::promise<void> inside;
    std::atomic<bool> delivered{false};
    const auto deliver = [&] {
        inside.set_value();
        Sleep(50);
        delivered = true;
    };
    QObject::connect(watcher.get(), &SystemVolumeWatcher::volumeChanged, watcher.get(), deliver,
                     Qt::DirectConnection);
    std::thread audio([&] { endpoint.notifyFromAudioThread(0.5f, false); });
    inside.get_future().wait();
    watcher.reset();
    EXPECT_TRUE(delivered) << "the watcher was destroyed while it emitted";
    audio.join();
    EXPECT_EQ(endpoint.references, 0);
    EXPECT_FALSE(endpoint.callback);
    EXPECT_EQ(late.Reset(), 0u) << "somebody still holds the callback";
}

} // namespace
