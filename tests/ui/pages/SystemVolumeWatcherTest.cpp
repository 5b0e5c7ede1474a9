#include "ui/pages/SystemVolumeWatcher.h"

#include "ui/pages/FakeEndpoint.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QObject>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Signals = std::vector<std::string>;

// Collects a watcher's signals on the thread of its own making, as a page does.
class Listener : public QObject {
public:
    explicit Listener(const SystemVolumeWatcher &watcher) {
        connect(&watcher, &SystemVolumeWatcher::volumeChanged, this,
                [this](int percent) { add("volume " + std::to_string(percent)); });
        connect(&watcher, &SystemVolumeWatcher::muteChanged, this,
                [this](bool muted) { add(muted ? "muted" : "not muted"); });
    }

    Signals take() {
        QCoreApplication::sendPostedEvents(this);
        return std::exchange(received_, {});
    }

private:
    void add(std::string signal) {
        EXPECT_EQ(std::this_thread::get_id(), home_);
        received_.push_back(std::move(signal));
    }

    std::thread::id home_ = std::this_thread::get_id();
    Signals received_;
};

} // namespace

TEST(SystemVolumeWatcher, NotificationsBecomeSignals) {
    FakeEndpoint endpoint;
    SystemVolumeWatcher watcher;
    Listener listener(watcher);
    const auto after = [&](float level, bool muted) {
        endpoint.notifyFromAudioThread(level, muted);
        return listener.take();
    };
    EXPECT_THAT(after(0.499f, false), ElementsAre("volume 49", "not muted"));
    EXPECT_THAT(after(0.5f, true), ElementsAre("muted"));
    EXPECT_THAT(after(2.0f, false), ElementsAre("volume 100", "not muted"));
}

TEST(SystemVolumeWatcher, ReleasesWhatItHolds) {
    FakeEndpoint endpoint;
    auto watcher = std::make_unique<SystemVolumeWatcher>();
    EXPECT_EQ(endpoint.references(), 2); // enumerator and volume
    EXPECT_EQ(endpoint.registrations(), 1);
    IAudioEndpointVolumeCallback *callback = endpoint.callback().Detach(); // a late notification's reference

    Listener listener(*watcher);
    watcher.reset();
    EXPECT_EQ(endpoint.references(), 0);
    EXPECT_EQ(endpoint.registrations(), 0);
    EXPECT_TRUE(notifyCallback(callback, 0.3f, false));
    EXPECT_THAT(listener.take(), IsEmpty());
    EXPECT_EQ(callback->Release(), 0u) << "somebody still holds the callback";
}

TEST(SystemVolumeWatcher, DestructionWaitsForTheNotificationUnderWay) {
    FakeEndpoint endpoint;
    auto watcher = std::make_unique<SystemVolumeWatcher>();
    std::promise<void> inside, goOn;
    std::atomic<bool> delivered{false};
    QObject::connect(
        watcher.get(), &SystemVolumeWatcher::volumeChanged, watcher.get(),
        [&] {
            inside.set_value();
            goOn.get_future().wait();
            delivered = true;
        },
        Qt::DirectConnection);
    std::thread audio([&] { endpoint.notify(0.5f, false); });
    inside.get_future().wait();
    std::thread release([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        goOn.set_value();
    });
    watcher.reset();
    EXPECT_TRUE(delivered) << "the watcher was destroyed while it emitted";
    audio.join();
    release.join();
}

TEST(SystemVolumeWatcher, SurvivesBeingDestroyedUnderNotifications) {
    FakeEndpoint endpoint;
    std::atomic<bool> stop{false};
    const auto storm = [&] {
        while (!stop)
            endpoint.notify(0.25f, false);
    };
    std::thread first(storm), second(storm);
    for (int round = 0; round < 300; ++round) {
        SystemVolumeWatcher watcher;
        Listener listener(watcher);
    }
    stop = true;
    first.join();
    second.join();
    EXPECT_EQ(endpoint.references(), 0);
}
