// The simulated device-control library as the panel sees it: loaded from beside the executable, its entry
// points by name.
#pragma once

#include "device/DeviceApi.h"

#include <stdexcept>
#include <string>
#include <windows.h>

constexpr uint32_t kKey = DeviceApi::kAccessKey;

class SimulatorLibrary {
    // The address of an entry point, for a pointer to a function of any type.
    struct Entry {
        FARPROC address;
        template<typename Function>
        operator Function *() const {
            return reinterpret_cast<Function *>(reinterpret_cast<void *>(address));
        }
    };

    Entry entry(const char *name) const {
        const FARPROC address = GetProcAddress(module_, name);
        if (!address)
            throw std::runtime_error(std::string("no entry point ") + name);
        return {address};
    }

    const HMODULE module_ = LoadLibraryW(L"qor_ecd_api.dll");

public:
    SimulatorLibrary() = default;
    ~SimulatorLibrary() { FreeLibrary(module_); }
    SimulatorLibrary(const SimulatorLibrary &) = delete;
    SimulatorLibrary &operator=(const SimulatorLibrary &) = delete;

    int32_t (*init)(uint32_t) = entry("init");
    int32_t (*getDeviceCount)(uint32_t) = entry("getDeviceCount");
    int32_t (*getDeviceInfo)(int32_t, void *, uint32_t) = entry("getDeviceInfo");
    int32_t (*setDeviceProperty)(void *, int32_t, void *, uint32_t) = entry("setDeviceProperty");
    int32_t (*releaseDeviceInfo)(void *, uint32_t) = entry("releaseDeviceInfo");
    int32_t (*execUsbEncrypt)(uint32_t, uint32_t *, uint32_t *, uint32_t *,
                              uint32_t *) = entry("_exec_usb_encrypt");
    int32_t (*hidTransData)(uint32_t, uint32_t, uint32_t, uint32_t, uint32_t, const uint8_t *,
                            uint8_t *) = entry("_hid_trans_data");
    int32_t (*startTask)(const wchar_t *, const wchar_t *, int32_t, const wchar_t *) = entry("_start_task");
    int32_t (*killTask)(const wchar_t *) = entry("_kill_task");
    int32_t (*isTaskRunning)(const wchar_t *) = entry("_is_task_running");
    int32_t (*getVolum)(int32_t, int32_t) = entry("_getVolum");
    int32_t (*setVolum)(int32_t, int32_t, int32_t) = entry("_SetVolum");
    int32_t (*setMasterMute)(int32_t, int32_t) = entry("_SetMasterMute");
    int32_t (*isAlreadyRun)(const wchar_t *) = entry("_IsAlreadyRun");
    int32_t (*isRunningAsAdmin)() = entry("_IsRunningAsAdmin");
    int32_t (*restartAsAdmin)() = entry("_RestartAsAdmin");
};
