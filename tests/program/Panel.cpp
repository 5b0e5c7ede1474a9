#include "program/Panel.h"

#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"

#include <filesystem>
#include <fstream>
#include <set>

namespace {

namespace fs = std::filesystem;

const wchar_t kSimulatorKey[] = L"HKEY_CURRENT_USER\\Software\\QorSoundKit Simulator";
const wchar_t kJournal[] = L"C:\\panel journal.txt";

struct Search {
    DWORD process;
    const wchar_t *className; // null: any visible window of Qt
    HWND found;
};

BOOL CALLBACK match(HWND window, LPARAM argument) {
    auto &search = *reinterpret_cast<Search *>(argument);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    wchar_t name[128] = L"";
    GetClassNameW(window, name, 128);
    const std::wstring text = name;
    const bool wanted = search.className ? text == search.className
                                         : text.rfind(L"Qt5", 0) == 0 && text.find(L"QWindow") != text.npos;
    if (process != search.process || !wanted || !IsWindowVisible(window))
        return TRUE;
    search.found = window;
    return FALSE;
}

HWND find(DWORD process, const wchar_t *className) {
    Search search{process, className, nullptr};
    EnumWindows(&match, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

// In an unpainted window all pixels are the same.
bool isPainted(HWND window) {
    RECT client{};
    POINT corner{};
    GetClientRect(window, &client);
    ClientToScreen(window, &corner);
    const HDC screen = GetDC(nullptr);
    std::set<COLORREF> colours;
    for (int i = 1; i < 16; ++i)
        colours.insert(GetPixel(screen, corner.x + client.right * i / 16, corner.y + client.bottom * i / 16));
    ReleaseDC(nullptr, screen);
    return colours.size() > 1;
}

// Every event carries its place, so that it arrives there also when the system reports earlier movements of
// the pointer late.
void mouse(POINT screen, DWORD flags = 0) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dx = (screen.x * 65536 + 32768) / GetSystemMetrics(SM_CXSCREEN);
    input.mi.dy = (screen.y * 65536 + 32768) / GetSystemMetrics(SM_CYSCREEN);
    input.mi.dwFlags = flags | MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
    SendInput(1, &input, sizeof input);
    Sleep(15);
}

POINT onScreen(HWND window, POINT position) {
    ClientToScreen(window, &position);
    return position;
}

void key(WORD code, bool shift = false) {
    INPUT input[4] = {};
    UINT count = 0;
    const auto add = [&](WORD virtualKey, DWORD flags) {
        input[count].type = INPUT_KEYBOARD;
        input[count].ki.wVk = virtualKey;
        input[count++].ki.dwFlags = flags;
    };
    if (shift)
        add(VK_SHIFT, 0);
    add(code, 0);
    add(code, KEYEVENTF_KEYUP);
    if (shift)
        add(VK_SHIFT, KEYEVENTF_KEYUP);
    SendInput(count, input, sizeof *input);
    Sleep(15);
}

// "date time process thread call" without the first four.
std::string callOf(const std::string &line, DWORD onlyProcess) {
    size_t at = 0;
    for (int field = 0; field < 4; ++field) {
        const size_t blank = line.find(' ', at);
        if (blank == std::string::npos)
            return {};
        if (field == 2 && onlyProcess && line.substr(at, blank - at) != std::to_string(onlyProcess))
            return {};
        at = blank + 1;
    }
    return line.substr(at);
}

std::vector<std::string> readJournal(DWORD onlyProcess) {
    std::vector<std::string> calls;
    std::ifstream file{fs::path(kJournal)};
    for (std::string line; std::getline(file, line);) {
        while (!line.empty() && line.back() == '\r')
            line.pop_back();
        std::string call = callOf(line, onlyProcess);
        if (!call.empty())
            calls.push_back(std::move(call));
    }
    return calls;
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
    if (running())
        kill();
}

void Panel::start() {
    std::wstring command = L"\"" + folder() + L"\\QorSoundKit.exe\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    window_ = nullptr;
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, folder().c_str(),
                        &startup, &process))
        return;
    CloseHandle(process.hThread);
    process_.reset(process.hProcess);
    processId_ = process.dwProcessId;
}

