#include "program/Panel.h"

#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"

#include <filesystem>
#include <fstream>
#include <set>

namespace {

namespace fs = std::filesystem;

const wchar_t kJournal[] = L"C:\\panel journal.txt";

// Every event carries its place, so that it arrives there also when the system reports earlier movements of
// the pointer late.
void mouse(POINT screen, DWORD flags = 0) {
    const long x = (screen.x * 65536 + 32768) / GetSystemMetrics(SM_CXSCREEN);
    const long y = (screen.y * 65536 + 32768) / GetSystemMetrics(SM_CYSCREEN);
    mouse_event(flags | MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE, static_cast<DWORD>(x), static_cast<DWORD>(y),
                0, 0);
}

} // namespace

std::wstring Panel::folder() {
    return L"C:\\panel";
}

void Panel::prepare() {
    std::error_code ignored;
    fs::remove_all(folder(), ignored);
    fs::remove(kJournal, ignored);
    fs::copy(QOR_DIST_DIR, folder(), fs::copy_options::recursive | fs::copy_options::overwrite_existing);
    fs::remove_all(folder() + L"\\config", ignored); // left by a panel that ran in the folder itself

    RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\QorSoundKit");
    RegDeleteTreeW(HKEY_CURRENT_USER, L"SOFTWARE\\QorSoundKit");
    RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\QorSoundKit Simulator");
    Registry::CreateKey(ProductSettings::kProductKey);
    Registry::WriteStringValue(ProductSettings::kProductKey, L"InstallPath", folder());
    Registry::CreateKey(kSimulatorKey);
    Registry::WriteStringValue(kSimulatorKey, L"JournalPath", kJournal);
}

Panel::~Panel() {
    TerminateProcess(process_.get(), 99);
    waitForEnd();
}

void Panel::start() {
    std::wstring command = L"\"" + folder() + L"\\QorSoundKit.exe\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, folder().c_str(),
                        &startup, &process))
        return;
    CloseHandle(process.hThread);
    process_.reset(process.hProcess);
    processId_ = process.dwProcessId;
}

bool Panel::waitForWindow() {
    const auto isPainted = [this] { // in an unpainted window all pixels are the same
        RECT frame{};
        GetWindowRect(window_, &frame);
        const std::vector<COLORREF> colours = coloursOf(frame);
        return std::set<COLORREF>(colours.begin(), colours.end()).size() > 1;
    };
    const auto shows = [&] { return (window_ = findWindow(processId_, L"QWindow")) && isPainted(); };
    return waitUntil([&] { return shows() || !running(); }) && window_;
}

bool Panel::running() const {
    return process_ && WaitForSingleObject(process_.get(), 0) == WAIT_TIMEOUT;
}

int Panel::waitForEnd(DWORD milliseconds) const {
    DWORD code = 0;
    if (!process_ || WaitForSingleObject(process_.get(), milliseconds) != WAIT_OBJECT_0 ||
        !GetExitCodeProcess(process_.get(), &code))
        return -1000;
    return static_cast<int>(code);
}

void Panel::click(POINT position) const {
    ClientToScreen(window_, &position);
    for (const DWORD event : {DWORD{0}, DWORD{MOUSEEVENTF_LEFTDOWN}, DWORD{MOUSEEVENTF_LEFTUP}})
        mouse(position, event);
}

std::vector<std::string> Panel::journal(const std::string &beginning) const {
    std::vector<std::string> calls;
    std::ifstream file{fs::path(kJournal)};
    std::string date, time, thread, call;
    DWORD process = 0;
    while (file >> date >> time >> process >> thread && std::getline(file >> std::ws, call)) {
        if (process == processId_ && call.rfind(beginning, 0) == 0)
            calls.push_back(call);
    }
    return calls;
}

std::wstring Panel::answerBox() const {
    HWND box = nullptr;
    if (!waitUntil([&] { return (box = systemDialog()) != nullptr; }))
        return {};
    const std::wstring text = textOfBox(box);
    pressButtonOfBox(box, 0);
    waitUntil([&] { return !IsWindow(box); });
    return text;
}

std::vector<COLORREF> coloursOf(const RECT &area) {
    constexpr int kPoints = 20; // each way
    std::vector<COLORREF> colours;
    const HDC screen = GetDC(nullptr);
    for (int i = 0; i < kPoints * kPoints; ++i)
        colours.push_back(GetPixel(screen, area.left + (area.right - area.left) * (i % kPoints) / kPoints,
                                   area.top + (area.bottom - area.top) * (i / kPoints) / kPoints));
    ReleaseDC(nullptr, screen);
    return colours;
}
