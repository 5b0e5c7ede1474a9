#include "device/DeviceInitialisation.h"

#include "device/DeviceApi.h"
#include "device/EqCurveFile.h"
#include "helpers/LogHelper.h"
#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"

#include <cstring>

namespace DeviceInitialisation {

namespace {

constexpr int kFullScale = 100;
constexpr DWORD kSettleTimeMs = 500;

std::wstring absolutePath(const std::wstring &path) {
    std::wstring buffer(MAX_PATH, L'\0');
    DWORD length = GetFullPathNameW(path.c_str(), static_cast<DWORD>(buffer.size()), buffer.data(), nullptr);
    if (length >= buffer.size()) {
        buffer.resize(length);
        length = GetFullPathNameW(path.c_str(), static_cast<DWORD>(buffer.size()), buffer.data(), nullptr);
    }
    buffer.resize(length);
    return buffer;
}

// Level is a signed field of a block. Negative values are passed on as they are.
template<typename Level>
Level applyVolume(Level level, DeviceApi::Endpoint endpoint) {
    if (level >= kFullScale) {
        DeviceApi::setVolume(kFullScale - 1, endpoint);
        Sleep(kSettleTimeMs);
        level = static_cast<Level>(kFullScale);
    }
    DeviceApi::setVolume(level, endpoint);
    return level;
}

} // namespace

std::wstring configFilePath() {
    std::wstring folder = ProductSettings::readString(L"ConfigPath").value_or(std::wstring());
    if (!folder.empty() && folder.back() != L'\\' && folder.back() != L'/')
        folder += L'\\';
    return absolutePath(folder + L"config.txt");
}

void ensureUserKey() {
    try {
        if (!Registry::KeyExists(ProductSettings::kUserKey))
            Registry::CreateKey(ProductSettings::kUserKey);
    } catch (const RegistryException &error) {
        QOR_LOG(L"%s", error.message().c_str());
    }
}

Reading readDevice(DeviceState &device, const std::wstring &curveFilePath) {
    if (DeviceApi::initDriver() < 0)
        return Reading::DriverFailed;
    if (DeviceApi::readDeviceInfo(device.info) < 0)
        return Reading::DeviceInfoFailed;
    device.sound = device.info.sound;
    device.system.head = device.info.system;
    EqCurveFile::load(curveFilePath, device.curves);
    std::memset(device.system.reserved, 0, sizeof device.system.reserved);
    device.extension = device.info.extension;
    device.system.headCopy = device.system.head;
    device.system.sound = device.sound;
    return Reading::Done;
}

void applyStoredVolumes(DeviceState &device) {
    device.sound.masterVolume = applyVolume(device.sound.masterVolume, DeviceApi::Endpoint::Playback);
    const int32_t micLevel = device.system.head.micLevel;
    device.system.head.micLevel = applyVolume(micLevel, DeviceApi::Endpoint::Microphone);
}

void writeBlocks(DeviceState &device) {
    device.saveType1Block();
    device.saveType2Block();
}

} // namespace DeviceInitialisation
