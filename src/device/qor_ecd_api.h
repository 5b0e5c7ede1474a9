// The maker's device-control library, as the panel uses it: C entry points, default x64 calling convention,
// 32-bit integers, NUL-terminated wide strings. Only DeviceApi.cpp includes this header; everybody else goes
// through DeviceApi, which adds the access key.
#pragma once

#include <cstdint>

#ifdef QOR_ECD_API_BUILD
#define QOR_ECD_API extern "C" __declspec(dllexport)
#else
// Not dllimport: calls go through the import library's thunks, so that a test's recorder can stand in at link
// time.
#define QOR_ECD_API extern "C"
#endif

// Driver and device. Negative results are failures.
QOR_ECD_API int32_t init(uint32_t key);
QOR_ECD_API int32_t getDeviceCount(uint32_t key);
QOR_ECD_API int32_t getDeviceInfo(int32_t index, void *deviceInfo, uint32_t key);
QOR_ECD_API int32_t setDeviceProperty(void *deviceInfo, int32_t type, void *block, uint32_t key);
QOR_ECD_API int32_t releaseDeviceInfo(void *deviceInfo, uint32_t key);

// Fills the four USB selectors of the connected device; the caller zeroes them first.
QOR_ECD_API int32_t _exec_usb_encrypt(uint32_t key, uint32_t *id1, uint32_t *id2, uint32_t *id3,
                                      uint32_t *id4);

// Sends a 64-byte report; with a 64-byte input buffer also reads the answer. Result: <= 0 is failure.
QOR_ECD_API int32_t _hid_trans_data(uint32_t key, uint32_t id1, uint32_t id2, uint32_t id3, uint32_t id4,
                                    const uint8_t *output, uint8_t *input);

// Helper processes, by executable file name. show: 0 hidden, 5 shown.
QOR_ECD_API int32_t _start_task(const wchar_t *fileName, const wchar_t *parameters, int32_t show,
                                const wchar_t *folder);
QOR_ECD_API int32_t _kill_task(const wchar_t *fileName);
QOR_ECD_API int32_t _is_task_running(const wchar_t *fileName);

// Windows endpoint volume: volume 0..100; device 0 playback, 1 microphone; the last argument is always 0.
QOR_ECD_API int32_t _getVolum(int32_t device, int32_t reserved);
QOR_ECD_API int32_t _SetVolum(int32_t volume, int32_t device, int32_t reserved);
QOR_ECD_API int32_t _SetMasterMute(int32_t muted, int32_t reserved);

// Process: single instance by mutex name, elevation.
QOR_ECD_API int32_t _IsAlreadyRun(const wchar_t *mutexName);
QOR_ECD_API int32_t _IsRunningAsAdmin();
QOR_ECD_API int32_t _RestartAsAdmin();
