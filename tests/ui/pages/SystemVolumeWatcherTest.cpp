#include "ui/pages/SystemVolumeWatcher.h"

#include "ui/pages/FakeEndpoint.h"

#include <gmock/gmock.h>

#include <QCoreApplication>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <string>
#include <thread>

using testing::ElementsAre;

TEST(SystemVolumeWatcher, NotificationsBecomeSignalsOnTheReceiversThread) {
    FakeEndpoint endpoint;
    SystemVolumeWatcher watcher;
    QObject receiver;
    std::vector<std::string> received;
    const auto add = [&, home = std::this_thread::get_id()](const std::string &signal) {
        EXPECT_EQ(std::this_thread::get_id(), home);
        received.push_back(signal);
    };
    QObject::connect(&watcher, &SystemVolumeWatcher::volumeChanged, &receiver,
                     [&](int percent) { add(std::to_string(percent)); });
    QObject::connect(&watcher, &SystemVolumeWatcher::muteChanged, &receiver,
                     [&](bool muted) { add(muted ? "muted" : "not muted"); });
    endpoint.notifyFromAudioThread(0.499f, false);
    endpoint.notifyFromAudioThread(0.5f, true);
    QCoreApplication::sendPostedEvents();
    EXPECT_THAT(received, ElementsAre("49", "not muted", "muted"));
}

TEST(SystemVolumeWatcher, ReleasesWhatItHoldsUnderNotifications) {
    FakeEndpoint endpoint;
    auto watcher = std::make_unique<SystemVolumeWatcher>();
    EXPECT_EQ(endpoint.references(), 2);                                   // enumerator and volume
    IAudioEndpointVolumeCallback *callback = endpoint.callback().Detach(); // a late notification's reference
    ASSERT_TRUE(callback);
    const auto storm = [callback] {
        for (int i = 0; i < 100000; ++i)
            FakeEndpoint::notify(*callback, 0.3f, false);
    };
    std::thread first(storm), second(storm);
    watcher.reset();
    first.join();
    second.join();
    EXPECT_EQ(endpoint.references(), 0);
    EXPECT_FALSE(endpoint.callback());
    EXPECT_EQ(callback->Release(), 0u) << "somebody still holds the callback";
}

TEST(SystemVolumeWatcher, DestructionWaitsForTheNotificationUnderWay) {
    FakeEndpoint endpoint;
    auto watcher = std::make_unique<SystemVolumeWatcher>();
    std::promise<void> inside;
    std::atomic<bool> delivered{false};
    QObject::connect(
        watcher.get(), &SystemVolumeWatcher::volumeChanged, watcher.get(),
        [&] {
            inside.set_value();
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            delivered = true;
        },
        Qt::DirectConnection);
    std::thread audio([&] { endpoint.notify(0.5f, false); });
    inside.get_future().wait();
    watcher.reset();
    EXPECT_TRUE(delivered) << "the watcher was destroyed while it emitted";
    audio.join();
}
