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

void Panel::click(POINT position) const {
    ClientToScreen(window_, &position);
    for (const DWORD event : {DWORD{0}, DWORD{MOUSEEVENTF_LEFTDOWN}, DWORD{MOUSEEVENTF_LEFTUP}})
        mouse(position, event);
}

void Panel::press(WORD virtualKey) {
    INPUT input[2] = {};
    for (INPUT &each : input) {
        each.type = INPUT_KEYBOARD;
        each.ki.wVk = virtualKey;
    }
    input[1].ki.dwFlags = KEYEVENTF_KEYUP;
    SendInput(2, input, sizeof *input);
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
