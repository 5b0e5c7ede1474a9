#include "simulator/SimulatorLibrary.h"

#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

constexpr wchar_t kSimulatorKey[] = L"Software\\QorSoundKit Simulator";

std::wstring makeFolder() {
    wchar_t temporary[MAX_PATH];
    GetTempPathW(MAX_PATH, temporary);
    const std::wstring folder = std::wstring(temporary) + L"simulator_test";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    return folder;
}

} // namespace

template<typename Function>
void SimulatorLibrary::resolve(Function &function, const char *name) {
    function = reinterpret_cast<Function>(reinterpret_cast<void *>(GetProcAddress(module_, name)));
    if (!function)
        throw std::runtime_error(std::string("no entry point ") + name);
}

SimulatorLibrary::SimulatorLibrary() : module_(LoadLibraryW(L"qor_ecd_api.dll")) {
    if (!module_)
        throw std::runtime_error("qor_ecd_api.dll cannot be loaded: error " + std::to_string(GetLastError()));
    resolve(init, "init");
    resolve(getDeviceCount, "getDeviceCount");
    resolve(getDeviceInfo, "getDeviceInfo");
    resolve(setDeviceProperty, "setDeviceProperty");
    resolve(releaseDeviceInfo, "releaseDeviceInfo");
    resolve(execUsbEncrypt, "_exec_usb_encrypt");
    resolve(hidTransData, "_hid_trans_data");
    resolve(startTask, "_start_task");
    resolve(killTask, "_kill_task");
    resolve(isTaskRunning, "_is_task_running");
    resolve(getVolum, "_getVolum");
    resolve(setVolum, "_SetVolum");
    resolve(setMasterMute, "_SetMasterMute");
    resolve(isAlreadyRun, "_IsAlreadyRun");
    resolve(isRunningAsAdmin, "_IsRunningAsAdmin");
    resolve(restartAsAdmin, "_RestartAsAdmin");
}

SimulatorLibrary::~SimulatorLibrary() {
    FreeLibrary(module_);
}

SimulatorTest::SimulatorTest() : folder_(makeFolder()) {
    RegDeleteTreeW(HKEY_CURRENT_USER, kSimulatorKey);
    setText(L"JournalPath", journalPath());
}

SimulatorTest::~SimulatorTest() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

void SimulatorTest::setKnob(const wchar_t *name, uint32_t value) {
    ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, kSimulatorKey, name, REG_DWORD, &value, sizeof value), 0);
}

void SimulatorTest::setText(const wchar_t *name, const std::wstring &text) {
    const auto size = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, kSimulatorKey, name, REG_SZ, text.c_str(), size), 0);
}

void SimulatorTest::setBytes(const wchar_t *name, const std::vector<uint8_t> &bytes) {
    ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, kSimulatorKey, name, REG_BINARY, bytes.data(),
                              static_cast<DWORD>(bytes.size())),
              0);
}

std::vector<uint8_t> SimulatorTest::storedBytes(const wchar_t *name) {
    std::vector<uint8_t> bytes(4096);
    DWORD size = static_cast<DWORD>(bytes.size());
    if (RegGetValueW(HKEY_CURRENT_USER, kSimulatorKey, name, RRF_RT_REG_BINARY, nullptr, bytes.data(),
                     &size) != 0)
        size = 0;
    bytes.resize(size);
    return bytes;
}

std::vector<std::string> SimulatorTest::journal() {
    std::istringstream text(readFile(journalPath()));
    std::vector<std::string> lines;
    for (std::string date, time, process, thread, call;
         text >> date >> time >> process >> thread && std::getline(text, call);)
        lines.push_back(call.substr(1));
    return lines;
}

std::string SimulatorTest::lastLine() {
    const auto lines = journal();
    return lines.empty() ? "" : lines.back();
}

std::string readFile(const std::wstring &path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeFile(const std::wstring &path, const std::string &bytes) {
    std::ofstream(std::filesystem::path(path), std::ios::binary) << bytes;
}
