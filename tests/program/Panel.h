// The real program on the simulated headset, in a folder and a registry of its own, for whole-program tests.
// Driven as a user drives it: by the mouse and the keyboard of Windows.
#pragma once

#include "helpers/WinHandles.h"
#include "support/WaitUntil.h"

#include <initializer_list>
#include <string>
#include <vector>
#include <windows.h>

class Panel {
public:
    // A fresh registry (product key as an installer leaves it, start image in the headset), a fresh copy of
    // the program at `folder`.
    static void prepare();
    static std::wstring folder();

    Panel() = default;
    ~Panel(); // ends what still runs
    Panel(const Panel &) = delete;
    Panel &operator=(const Panel &) = delete;

    // Starts QorSoundKit.exe. waitForWindow: until its main window is visible and painted.
    void start();
    bool waitForWindow(DWORD milliseconds = 30000);
    bool startAndShow() {
        start();
        return waitForWindow();
    }
    HWND window() const { return window_; }
    DWORD processId() const { return processId_; }

    bool running() const;
    // Exit code once the process has ended within the time; -1000 when it has not.
    int waitForEnd(DWORD milliseconds = 20000) const;
    void kill();

    // Inputs, given again until `seen` holds; false when it never does. Positions in the main window.
    template<typename Seen>
    bool click(std::initializer_list<POINT> positions, Seen seen) const {
        const auto give = [&] {
            for (const POINT &position : positions)
                click(position);
        };
        return giveUntil(give, seen);
    }
    template<typename Seen>
    bool press(std::initializer_list<WORD> virtualKeys, Seen seen) const {
        const auto give = [&] {
            for (const WORD virtualKey : virtualKeys)
                press(virtualKey);
        };
        return giveUntil(give, seen);
    }

    // Lines of the simulator's journal since prepare(), without time and ids: "_SetVolum(45, 0, 0) -> 0 ...".
    static std::vector<std::string> journal();
    // Of one process only.
    std::vector<std::string> ownJournal() const;

    // A message box or another of Windows' own dialogs that the process shows; null when there is none.
    HWND systemDialog() const;
    // A message box of the process: waits for one, answers it by its first button, gives its text; empty if
    // none.
    std::wstring answerBox(DWORD milliseconds = 30000) const;

private:
    void click(POINT position) const;
    static void press(WORD virtualKey);

    UniqueHandle process_;
    DWORD processId_ = 0;
    HWND window_ = nullptr;
};
