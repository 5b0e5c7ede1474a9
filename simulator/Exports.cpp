// The sixteen entry points of the library: each names its call for the journal and hands the work on.
#include "device/qor_ecd_api.h"

#include "simulator/CallGuard.h"
#include "simulator/DeviceStore.h"
#include "simulator/EndpointVolume.h"
#include "simulator/Instance.h"
#include "simulator/Reports.h"
#include "simulator/Tasks.h"

// Driver and device.

int32_t init(uint32_t key) {
    return keyedCall(
        key, [] { return describeCall("init"); }, [] { return DeviceStore::initialise(); });
}

int32_t getDeviceCount(uint32_t key) {
    return keyedCall(
        key, [] { return describeCall("getDeviceCount"); },
        [] { return Outcome{DeviceStore::deviceCount()}; });
}

int32_t getDeviceInfo(int32_t index, void *deviceInfo, uint32_t key) {
    return keyedCall(
        key, [&] { return describeCall("getDeviceInfo", index); },
        [&] { return DeviceStore::read(index, deviceInfo); });
}

int32_t setDeviceProperty(void *deviceInfo, int32_t type, void *block, uint32_t key) {
    return keyedCall(
        key,
        [&] {
            return "setDeviceProperty(type " + std::to_string(type) + ", " +
                   DeviceStore::digest(type, block) + ")";
        },
        [&] { return DeviceStore::write(deviceInfo, type, block); });
}

int32_t releaseDeviceInfo(void *, uint32_t key) {
    return keyedCall(
        key, [] { return describeCall("releaseDeviceInfo"); }, [] { return Outcome{}; });
}

// Reports.

int32_t _exec_usb_encrypt(uint32_t key, uint32_t *id1, uint32_t *id2, uint32_t *id3, uint32_t *id4) {
    return keyedCall(
        key, [] { return describeCall("_exec_usb_encrypt"); },
        [&] { return Reports::readSelectors(id1, id2, id3, id4); });
}

int32_t _hid_trans_data(uint32_t key, uint32_t id1, uint32_t id2, uint32_t id3, uint32_t id4,
                        const uint8_t *output, uint8_t *input) {
    return keyedCall(
        key,
        [&] {
            return describeCall("_hid_trans_data", id1, id2, id3, id4) + " " + Reports::digest(output) +
                   (input ? " with reply" : "");
        },
        [&] { return Reports::transfer(id1, id2, id3, id4, output, input); });
}

// Helper processes.

int32_t _start_task(const wchar_t *fileName, const wchar_t *parameters, int32_t show, const wchar_t *folder) {
    return guardedCall(
        0,
        [&] {
            return "_start_task(" + quoted(fileName) + ", " + quoted(parameters) + ", " +
                   std::to_string(show) + ", " + quoted(folder) + ")";
        },
        [&] { return Tasks::start(fileName, parameters, show, folder); });
}

int32_t _kill_task(const wchar_t *fileName) {
    return guardedCall(
        0, [&] { return "_kill_task(" + quoted(fileName) + ")"; }, [&] { return Tasks::stop(fileName); });
}

int32_t _is_task_running(const wchar_t *fileName) {
    return guardedCall(
        0, [&] { return "_is_task_running(" + quoted(fileName) + ")"; },
        [&] { return Tasks::countRunning(fileName); });
}

// Endpoint volume.

int32_t _getVolum(int32_t device, int32_t reserved) {
    return guardedCall(
        kFailed, [&] { return describeCall("_getVolum", device, reserved); },
        [&] { return EndpointVolume::get(device); });
}

int32_t _SetVolum(int32_t volume, int32_t device, int32_t reserved) {
    return guardedCall(
        kFailed, [&] { return describeCall("_SetVolum", volume, device, reserved); },
        [&] { return EndpointVolume::set(volume, device); });
}

int32_t _SetMasterMute(int32_t muted, int32_t reserved) {
    return guardedCall(
        kFailed, [&] { return describeCall("_SetMasterMute", muted, reserved); },
        [&] { return EndpointVolume::setMuted(muted != 0); });
}

// The process itself.

int32_t _IsAlreadyRun(const wchar_t *mutexName) {
    return guardedCall(
        0, [&] { return "_IsAlreadyRun(" + quoted(mutexName) + ")"; },
        [&] { return Instance::claimName(mutexName); });
}

int32_t _IsRunningAsAdmin() {
    return guardedCall(
        0, [] { return describeCall("_IsRunningAsAdmin"); }, [] { return Instance::isElevated(); });
}

int32_t _RestartAsAdmin() {
    return guardedCall(
        0, [] { return describeCall("_RestartAsAdmin"); }, [] { return Instance::restartElevated(); });
}
