// The background thread that waits for key-event reports of the receiver. For each one it emits
// clicked(false) of a switch's button, as if the user had clicked it, and answers the receiver with the
// switch's new state.
//
// The thread opens the first supported device when it starts, keeps it, and runs until the process ends. It
// emits from its own thread: connect clicked with a context object, which queues the call to that object's
// thread.
#pragma once

#include <cstdint>
#include <QAbstractButton>

// Call once. switchByte holds the switch (0/1) and changes on the GUI thread; the listener reads it before
// the click.
void startDeviceEventListener(const volatile uint8_t *switchByte, QAbstractButton *button);

// After its return the thread touches neither the button nor the byte; key events are then ignored. To be
// called before either of them goes away. Without a running listener it does nothing.
void detachDeviceEventListener();
