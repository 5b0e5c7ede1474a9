// Answers the next message box of this process from a thread of its own, by a real click on the button, and
// keeps what the box said. Made before the call that shows the box.
#pragma once

#include "support/WaitUntil.h"

#include <string>
#include <thread>
#include <vector>
#include <windows.h>

class BoxAnswerer {
public:
    struct Box {
        bool seen = false;
        std::wstring title;
        std::wstring text;
        std::vector<std::wstring> buttons; // in the order on the screen, "&" included
        HWND owner = nullptr;
    };

    // buttonIndex: the button to click, 0 is the leftmost. Gives up when no box comes.
    explicit BoxAnswerer(size_t buttonIndex) : thread_([this, buttonIndex] { answer(buttonIndex); }) {}
    ~BoxAnswerer() { box(); }
    BoxAnswerer(const BoxAnswerer &) = delete;
    BoxAnswerer &operator=(const BoxAnswerer &) = delete;

    // After the call that showed the box has returned.
    const Box &box() {
        if (thread_.joinable())
            thread_.join();
        return box_;
    }

    // The box that this process shows, if any.
    static HWND findBox() {
        HWND window = nullptr;
        while ((window = FindWindowExW(nullptr, window, L"#32770", nullptr)) != nullptr) {
            DWORD process = 0;
            GetWindowThreadProcessId(window, &process);
            if (process == GetCurrentProcessId() && IsWindowVisible(window))
                break;
        }
        return window;
    }

private:
    static std::wstring textOf(HWND window) {
        wchar_t text[512] = L"";
        SendMessageW(window, WM_GETTEXT, 512, reinterpret_cast<LPARAM>(text));
        return text;
    }

    static HWND awaitBox() {
        HWND window = nullptr;
        waitUntil([&] { return (window = findBox()) != nullptr; }, 30000);
        return window;
    }

    void answer(size_t buttonIndex) {
        const HWND window = awaitBox();
        if (!window)
            return;
        box_.seen = true;
        box_.title = textOf(window);
        box_.owner = GetWindow(window, GW_OWNER);
        for (HWND label = nullptr; (label = FindWindowExW(window, label, L"Static", nullptr)) != nullptr;)
            box_.text += textOf(label); // the icon's label is empty
        std::vector<HWND> buttons;
        for (HWND button = nullptr;
             (button = FindWindowExW(window, button, L"Button", nullptr)) != nullptr;) {
            if (!(GetWindowLongW(button, GWL_STYLE) & WS_VISIBLE))
                continue;
            buttons.push_back(button);
            box_.buttons.push_back(textOf(button));
        }
        if (buttonIndex < buttons.size())
            PostMessageW(buttons[buttonIndex], BM_CLICK, 0, 0);
    }

    Box box_;
    std::thread thread_; // last: starts when the rest is there
};
