// The volume page with Windows' own volume, whose notifications come from a thread of the audio system.
#include "ui/pages/VolumePage.h"

#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "ui/pages/FakeEndpoint.h"
#include "ui/pages/PageTest.h"
#include "ui/pages/SystemVolumeWatcher.h"

#include <atomic>
#include <deque>
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
        page = std::make_unique<VolumePage>(context());
        watcher = std::make_unique<SystemVolumeWatcher>();
        page->follow(*watcher);
        page->start();
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

// An endpoint that answers at once, or some steps late, with the float that it was set to: 0.7F reports 69.
TEST_F(VolumePageTest, ItsOwnVolumeDoesNotComeBack) {
    QSlider *const master = form.verticalSlider_4, *const right = form.verticalSlider_7;
    const struct {
        QSlider *slider;
        int step, turn, end; // the slider goes up to the turning point and back to the end
        bool locked;
        Levels after;
    } drags[] = {
        {right, 1, 100, 61, false, {61, 50, 61}},
        {right, 10, 100, 70, false, {70, 50, 70}},
        {right, 1, 70, 20, false, {50, 50, 20}},
        {master, 1, 100, 70, false, {70, 60, 70}},
        {form.verticalSlider_5, 1, 100, 57, true, {57, 57, 57}},
    };
    for (const size_t late : {0u, 3u}) {
        for (const auto &drag : drags) {
            SCOPED_TRACE(drag.slider->objectName().toStdString() + " to " + std::to_string(drag.end));
            open({60, 50, 60}, drag.locked);
            std::deque<int32_t> reports;
            recorder.onSetVolume = [&](int32_t percent) { reports.push_back(percent); };
            const auto answer = [&](size_t left) {
                for (; reports.size() > left; reports.pop_front()) {
                    endpoint.notifyFromAudioThread(static_cast<float>(reports.front()) / 100.0f, false);
                    QCoreApplication::sendPostedEvents();
                }
            };
            size_t steps = 0;
            for (int value = 60, by = drag.step; value != drag.end || by > 0; ++steps) {
                by = value == drag.turn ? -drag.step : by;
                drag.slider->setValue(value += by);
                answer(late);
            }
            answer(0);
            expectLevels(drag.after);
            EXPECT_EQ(recorder.countOf(kWrite), 2 * steps) << "one for each step, one for each mute state";
            recorder.onSetVolume = nullptr;
            callsOfWindows(0.405f, false);
            EXPECT_EQ(device.sound.masterVolume, 40) << "another's change";
        }
    }
    // A change made elsewhere while the panel's own are under way; and an unlocked left one, whose echo
    // passes.
    open({60, 50, 60});
    right->setValue(70);
    right->setValue(80);
    callsOfWindows(0.305f, false);
    expectLevels({30, 0, 30});
    callsOfWindows(0.7f, false);
    callsOfWindows(0.8f, false);
    expectLevels({30, 0, 30});
    callsOf(form.verticalSlider_5, 70);
    EXPECT_THAT(callsOfWindows(0.7f, false), ElementsAre(kWrite, kWrite));
    expectLevels({69, 69, 29});
}

// None at the start, then two devices after each other, as a headset is plugged in and another one chosen.
TEST(SystemVolumeWatcher, FollowsTheDefaultDevice) {
    FakeEndpoint endpoint;
    endpoint.present = false;
    SystemVolumeWatcher watcher;
    int reports = 0;
    QObject::connect(&watcher, &SystemVolumeWatcher::muteChanged, &watcher, [&] { ++reports; });
    const auto changeDefault = [&](EDataFlow flow, ERole role) {
        std::thread([&] { endpoint.defaultCallback->OnDefaultDeviceChanged(flow, role, L"id"); }).join();
    };
    ASSERT_TRUE(endpoint.defaultCallback);
    EXPECT_FALSE(endpoint.callback);
    endpoint.present = true;
    for (int device = 1; device <= 2; ++device) {
        const auto old = endpoint.callback;
        changeDefault(eCapture, eConsole);
        changeDefault(eRender, eCommunications);
        QCoreApplication::sendPostedEvents();
        EXPECT_EQ(endpoint.callback.Get(), old.Get()) << "not the playback device";
        changeDefault(eRender, eConsole);
        AUDIO_VOLUME_NOTIFICATION_DATA data{};
        if (old)
            old->OnNotify(&data);
        QCoreApplication::sendPostedEvents();
        EXPECT_EQ(reports, device - 1) << "the old endpoint is left";
        ASSERT_TRUE(endpoint.callback);
        EXPECT_NE(endpoint.callback.Get(), old.Get());
        endpoint.notifyFromAudioThread(0.5f, false);
        QCoreApplication::sendPostedEvents();
        EXPECT_EQ(reports, device);
    }
    endpoint.present = false;
    changeDefault(eRender, eConsole);
    QCoreApplication::sendPostedEvents();
    EXPECT_FALSE(endpoint.callback) << "the last device is gone";
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
    EXPECT_FALSE(endpoint.callback || endpoint.defaultCallback);
    EXPECT_EQ(late.Reset(), 0u) << "somebody still holds the callback";
}

} // namespace
