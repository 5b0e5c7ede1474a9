// What a process holds of the system, counted from outside.
#pragma once

#include <windows.h>

struct ProcessHoldings {
    size_t handles = 0;
    size_t gdiObjects = 0;
    size_t windows = 0; // children and message-only ones too
    size_t privateKilobytes = 0;

    static ProcessHoldings of(DWORD processId);
};
