// Thin wrapper over the device-control library: adds the access key and gives the entry points typed
// arguments. Called from the GUI thread only; the library need not be thread-safe.
#pragma once

#include "device/PropertyBlocks.h"

#include <array>
#include <cstdint>

namespace DeviceApi {

constexpr uint32_t kAccessKey = 0x5A21C3E4;

enum class Endpoint : int32_t { Playback = 0, Microphone = 1 };
enum class ShowCommand : int32_t { Hidden = 0, Shown = 5 };

using HidReport = std::array<uint8_t, 64>;

// Results below 0 are failures.
int32_t initDriver();
int32_t deviceCount();
int32_t readDeviceInfo(DeviceInfo &info);
// Each as the type that its structure has.
int32_t writeBlock(DeviceInfo &info, SystemBlock &block);
int32_t writeBlock(DeviceInfo &info, SoundBlock &block);
int32_t writeBlock(DeviceInfo &info, ExtBlock &block);
void releaseDevice(DeviceInfo &info);

// Zeroes the four numbers first, as the library asks.
void readUsbIds(UsbIds &ids);

// reply may be null. Result: <= 0 is failure.
int32_t transferReport(const UsbIds &ids, const HidReport &request, HidReport *reply);

// parameters and folder may be null, or empty where the callee expects an empty string.
void startTask(const wchar_t *fileName, const wchar_t *parameters, ShowCommand show, const wchar_t *folder);
void killTask(const wchar_t *fileName);
bool isTaskRunning(const wchar_t *fileName);

void pollVolume();                                 // _getVolum(0, 0); the result is not used
void setVolume(int32_t volume, Endpoint endpoint); // percent; passed on as it is, even when out of 0..100
void setMasterMute(bool muted);

bool anotherInstanceRuns(const wchar_t *mutexName);
bool isElevated();
bool restartElevated();

} // namespace DeviceApi
