// What a process holds of the system, counted from outside.
#pragma once

#include <windows.h>

struct ProcessHoldings {
    size_t handles = 0;
    size_t windows = 0; // children and message-only ones too
    size_t privateKilobytes = 0;

    static ProcessHoldings of(DWORD processId);
    // The fewest of some readings within half a second: timers and threads hold a handle or two for moments.
    static ProcessHoldings settled(DWORD processId);

    // The system's pool threads come and go all the same.
    static constexpr size_t kHandleNoise = 5;
};
