#include "support/DeviceRecorder.h"

#include "device/qor_ecd_api.h"

#include <cstring>
#include <filesystem>
#include <windows.h>

namespace {

constexpr uint32_t kKey = 0x5A21C3E4;

std::string narrow(const wchar_t *text) {
    if (!text)
        return "null";
    return *text ? std::filesystem::path(text).u8string() : "\"\"";
}

template<typename... Numbers>
std::string line(const char *name, Numbers... numbers) {
    std::string arguments;
    ((arguments += (arguments.empty() ? "" : ", ") + std::to_string(numbers)), ...);
    return std::string(name) + "(" + arguments + ")";
}

// Keeps a block, and where a device would, shows what the record holds of it in the caller's record.
template<typename Block, typename Shown>
void keep(const void *block, Block &kept, Shown &shown) {
    std::memcpy(&kept, block, sizeof kept);
    if (DeviceRecorder::instance().updatesImage)
        std::memcpy(&shown, block, sizeof shown);
}

DeviceRecorder &record(std::string text, uint32_t key = kKey) {
    DeviceRecorder &recorder = DeviceRecorder::instance();
    if (key != kKey)
        text += " WRONG KEY";
    recorder.calls.push_back(std::move(text));
    recorder.callTimes.push_back(GetTickCount());
    return recorder;
}

} // namespace

DeviceRecorder &DeviceRecorder::instance() {
    static DeviceRecorder recorder;
    return recorder;
}

void DeviceRecorder::reset() {
    *this = DeviceRecorder();
}

size_t DeviceRecorder::countOf(const std::string &prefix) const {
    size_t count = 0;
    for (const std::string &call : calls)
        count += call.compare(0, prefix.size(), prefix) == 0;
    return count;
}

int32_t init(uint32_t key) {
    record("init()", key);
    return 0;
}

int32_t getDeviceCount(uint32_t key) {
    record("getDeviceCount()", key);
    return 1;
}

int32_t getDeviceInfo(int32_t index, void *deviceInfo, uint32_t key) {
    const DeviceInfo &info = record(line("getDeviceInfo", index), key).info;
    std::memcpy(deviceInfo, &info, sizeof info);
    return 0;
}

int32_t setDeviceProperty(void *deviceInfo, int32_t type, void *block, uint32_t key) {
    DeviceRecorder &recorder = record(line("setDeviceProperty", type), key);
    auto &info = *static_cast<DeviceInfo *>(deviceInfo);
    if (type == 1)
        keep(block, recorder.system, info.system);
    else if (type == 2)
        keep(block, recorder.sound, info.sound);
    else if (type == 3)
        keep(block, recorder.extension, info.extension);
    return 0;
}

int32_t releaseDeviceInfo(void *, uint32_t key) {
    record("releaseDeviceInfo()", key);
    return 0;
}

int32_t _exec_usb_encrypt(uint32_t key, uint32_t *id1, uint32_t *id2, uint32_t *id3, uint32_t *id4) {
    const auto &ids = record(line("_exec_usb_encrypt", *id1, *id2, *id3, *id4), key).usbIds;
    *id1 = ids[0];
    *id2 = ids[1];
    *id3 = ids[2];
    *id4 = ids[3];
    return 0;
}

int32_t _hid_trans_data(uint32_t key, uint32_t id1, uint32_t id2, uint32_t id3, uint32_t id4,
                        const uint8_t *output, uint8_t *input) {
    DeviceRecorder &recorder = record(line("_hid_trans_data", id1, id2, id3, id4), key);
    std::array<uint8_t, 64> report{};
    std::memcpy(report.data(), output, report.size());
    recorder.reports.push_back(report);
    if (input)
        std::memcpy(input, recorder.reply.data(), recorder.reply.size());
    return recorder.transferResult;
}

int32_t _start_task(const wchar_t *fileName, const wchar_t *parameters, int32_t show, const wchar_t *folder) {
    record("_start_task(" + narrow(fileName) + ", " + narrow(parameters) + ", " + std::to_string(show) +
           ", " + narrow(folder) + ")");
    return 1;
}

int32_t _kill_task(const wchar_t *fileName) {
    record("_kill_task(" + narrow(fileName) + ")");
    return 1;
}

int32_t _is_task_running(const wchar_t *fileName) {
    return record("_is_task_running(" + narrow(fileName) + ")").taskRunning;
}

int32_t _getVolum(int32_t device, int32_t reserved) {
    record(line("_getVolum", device, reserved));
    return 0;
}

int32_t _SetVolum(int32_t volume, int32_t device, int32_t reserved) {
    DeviceRecorder &recorder = record(line("_SetVolum", volume, device, reserved));
    if (recorder.onSetVolume)
        recorder.onSetVolume(volume);
    return 0;
}

int32_t _SetMasterMute(int32_t muted, int32_t reserved) {
    record(line("_SetMasterMute", muted, reserved));
    return 0;
}

int32_t _IsAlreadyRun(const wchar_t *mutexName) {
    record("_IsAlreadyRun(" + narrow(mutexName) + ")");
    return 0;
}

int32_t _IsRunningAsAdmin() {
    record("_IsRunningAsAdmin()");
    return 1;
}

int32_t _RestartAsAdmin() {
    record("_RestartAsAdmin()");
    return 1;
}
