#include "window/screens/Screens.h"

#include "window/screens/ScreenScale.h"

#include <QGuiApplication>
#include <vector>
#include <windows.h>

namespace {

struct Screen {
    QByteArray name; // "\\.\DISPLAY1", by which Qt knows it, too
    ScreenNumbers numbers;
};

// In the process's own view of the screens, which the manifest makes the real one.
int dpiOf(HMONITOR monitor, const wchar_t *device) {
    // Since Windows 8.1;
    // https://learn.microsoft.com/windows/win32/api/shellscalingapi/nf-shellscalingapi-getdpiformonitor
    using GetDpi = HRESULT(WINAPI *)(HMONITOR, int kind, UINT *x, UINT *y);
    constexpr int kEffective = 0;
    static const HMODULE library = LoadLibraryW(L"shcore.dll"); // never unloaded
    const auto getDpi = reinterpret_cast<GetDpi>(
        reinterpret_cast<void *>(library ? GetProcAddress(library, "GetDpiForMonitor") : nullptr));
    UINT x = 0;
    UINT y = 0;
    if (getDpi && SUCCEEDED(getDpi(monitor, kEffective, &x, &y)))
        return static_cast<int>(x);
    const HDC display = CreateDCW(device, nullptr, nullptr, nullptr);
    const int dpi = display ? GetDeviceCaps(display, LOGPIXELSX) : USER_DEFAULT_SCREEN_DPI;
    DeleteDC(display);
    return dpi;
}

BOOL CALLBACK addScreen(HMONITOR monitor, HDC, RECT *, LPARAM argument) {
    MONITORINFOEXW info{};
    info.cbSize = sizeof info;
    if (GetMonitorInfoW(monitor, &info))
        reinterpret_cast<std::vector<Screen> *>(argument)->push_back(
            {QString::fromWCharArray(info.szDevice).toLatin1(),
             {info.rcWork.right - info.rcWork.left, info.rcWork.bottom - info.rcWork.top,
              dpiOf(monitor, info.szDevice)}});
    return TRUE;
}

std::vector<Screen> screens() {
    std::vector<Screen> found;
    EnumDisplayMonitors(nullptr, nullptr, &addScreen, reinterpret_cast<LPARAM>(&found));
    return found;
}

bool userChoseScale() {
    return qgetenv("QT_SCALE_FACTOR").toDouble() > 0 || qEnvironmentVariableIsSet("QT_SCREEN_SCALE_FACTORS");
}

} // namespace

// Each screen by its name, since a window may move to another one. What Qt 5.15 does with it is in its
// qhighdpiscaling.cpp: the factor replaces the one from the screen's dpi, without rounding. Factors of 1 are
// ignored unless another one was set before them, hence the 2 in front.
void Screens::chooseScales() {
    // For screens that are plugged in later.
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    if (userChoseScale())
        return;
    QByteArray factors;
    for (const Screen &screen : screens())
        factors +=
            screen.name + "=2;" + screen.name + '=' + QByteArray::number(chooseScale(screen.numbers)) + ';';
    qputenv("QT_SCREEN_SCALE_FACTORS", factors);
}
