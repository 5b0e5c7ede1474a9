// Message boxes of the system, of this process or another one.
#pragma once

#include "support/FindWindow.h"

inline HWND findBox(DWORD process = GetCurrentProcessId()) {
    return findWindow(process, L"#32770");
}

inline std::wstring textOfBox(HWND box) {
    wchar_t text[512] = L"";
    for (HWND label = nullptr; !*text && (label = FindWindowExW(box, label, L"Static", nullptr));)
        SendMessageW(label, WM_GETTEXT, 512, reinterpret_cast<LPARAM>(text)); // the icon's label is empty
    return text;
}

// Clicks on a button; 0 is the leftmost.
inline void pressButtonOfBox(HWND box, int index) {
    HWND button = nullptr;
    do
        button = FindWindowExW(box, button, L"Button", nullptr);
    while (index-- > 0);
    PostMessageW(button, BM_CLICK, 0, 0);
}
