// What this process holds of the system.
#pragma once

#include <windows.h>

// After windows.h.
#define PSAPI_VERSION 2
#include <psapi.h>

// Wine answers 0 to GetProcessHandleCount, so the possible handles, multiples of 4, are tried.
inline int openHandles() {
    int count = 0;
    DWORD flags = 0;
    for (uintptr_t handle = 4; handle < 0x4000; handle += 4)
        count += GetHandleInformation(reinterpret_cast<HANDLE>(handle), &flags) != FALSE;
    return count;
}

// Wine fills this field of the counters and not PrivateUsage.
inline size_t privateKilobytes() {
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
    return counters.PagefileUsage / 1024;
}
