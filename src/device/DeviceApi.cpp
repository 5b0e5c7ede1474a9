#include "device/DeviceApi.h"

#include "device/qor_ecd_api.h"

namespace DeviceApi {

int32_t initDriver() {
    return ::init(kAccessKey);
}

int32_t deviceCount() {
    return ::getDeviceCount(kAccessKey);
}

int32_t readDeviceInfo(DeviceInfo &info) {
    return ::getDeviceInfo(0, &info, kAccessKey);
}

int32_t writeBlock(DeviceInfo &info, SystemBlock &block) {
    return ::setDeviceProperty(&info, 1, &block, kAccessKey);
}

int32_t writeBlock(DeviceInfo &info, SoundBlock &block) {
    return ::setDeviceProperty(&info, 2, &block, kAccessKey);
}

int32_t writeBlock(DeviceInfo &info, ExtBlock &block) {
    return ::setDeviceProperty(&info, 3, &block, kAccessKey);
}

void releaseDevice(DeviceInfo &info) {
    ::releaseDeviceInfo(&info, kAccessKey);
}

void readUsbIds(UsbIds &ids) {
    // Local numbers, since the members of a packed structure may be unaligned.
    uint32_t id[4] = {};
    ::_exec_usb_encrypt(kAccessKey, &id[0], &id[1], &id[2], &id[3]);
    ids = {{id[0], id[1], id[2], id[3]}};
}

int32_t transferReport(const UsbIds &ids, const HidReport &request, HidReport *reply) {
    return ::_hid_trans_data(kAccessKey, ids.id[0], ids.id[1], ids.id[2], ids.id[3], request.data(),
                             reply ? reply->data() : nullptr);
}

void startTask(const wchar_t *fileName, const wchar_t *parameters, ShowCommand show, const wchar_t *folder) {
    ::_start_task(fileName, parameters, static_cast<int32_t>(show), folder);
}

void killTask(const wchar_t *fileName) {
    ::_kill_task(fileName);
}

bool isTaskRunning(const wchar_t *fileName) {
    return ::_is_task_running(fileName) >= 1;
}

void pollVolume() {
    ::_getVolum(0, 0);
}

void setVolume(int32_t volume, Endpoint endpoint) {
    ::_SetVolum(volume, static_cast<int32_t>(endpoint), 0);
}

void setMasterMute(bool muted) {
    ::_SetMasterMute(muted ? 1 : 0, 0);
}

bool anotherInstanceRuns(const wchar_t *mutexName) {
    return ::_IsAlreadyRun(mutexName) != 0;
}

bool isElevated() {
    return ::_IsRunningAsAdmin() != 0;
}

bool restartElevated() {
    return ::_RestartAsAdmin() != 0;
}

} // namespace DeviceApi
