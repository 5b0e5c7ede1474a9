#pragma once

#include <windows.h>

// Waits until condition() holds; false after the time-out, which is long enough for a busy machine.
template<typename Condition>
bool waitUntil(Condition condition, DWORD milliseconds = 20000) {
    const DWORD start = GetTickCount();
    while (!condition()) {
        if (GetTickCount() - start >= milliseconds)
            return false;
        Sleep(5);
    }
    return true;
}

// Gives an input until condition() holds, again every two seconds: what comes while a window is being mapped
// is lost. False when it never holds.
template<typename Input, typename Condition>
bool giveUntil(Input give, Condition condition) {
    for (int attempt = 0; attempt < 15; ++attempt) {
        give();
        if (waitUntil(condition, 2000))
            return true;
    }
    return false;
}
