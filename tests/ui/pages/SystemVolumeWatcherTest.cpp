#include "ui/pages/SystemVolumeWatcher.h"

#include "ui/pages/FakeEndpoint.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QObject>

#include <atomic>
#include <chrono>
#include <future>
#include <limits>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using Microsoft::WRL::ComPtr;
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

// Runs work again and again on threads of its own until destroyed.
class Workers {
public:
    Workers(int count, std::function<void()> work) {
        for (int i = 0; i < count; ++i)
            threads_.emplace_back([this, work] {
                while (!stop_)
                    work();
            });
    }
    ~Workers() {
        stop_ = true;
        for (std::thread &thread : threads_)
            thread.join();
    }

private:
    std::atomic<bool> stop_{false};
    std::vector<std::thread> threads_;
};

HRESULT apartmentState() {
    APTTYPE type;
    APTTYPEQUALIFIER qualifier;
    return CoGetApartmentType(&type, &qualifier);
}

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
    EXPECT_THAT(after(1.0f, false), ElementsAre("volume 100", "not muted"));
    EXPECT_THAT(after(0.5f, true), ElementsAre("muted"));
    EXPECT_THAT(after(-1.0f, false), ElementsAre("volume 0", "not muted"));
    EXPECT_THAT(after(2.0f, false), ElementsAre("volume 100", "not muted"));
    EXPECT_THAT(after(std::numeric_limits<float>::quiet_NaN(), false), ElementsAre("volume 0", "not muted"));
    EXPECT_THAT(after(std::numeric_limits<float>::quiet_NaN(), true), ElementsAre("muted"));
    EXPECT_EQ(endpoint.callback()->OnNotify(nullptr), S_OK);
    EXPECT_THAT(listener.take(), IsEmpty());
}

TEST(SystemVolumeWatcher, ReleasesWhatItHolds) {
    FakeEndpoint endpoint;
    auto watcher = std::make_unique<SystemVolumeWatcher>();
    EXPECT_EQ(endpoint.references(), "enumerator 1, device 0, volume 1");
    EXPECT_EQ(endpoint.registrations(), 1);
    IAudioEndpointVolumeCallback *callback = endpoint.callback().Detach(); // a late notification's reference

    Listener listener(*watcher);
    watcher.reset();
    EXPECT_EQ(endpoint.references(), "enumerator 0, device 0, volume 0");
    EXPECT_EQ(endpoint.unregistrations(), 1);
    EXPECT_TRUE(notifyCallback(callback, 0.3f, false));
    EXPECT_THAT(listener.take(), IsEmpty());
    EXPECT_EQ(callback->Release(), 0u) << "somebody still holds the callback";
}

TEST(SystemVolumeWatcher, StaysSilentWithoutEndpoint) {
    struct Case {
        EndpointFault fault;
        const char *references;
    };
    const Case cases[] = {
        {EndpointFault::Enumerator, "enumerator 0, device 0, volume 0"},
        {EndpointFault::DefaultDevice, "enumerator 1, device 0, volume 0"},
        {EndpointFault::Activation, "enumerator 1, device 0, volume 0"},
        {EndpointFault::Registration, "enumerator 1, device 0, volume 1"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.references);
        FakeEndpoint endpoint(c.fault);
        {
            SystemVolumeWatcher watcher;
            Listener listener(watcher);
            EXPECT_EQ(endpoint.references(), c.references);
            endpoint.notify(0.5f, false);
            EXPECT_THAT(listener.take(), IsEmpty());
        }
        EXPECT_EQ(endpoint.references(), "enumerator 0, device 0, volume 0");
        EXPECT_EQ(endpoint.unregistrations(), 0);
    }
    SystemVolumeWatcher onSystemWithoutSound;
}

TEST(SystemVolumeWatcher, CallbackAnswersForItsInterfacesOnly) {
    FakeEndpoint endpoint;
    SystemVolumeWatcher watcher;
    const auto callback = endpoint.callback();
    const ULONG before = (callback->AddRef(), callback->Release());
    for (const IID &iid : {__uuidof(IUnknown), __uuidof(IAudioEndpointVolumeCallback)}) {
        void *out = nullptr;
        ASSERT_EQ(callback->QueryInterface(iid, &out), S_OK);
        EXPECT_EQ(out, callback.Get());
        EXPECT_EQ(static_cast<IUnknown *>(out)->Release(), before);
    }
    void *out = &watcher;
    EXPECT_EQ(callback->QueryInterface(__uuidof(IAudioEndpointVolume), &out), E_NOINTERFACE);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(callback->QueryInterface(__uuidof(IUnknown), nullptr), E_POINTER);
}

TEST(SystemVolumeWatcher, BalancesComOfItsThread) {
    std::thread([] {
        { SystemVolumeWatcher watcher; }
        EXPECT_EQ(apartmentState(), CO_E_NOTINITIALIZED);
    }).join();
    std::thread([] {
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
        { SystemVolumeWatcher inOtherApartment; }
        EXPECT_EQ(apartmentState(), S_OK);
        CoUninitialize();
    }).join();
}

TEST(SystemVolumeWatcher, CountsReferencesOfConcurrentNotifications) {
    FakeEndpoint endpoint;
    SystemVolumeWatcher watcher;
    const auto callback = endpoint.callback();
    const ULONG before = (callback->AddRef(), callback->Release());
    {
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i)
            threads.emplace_back([raw = callback.Get()] {
                for (int n = 0; n < 10000; ++n) {
                    const ComPtr<IAudioEndpointVolumeCallback> held(raw);
                    if (n % 10 == 0)
                        notifyCallback(held.Get(), 0.5f, true);
                }
            });
        for (std::thread &thread : threads)
            thread.join();
    }
    callback->AddRef();
    EXPECT_EQ(callback->Release(), before);
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
    Workers storm(2, [&endpoint] {
        endpoint.notify(0.25f, false);
        endpoint.notify(0.75f, true);
    });
    for (int round = 0; round < 300; ++round) {
        SystemVolumeWatcher watcher;
        Listener listener(watcher);
        if (round % 3 == 0)
            std::this_thread::yield();
    }
    EXPECT_EQ(endpoint.references(), "enumerator 0, device 0, volume 0");
}

TEST(SystemVolumeWatcher, ReceiverMayNotifyAgainOrDestroyTheWatcher) {
    FakeEndpoint endpoint;
    auto *watcher = new SystemVolumeWatcher;
    int depth = 0, mutes = 0;
    QObject receiver;
    QObject::connect(watcher, &SystemVolumeWatcher::muteChanged, &receiver, [&] { ++mutes; });
    QObject::connect(watcher, &SystemVolumeWatcher::volumeChanged, &receiver, [&](int percent) {
        if (++depth == 1)
            endpoint.notify(0.5f, false); // as a page that sets the volume in answer
        else if (percent == 50)
            delete std::exchange(watcher, nullptr);
    });
    endpoint.notify(0.25f, false);
    EXPECT_EQ(watcher, nullptr);
    EXPECT_EQ(mutes, 0) << "signals of a destroyed watcher";
    EXPECT_EQ(endpoint.references(), "enumerator 0, device 0, volume 0");
}
