// Answers the next message box of this process from a thread of its own, by a real click on the button, and
// keeps what the box said. Made before the call that shows the box.
#pragma once

#include "simulator/WaitUntil.h"
#include "support/SystemBox.h"

#include <thread>

class BoxAnswerer {
public:
    struct Box {
        std::wstring title, text;
        HWND owner = nullptr;
    };

    // buttonIndex: the button to click, 0 is the leftmost. Gives up when no box comes.
    explicit BoxAnswerer(int buttonIndex) : thread_([this, buttonIndex] { answer(buttonIndex); }) {}
    ~BoxAnswerer() { box(); }

    // After the call that showed the box has returned.
    const Box &box() {
        if (thread_.joinable())
            thread_.join();
        return box_;
    }

private:
    void answer(int buttonIndex) {
        HWND window = nullptr;
        if (!waitUntil([&] { return (window = findBox()) != nullptr; }, 30000))
            return;
        wchar_t title[128] = L"";
        GetWindowTextW(window, title, 128);
        box_ = {title, textOfBox(window), GetWindow(window, GW_OWNER)};
        pressButtonOfBox(window, buttonIndex);
    }

    Box box_;
    std::thread thread_; // last: starts when the rest is there
};
