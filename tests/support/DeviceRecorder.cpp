#include "support/DeviceRecorder.h"

#include "device/qor_ecd_api.h"
#include "simulator/CallGuard.h"

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

// Keeps a block, and where a device would, shows what the record holds of it in the caller's record.
template<typename Block, typename Shown>
void keep(const void *block, Block &kept, Shown &shown) {
    std::memcpy(&kept, block, sizeof kept);
    if (DeviceRecorder::instance().updatesImage)
        std::memcpy(&shown, block, sizeof shown);
}

// Gives the result of the call.
int32_t record(std::string call, int32_t result = 0, uint32_t key = kKey) {
    DeviceRecorder &recorder = DeviceRecorder::instance();
    if (key != kKey)
        call += " WRONG KEY";
    recorder.calls.push_back(std::move(call));
    recorder.callTimes.push_back(GetTickCount());
    return result;
}

} // namespace

DeviceRecorder &DeviceRecorder::instance() {
    static DeviceRecorder recorder;
    return recorder;
}

void DeviceRecorder::reset() {
    *this = DeviceRecorder();
}

int32_t init(uint32_t key) {
    return record("init()", 0, key);
}

int32_t getDeviceCount(uint32_t key) {
    return record("getDeviceCount()", 1, key);
}

int32_t getDeviceInfo(int32_t index, void *deviceInfo, uint32_t key) {
    const DeviceInfo &info = DeviceRecorder::instance().info;
    std::memcpy(deviceInfo, &info, sizeof info);
    return record(describeCall("getDeviceInfo", index), 0, key);
}

int32_t setDeviceProperty(void *deviceInfo, int32_t type, void *block, uint32_t key) {
    DeviceRecorder &recorder = DeviceRecorder::instance();
    auto &info = *static_cast<DeviceInfo *>(deviceInfo);
    if (type == 1)
        keep(block, recorder.system, info.system);
    else if (type == 2)
        keep(block, recorder.sound, info.sound);
    else if (type == 3)
        keep(block, recorder.extension, info.extension);
    return record(describeCall("setDeviceProperty", type), 0, key);
}

int32_t releaseDeviceInfo(void *, uint32_t key) {
    return record("releaseDeviceInfo()", 0, key);
}

int32_t _exec_usb_encrypt(uint32_t key, uint32_t *id1, uint32_t *id2, uint32_t *id3, uint32_t *id4) {
    const std::string call = describeCall("_exec_usb_encrypt", *id1, *id2, *id3, *id4);
    const auto &ids = DeviceRecorder::instance().usbIds;
    *id1 = ids[0];
    *id2 = ids[1];
    *id3 = ids[2];
    *id4 = ids[3];
    return record(call, 0, key);
}

int32_t _hid_trans_data(uint32_t key, uint32_t id1, uint32_t id2, uint32_t id3, uint32_t id4,
                        const uint8_t *output, uint8_t *input) {
    DeviceRecorder &recorder = DeviceRecorder::instance();
    std::memcpy(recorder.reports.emplace_back().data(), output, 64);
    if (input)
        std::memcpy(input, recorder.reply.data(), recorder.reply.size());
    return record(describeCall("_hid_trans_data", id1, id2, id3, id4), recorder.transferResult, key);
}

int32_t _start_task(const wchar_t *fileName, const wchar_t *parameters, int32_t show, const wchar_t *folder) {
    return record("_start_task(" + narrow(fileName) + ", " + narrow(parameters) + ", " +
                      std::to_string(show) + ", " + narrow(folder) + ")",
                  1);
}

int32_t _kill_task(const wchar_t *fileName) {
    return record("_kill_task(" + narrow(fileName) + ")", 1);
}

int32_t _is_task_running(const wchar_t *fileName) {
    return record("_is_task_running(" + narrow(fileName) + ")", DeviceRecorder::instance().taskRunning);
}

int32_t _getVolum(int32_t device, int32_t reserved) {
    return record(describeCall("_getVolum", device, reserved));
}

int32_t _SetVolum(int32_t volume, int32_t device, int32_t reserved) {
    const auto &onSetVolume = DeviceRecorder::instance().onSetVolume;
    record(describeCall("_SetVolum", volume, device, reserved));
    if (onSetVolume)
        onSetVolume(volume);
    return 0;
}

int32_t _SetMasterMute(int32_t muted, int32_t reserved) {
    return record(describeCall("_SetMasterMute", muted, reserved));
}

int32_t _IsAlreadyRun(const wchar_t *mutexName) {
    return record("_IsAlreadyRun(" + narrow(mutexName) + ")");
}

int32_t _IsRunningAsAdmin() {
    return record("_IsRunningAsAdmin()", 1);
}

int32_t _RestartAsAdmin() {
    return record("_RestartAsAdmin()", 1);
}
