#pragma once

#include <string>
#include <windows.h>

// A visible top-level window of the process whose class name contains the text; null if there is none.
inline HWND findWindow(DWORD process, const std::wstring &className, bool orHidden = false) {
    HWND window = nullptr;
    while ((window = FindWindowExW(nullptr, window, nullptr, nullptr)) != nullptr) {
        DWORD owner = 0;
        GetWindowThreadProcessId(window, &owner);
        wchar_t name[128] = L"";
        GetClassNameW(window, name, 128);
        if (owner == process && std::wstring(name).find(className) != std::wstring::npos &&
            (orHidden || IsWindowVisible(window)))
            break;
    }
    return window;
}
