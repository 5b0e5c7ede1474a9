// The background thread that waits for key-event reports of the receiver. For each one it emits
// clicked(false) of a switch's button, as if the user had clicked it, and answers the receiver with the
// switch's new state.
//
// The thread opens the first supported device when it starts, looks for one again when it is told that
// devices changed and its own is gone, and runs until the process ends, also without this object. It emits
// from its own thread: connect clicked with a context object, which queues the call to that object's thread.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <QAbstractButton>

class DeviceEventListener {
public:
    // Starts the thread; one object for each process. switchState holds the switch (0/1) and is read before
    // the click.
    DeviceEventListener(const std::atomic<uint8_t> &switchState, QAbstractButton &button);
    // From now on the thread touches neither the button nor the state, and ignores key events.
    ~DeviceEventListener();
    DeviceEventListener(const DeviceEventListener &) = delete;
    DeviceEventListener &operator=(const DeviceEventListener &) = delete;

    // Windows tells that devices came or went.
    void devicesChanged();

private:
    class Link;
    static void threadProcedure(const std::shared_ptr<Link> &link);
    [[noreturn]] static void listen(Link &link);

    const std::shared_ptr<Link> link_;
};