bool Panel::waitForWindow(DWORD milliseconds) {
    return waitUntil(
               [this] {
                   window_ = find(processId_, nullptr);
                   return (window_ && isPainted(window_)) || !running();
               },
               milliseconds) &&
           window_;
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

void Panel::kill() {
    TerminateProcess(process_.get(), 99);
    WaitForSingleObject(process_.get(), 5000);
}

void Panel::click(POINT position, int times) const {
    const POINT place = onScreen(window_, position);
    mouse(place);
    for (int i = 0; i < times; ++i) {
        mouse(place, MOUSEEVENTF_LEFTDOWN);
        mouse(place, MOUSEEVENTF_LEFTUP);
    }
}

void Panel::rightClick(POINT position) const {
    const POINT place = onScreen(window_, position);
    mouse(place);
    mouse(place, MOUSEEVENTF_RIGHTDOWN);
    mouse(place, MOUSEEVENTF_RIGHTUP);
}

void Panel::drag(POINT from, POINT to) const {
    const POINT start = onScreen(window_, from);
    const POINT end = onScreen(window_, to);
    mouse(start);
    mouse(start, MOUSEEVENTF_LEFTDOWN);
    constexpr int steps = 8;
    for (int i = 1; i <= steps; ++i)
        mouse({start.x + (end.x - start.x) * i / steps, start.y + (end.y - start.y) * i / steps});
    mouse(end, MOUSEEVENTF_LEFTUP);
}

bool Panel::dragWindow(POINT from, POINT by) const {
    RECT frame{};
    GetWindowRect(window_, &frame);
    const POINT wanted{frame.left + by.x, frame.top + by.y};
    const POINT start = onScreen(window_, from);
    const POINT end{start.x + by.x, start.y + by.y};
    mouse(start);
    mouse(start, MOUSEEVENTF_LEFTDOWN);
    mouse({start.x + by.x / 2, start.y + by.y / 2});
    // With small movements at the end, as a hand makes them: on a busy system the window overtakes the mouse,
    // and the next movement brings it back.
    const bool follows = waitUntil([&] {
        mouse({end.x + 1, end.y});
        mouse(end);
        Sleep(30);
        GetWindowRect(window_, &frame);
        return frame.left == wanted.x && frame.top == wanted.y;
    });
    mouse(end, MOUSEEVENTF_LEFTUP);
    return follows;
}

void Panel::type(const std::wstring &text) const {
    for (const wchar_t c : text) {
        const SHORT scan = VkKeyScanW(c);
        key(static_cast<WORD>(scan & 0xFF), scan & 0x100);
    }
}

void Panel::press(WORD virtualKey) const {
    key(virtualKey);
}

std::vector<std::string> Panel::journal() {
    return readJournal(0);
}

std::vector<std::string> Panel::ownJournal() const {
    return readJournal(processId_);
}

HWND Panel::systemDialog() const {
    return find(processId_, L"#32770");
}

std::wstring Panel::answerBox(DWORD milliseconds) const {
    HWND box = nullptr;
    waitUntil([&] { return (box = systemDialog()) != nullptr; }, milliseconds);
    if (!box)
        return {};
    wchar_t text[512] = L"";
    for (HWND child = nullptr; (child = FindWindowExW(box, child, L"Static", nullptr)) != nullptr;) {
        if (SendMessageW(child, WM_GETTEXT, 512, reinterpret_cast<LPARAM>(text)) > 0)
            break;
    }
    const HWND button = FindWindowExW(box, nullptr, L"Button", nullptr);
    PostMessageW(box, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(button), BN_CLICKED),
                 reinterpret_cast<LPARAM>(button));
    waitUntil([&] { return !IsWindow(box); });
    return text;
}
