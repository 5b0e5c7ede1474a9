// Measures the finished panel from outside, against a bare Qt window (bare.cpp) where that tells something:
// start to first paint, memory after a tour of all pages, processor time while hidden behind the tray icon.
// panel.exe BARE.EXE; needs a display of at least 1071 x 869. Prints rows of bench/run's table.
#include "program/Panel.h"
#include "helpers/Registry.h"
#include "program/FormMap.h"
#include "Row.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <QApplication>
#include <sstream>

// After windows.h.
#define PSAPI_VERSION 2
#include <psapi.h>

namespace {

constexpr int kRounds = 31; // of each program, in turns
constexpr DWORD kIdleMs = 30000;

// One row of pixels across the middle of the screen: read in one go, so often enough to time a first paint.
class ScreenRow {
public:
    ScreenRow()
        : width_(GetSystemMetrics(SM_CXSCREEN)), y_(GetSystemMetrics(SM_CYSCREEN) / 2),
          screen_(GetDC(nullptr)), memory_(CreateCompatibleDC(screen_)) {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof info.bmiHeader, width_, 1, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        bitmap_ = CreateDIBSection(memory_, &info, DIB_RGB_COLORS, &pixels_, nullptr, 0);
        SelectObject(memory_, bitmap_);
    }
    ~ScreenRow() {
        DeleteDC(memory_);
        DeleteObject(bitmap_);
        ReleaseDC(nullptr, screen_);
    }
    ScreenRow(const ScreenRow &) = delete;
    ScreenRow &operator=(const ScreenRow &) = delete;

    std::vector<uint32_t> read() const {
        BitBlt(memory_, 0, 0, width_, 1, screen_, 0, y_, SRCCOPY);
        GdiFlush();
        const auto *first = static_cast<const uint32_t *>(pixels_);
        return {first, first + width_};
    }

private:
    int width_, y_;
    HDC screen_, memory_;
    HBITMAP bitmap_ = nullptr;
    void *pixels_ = nullptr;
};

// A started program; ended with its object.
class Program {
public:
    explicit Program(const std::wstring &name) {
        std::wstring command = L"\"" + Panel::folder() + L"\\" + name + L"\"";
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION process{};
        if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                            Panel::folder().c_str(), &startup, &process))
            return;
        CloseHandle(process.hThread);
        process_.reset(process.hProcess);
    }
    ~Program() {
        TerminateProcess(process_.get(), 0);
        WaitForSingleObject(process_.get(), 5000);
    }
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    HANDLE get() const { return process_.get(); }

private:
    UniqueHandle process_;
};

// Milliseconds from before CreateProcess until the program has changed what the screen shows; below zero when
// it does not within ten seconds.
double firstPaint(const std::wstring &program, const ScreenRow &row) {
    const std::vector<uint32_t> empty = row.read();
    double time = -1;
    {
        const auto start = std::chrono::steady_clock::now();
        const Program started(program);
        if (waitUntil([&] { return row.read() != empty; }, 10000))
            time =
                std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    }
    waitUntil([&] { return row.read() == empty; });
    return time;
}

// Wine fills this field of the counters and not PrivateUsage.
double privateMegabytes(DWORD processId) {
    const UniqueHandle process(OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, processId));
    PROCESS_MEMORY_COUNTERS counters{};
    GetProcessMemoryInfo(process.get(), &counters, sizeof counters);
    return static_cast<double>(counters.PagefileUsage) / (1 << 20);
}

std::string contents(const std::filesystem::path &path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// The folder of the panel in Linux's /proc: by its name, and by the Wine prefix that it shares with this
// process. Wine's GetProcessTimes knows the times of the calling process only.
std::filesystem::path panelsProcFolder() {
    const std::string prefix = "WINEPREFIX=" + qEnvironmentVariable("WINEPREFIX").toStdString();
    std::error_code ignored;
    for (const auto &entry : std::filesystem::directory_iterator(L"Z:\\proc", ignored)) {
        if (contents(entry.path() / L"comm") == "QorSoundKit.exe\n" &&
            contents(entry.path() / L"environ").find(prefix) != std::string::npos)
            return entry.path();
    }
    return {};
}

// User and kernel time of all threads, in milliseconds; proc(5), fields 14 and 15 of "stat" in ticks of 10
// ms.
double processorMs(const std::filesystem::path &procFolder) {
    const std::string stat = contents(procFolder / L"stat");
    std::istringstream fields(stat.substr(stat.rfind(')') + 1));
    std::string skipped;
    for (int field = 3; field < 14; ++field)
        fields >> skipped;
    double user = -1, kernel = -1;
    fields >> user >> kernel;
    return (user + kernel) * 10;
}

void measureStart() {
    const ScreenRow row;
    std::vector<double> panel, bare;
    for (int round = 0; round <= kRounds; ++round) {
        const double panelTime = firstPaint(L"QorSoundKit.exe", row);
        const double bareTime = firstPaint(L"bare.exe", row);
        if (round == 0)
            continue; // fills the file cache
        panel.push_back(panelTime);
        bare.push_back(bareTime);
    }
    printRow("Start to first paint, against a bare Qt window", median(panel) / median(bare), " x", 1.3,
             figure(median(panel), "ms") + " against " + figure(median(bare), "ms"));
}

void measureRunning() {
    double bareMegabytes = 0;
    {
        const Program bare(L"bare.exe");
        Sleep(1000);
        bareMegabytes = privateMegabytes(GetProcessId(bare.get()));
    }
    FormMap map;
    Panel panel;
    panel.start();
    if (!panel.waitForWindow()) {
        std::fprintf(stderr, "the panel shows no window\n");
        return;
    }
    Sleep(1000);
    for (const int page : {2, 3, 4, 6, 8, 9, 11, 0}) {
        panel.click({map.centreOf(qPrintable(QStringLiteral("bt_y%1").arg(page)))}, [] { return true; });
        Sleep(300);
    }
    printRow("Private bytes after a tour of all pages", privateMegabytes(panel.processId()), " MB", 60,
             "bare Qt window " + figure(bareMegabytes, "MB"));

    if (!panel.click({map.centreOf("pushButton")}, [&] { return !IsWindowVisible(panel.window()); })) {
        std::fprintf(stderr, "the panel does not hide\n");
        return;
    }
    Sleep(2000);
    const std::filesystem::path procFolder = panelsProcFolder();
    const double before = processorMs(procFolder);
    Sleep(kIdleMs);
    const double used = processorMs(procFolder) - before;
    printRow("Processor time hidden behind the tray icon, 30 s", 100 * used / kIdleMs, " % of a core", 0.3,
             figure(used, "ms"));
}

} // namespace

int main(int argc, char *argv[]) {
    QApplication application(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("Microsoft YaHei")));
    if (argc != 2)
        return 2;
    Panel::prepare();
    Registry::DeleteValue(L"HKEY_CURRENT_USER\\Software\\QorSoundKit Simulator", L"JournalPath");
    std::filesystem::copy_file(argv[1], Panel::folder() + L"\\bare.exe");
    measureStart();
    measureRunning();
    return 0;
}
