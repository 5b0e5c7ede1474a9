// What gives way in the main window where the screen is lower than it: numbers only, in pixels at 100 %.
#pragma once

struct WindowFit {
    static constexpr int kFullWidth = 1071; // of the window, as in its form
    static constexpr int kFullHeight = 869;

    int height;         // of the window
    int margin;         // above the page, and between it and the status strip
    int stripInset;     // taken off the strip at its top and at its bottom
    bool scrolls;       // page and strip, under the top bar
    int microphoneLine; // between the navigation's first and second group
    int microphoneTop;  // of the second group
    int otherTop;       // of the third group and the line above it
    int upgradeTop;     // of the button in the third group
};

// As high as the available height allows, up to the full height, where all is as in the form. Below it the
// waves at the bottom give way first, and beside them the empty places between the navigation's groups; then
// the margins around page and strip; the rest scrolls. Not lower than the navigation needs.
WindowFit fitWindow(int availableHeight);
