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
