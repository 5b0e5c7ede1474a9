// How large the panel is drawn on a screen: a choice on plain numbers, in physical pixels.
#pragma once

struct ScreenNumbers {
    int workWidth; // of the screen without its taskbar
    int workHeight;
    int dpi; // 96 is Windows' 100 %
};

// The screen's own factor (144 dpi give 1.5), but never more than lets the window fit the work area, then in
// steps of 0.05; at least 1, because Qt 5 cannot paint smaller.
double chooseScale(const ScreenNumbers &screen);
