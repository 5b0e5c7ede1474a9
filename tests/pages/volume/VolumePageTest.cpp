// The volume page with Windows' own volume, whose notifications come from a thread of the audio system.
#include "pages/volume/VolumePage.h"
#include "pages/PageTest.h"
#include "pages/volume/FakeEndpoint.h"
#include "pages/volume/SystemVolumeWatcher.h"

#include <cmath>
#include <deque>
#include <gmock/gmock.h>

namespace {

using namespace testing;

using Levels = std::tuple<int8_t, int8_t, int8_t>; // master, left, right

constexpr char kWrite[] = "setDeviceProperty(2)";

class VolumePageTest : public PageTest {
protected:
    // The page on a device with these levels.
    void open(Levels levels, bool locked = false) {
        SoundBlock &sound = recorder.info.sound;
        std::tie(sound.masterVolume, sound.leftVolume, sound.rightVolume) = levels;
        ProductSettings::writeDword(L"vol_locked", locked ? 1 : 0);
        readDevice();
        page.reset();
        page.emplace(context);
        watcher.emplace();
        page->follow(*watcher);
        page->start();
        recorder.calls.clear();
    }

    void report(float level, bool muted = false) {
        endpoint.notifyFromAudioThread(level, muted);
        QCoreApplication::sendPostedEvents();
    }

    // On the device; how the sliders follow is a part of the session.
    Levels sent() const {
        return {recorder.sound.masterVolume, recorder.sound.leftVolume, recorder.sound.rightVolume};
    }

    FakeEndpoint endpoint;
    std::optional<SystemVolumeWatcher> watcher;
    std::optional<VolumePage> page;
};

TEST_F(VolumePageTest, FollowsWindowsWithoutSettingItAgain) {
    open({44, 44, 20});
    // A write for a level that is news (below 60 % not one step off), and one for the mute state.
    for (const auto &[level, writes] : {std::pair(0.455f, 1u),
                                        {0.425f, 2},
                                        {0.605f, 2},
                                        {0.599f, 1},
                                        {0.615f, 2},
                                        {0.605f, 2},
                                        {0.615f, 2}}) {
        report(level);
        EXPECT_EQ(std::exchange(recorder.calls, {}), std::vector<std::string>(writes, kWrite)) << level;
    }
    report(0.805f, true);
    EXPECT_THAT(std::exchange(recorder.calls, {}), ElementsAre(kWrite)) << "muted: no level";
    EXPECT_EQ(sent(), Levels(61, 61, 37));
    EXPECT_EQ(recorder.sound.muted, 1);
    for (const auto &[level, master] : {std::pair(2.0f, 100), {NAN, 0}}) {
        report(level);
        EXPECT_EQ(std::get<0>(sent()), master);
    }
}

// An endpoint that answers at once, or some steps late, with the float that it was set to: 0.7F reports 69.
TEST_F(VolumePageTest, ItsOwnVolumeDoesNotComeBack) {
    const struct {
        QSlider *slider;
        int turn, end; // the slider goes up to the turning point and back to the end
        bool locked;
        Levels after;
    } drags[] = {
        {form.verticalSlider_7, 70, 20, false, {50, 50, 20}},
        {form.verticalSlider_4, 100, 70, false, {70, 60, 70}},
        {form.verticalSlider_5, 100, 57, true, {57, 57, 57}},
    };
    for (const size_t late : {0u, 3u}) {
        for (const auto &drag : drags) {
            SCOPED_TRACE(&drag - drags);
            open({60, 50, 60}, drag.locked);
            std::deque<int32_t> reports;
            recorder.onSetVolume = [&](int32_t percent) { reports.push_back(percent); };
            const auto answer = [&](size_t left) {
                for (; reports.size() > left; reports.pop_front())
                    report(static_cast<float>(reports.front()) / 100.0f);
            };
            size_t steps = 0;
            for (int value = 60, by = 1; value != drag.end || by > 0; ++steps) {
                by = value == drag.turn ? -1 : by;
                drag.slider->setValue(value += by);
                answer(late);
            }
            answer(0);
            EXPECT_EQ(sent(), drag.after);
            EXPECT_THAT(recorder.calls, Contains(kWrite).Times(2 * steps)) << "each step, each mute state";
            recorder.onSetVolume = nullptr;
            report(0.405f);
            EXPECT_EQ(std::get<0>(sent()), 40) << "another's change";
        }
    }
    // A change made elsewhere while the panel's own are under way.
    open({60, 50, 60});
    form.verticalSlider_7->setValue(70);
    form.verticalSlider_7->setValue(80);
    report(0.305f);
    report(0.8f);
    EXPECT_EQ(sent(), Levels(30, 0, 30));
    form.verticalSlider_5->setValue(70);
    report(0.7f);
    EXPECT_EQ(sent(), Levels(69, 69, 29)) << "the echo of an unlocked left channel passes";
}

TEST(SystemVolumeWatcher, FollowsTheDefaultDeviceAndKeepsNothing) {
    FakeEndpoint endpoint;
    auto watcher = std::make_unique<SystemVolumeWatcher>();
    int reports = 0;
    QObject::connect(watcher.get(), &SystemVolumeWatcher::muteChanged, watcher.get(), [&] { ++reports; });
    const auto changeDefault = [&](EDataFlow flow, ERole role) {
        std::thread([&] { endpoint.defaultCallback->OnDefaultDeviceChanged(flow, role, L"id"); }).join();
    };
    const auto old = endpoint.callback;
    changeDefault(eCapture, eConsole);
    changeDefault(eRender, eCommunications);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(endpoint.callback.Get(), old.Get()) << "not the playback device";
    changeDefault(eRender, eConsole);
    endpoint.notifyFromAudioThread(0.5f, false); // the old endpoint, left already
    QCoreApplication::sendPostedEvents();
    ASSERT_TRUE(endpoint.callback);
    endpoint.notifyFromAudioThread(0.5f, false);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(reports, 1);
    watcher.reset();
    EXPECT_FALSE(endpoint.callback || endpoint.defaultCallback);
}

} // namespace
