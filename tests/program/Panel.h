// The real program on the simulated headset, in a folder and a registry of its own, for whole-program tests.
// Driven as a user drives it: by the mouse and the keyboard of Windows.
#pragma once

#include "helpers/WinHandles.h"
#include "simulator/WaitUntil.h"
#include "support/SystemBox.h"

#include <initializer_list>
#include <vector>

constexpr wchar_t kSimulatorKey[] = L"HKEY_CURRENT_USER\\Software\\QorSoundKit Simulator";

class Panel {
public:
    // A fresh registry (product key as an installer leaves it, start image in the headset), a fresh copy of
    // the program at `folder`.
    static void prepare();
    static std::wstring folder();

    Panel() = default;
    ~Panel(); // ends what still runs

    // Starts QorSoundKit.exe. waitForWindow: until its main window is visible and painted.
    void start();
    bool waitForWindow();
    bool startAndShow() {
        start();
        return waitForWindow();
    }
    HWND window() const { return window_; }
    DWORD processId() const { return processId_; }

    bool running() const;
    // Exit code once the process has ended within the time; -1000 when it has not.
    int waitForEnd(DWORD milliseconds = 20000) const;

    // Clicks once at each position in the main window and waits until `seen` holds; false when it never does.
    template<typename Seen>
    bool click(std::initializer_list<POINT> positions, Seen seen) const {
        for (const POINT &position : positions)
            click(position);
        return waitUntil(seen);
    }

    // The process's lines of the simulator's journal that begin so, without time and ids:
    // "_SetVolum(45, 0, 0) -> 0 ...".
    std::vector<std::string> journal(const std::string &beginning) const;

    // A message box of the process; null when there is none.
    HWND systemDialog() const { return findBox(processId_); }
    // Waits for a message box and answers it by its first button; gives its text, empty if none came.
    std::wstring answerBox() const;

private:
    void click(POINT position) const;

    UniqueHandle process_;
    DWORD processId_ = 0;
    HWND window_ = nullptr;
};

// What part of the screen shows, by some of its pixels.
std::vector<COLORREF> coloursOf(const RECT &area);
