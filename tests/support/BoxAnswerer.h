// Answers the next message box of this process from a thread of its own, by a real click on the button, and
// keeps what the box said. Made before the call that shows the box.
#pragma once

#include <chrono>
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

    // buttonIndex: the button to click, 0 is the leftmost. Gives up after the time-out without a box.
    explicit BoxAnswerer(size_t buttonIndex, std::chrono::milliseconds timeOut = std::chrono::seconds(10))
        : thread_([this, buttonIndex, timeOut] { answer(buttonIndex, timeOut); }) {}
    ~BoxAnswerer() {
        if (thread_.joinable())
            thread_.join();
    }
    BoxAnswerer(const BoxAnswerer &) = delete;
    BoxAnswerer &operator=(const BoxAnswerer &) = delete;

    // After the call that showed the box has returned.
    const Box &box() {
        if (thread_.joinable())
            thread_.join();
        return box_;
    }

private:
    static std::wstring textOf(HWND window) {
        std::wstring text(512, L'\0');
        const LRESULT length =
            SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
        text.resize(static_cast<size_t>(length));
        return text;
    }

    static std::wstring classOf(HWND window) {
        wchar_t name[64] = L"";
        GetClassNameW(window, name, 64);
        return name;
    }

    static BOOL CALLBACK isBox(HWND window, LPARAM result) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process != GetCurrentProcessId() || !IsWindowVisible(window) || classOf(window) != L"#32770")
            return TRUE;
        *reinterpret_cast<HWND *>(result) = window;
        return FALSE;
    }

    static BOOL CALLBACK collectChild(HWND window, LPARAM result) {
        reinterpret_cast<std::vector<HWND> *>(result)->push_back(window);
        return TRUE;
    }

    static HWND awaitBox(std::chrono::milliseconds timeOut) {
        const auto end = std::chrono::steady_clock::now() + timeOut;
        HWND box = nullptr;
        while (!box && std::chrono::steady_clock::now() < end) {
            EnumWindows(&isBox, reinterpret_cast<LPARAM>(&box));
            Sleep(10);
        }
        return box;
    }

    void answer(size_t buttonIndex, std::chrono::milliseconds timeOut) {
        const HWND window = awaitBox(timeOut);
        if (!window)
            return;
        box_.seen = true;
        box_.title = textOf(window);
        box_.owner = GetWindow(window, GW_OWNER);
        std::vector<HWND> children;
        std::vector<HWND> buttons;
        EnumChildWindows(window, &collectChild, reinterpret_cast<LPARAM>(&children));
        for (const HWND child : children) {
            if (classOf(child) == L"Static" && !textOf(child).empty())
                box_.text = textOf(child);
            if (classOf(child) == L"Button" && (GetWindowLongW(child, GWL_STYLE) & WS_VISIBLE)) {
                buttons.push_back(child);
                box_.buttons.push_back(textOf(child));
            }
        }
        if (buttonIndex < buttons.size())
            PostMessageW(buttons[buttonIndex], BM_CLICK, 0, 0);
    }

    Box box_;
    std::thread thread_; // last: starts when the rest is there
};
