// The background thread that waits for key-event reports of the receiver. For each one it emits
// clicked(false) of a switch's button, as if the user had clicked it, and answers the receiver with the
// switch's new state.
//
// The thread opens the first supported device when it starts, keeps it, and runs until the process ends. It
// emits from its own thread: connect clicked with a context object, which queues the call to that object's
// thread.
#pragma once

#include <cstdint>
#include <functional>
#include <QAbstractButton>

// Call once. switchState gives the switch (0/1) as it is before the toggle; the listener's thread calls it.
void startDeviceEventListener(std::function<uint8_t()> switchState, QAbstractButton *button);

// After its return the thread touches neither the button nor switchState; key events are then ignored. To be
// called before either of them goes away. Without a running listener it does nothing.
void detachDeviceEventListener();
