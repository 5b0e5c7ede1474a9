// Wine answers 0 to GetProcessHandleCount, so the table behind it is counted here.
#include "support/ProcessHoldings.h"

#include "helpers/WinHandles.h"

#include <algorithm>
#include <vector>

// After windows.h.
#define PSAPI_VERSION 2
#include <psapi.h>

namespace {

size_t countHandles(DWORD processId) {
    struct Entry {
        void *object;
        ULONG_PTR processId, handle;
        ULONG rest[4];
    };
    struct Table {
        ULONG_PTR count, reserved;
        Entry entries[1];
    };
    constexpr ULONG kExtendedHandleInformation = 64;
    using Query = LONG(WINAPI *)(ULONG, void *, ULONG, ULONG *);
    const auto query = reinterpret_cast<Query>(
        reinterpret_cast<void *>(GetProcAddress(GetModuleHandleW(L"ntdll"), "NtQuerySystemInformation")));
    std::vector<ULONG_PTR> buffer(1 << 20);
    ULONG length = 0;
    if (query(kExtendedHandleInformation, buffer.data(), static_cast<ULONG>(buffer.size() * sizeof buffer[0]),
              &length) != 0)
        return 0;
    const auto *table = reinterpret_cast<const Table *>(buffer.data());
    size_t count = 0;
    for (ULONG_PTR i = 0; i < table->count; ++i)
        count += table->entries[i].processId == processId;
    return count;
}

struct WindowCount {
    DWORD process;
    size_t windows;
};

BOOL CALLBACK countWindow(HWND window, LPARAM argument) {
    auto &count = *reinterpret_cast<WindowCount *>(argument);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    count.windows += process == count.process;
    return TRUE;
}

size_t countWindows(DWORD processId) {
    WindowCount count{processId, 0};
    EnumChildWindows(GetDesktopWindow(), &countWindow, reinterpret_cast<LPARAM>(&count));
    HWND window = nullptr;
    while ((window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr)
        countWindow(window, reinterpret_cast<LPARAM>(&count));
    return count.windows;
}

// Committed memory of the process alone. Wine fills this field and not PrivateUsage.
size_t countPrivateKilobytes(HANDLE process) {
    PROCESS_MEMORY_COUNTERS counters{};
    counters.cb = sizeof counters;
    return GetProcessMemoryInfo(process, &counters, sizeof counters) ? counters.PagefileUsage / 1024 : 0;
}

} // namespace

ProcessHoldings ProcessHoldings::of(DWORD processId) {
    const UniqueHandle process(OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, processId));
    ProcessHoldings held;
    held.privateKilobytes = countPrivateKilobytes(process.get());
    held.windows = countWindows(processId);
    held.handles = countHandles(processId);
    return held;
}

ProcessHoldings ProcessHoldings::settled(DWORD processId) {
    ProcessHoldings fewest = of(processId);
    for (int reading = 0; reading < 10; ++reading) {
        Sleep(37); // apart from the beat of the program's own timers, 100 ms
        const ProcessHoldings held = of(processId);
        fewest.handles = std::min(fewest.handles, held.handles);
        fewest.windows = std::min(fewest.windows, held.windows);
        fewest.privateKilobytes = std::min(fewest.privateKilobytes, held.privateKilobytes);
    }
    return fewest;
}
