#include "simulator/EndpointVolume.h"

#include "simulator/Knobs.h"

#include <algorithm>
#include <cmath>
#include <endpointvolume.h>
#include <mmdeviceapi.h>
#include <wrl/client.h>

using Microsoft::WRL::ComPtr;

namespace {

constexpr uint32_t kFirstVolume = 50; // percent, before the first set
constexpr const char *kInRegistry = "no endpoint, kept in the registry";

// COM for the length of one call, in whichever apartment the thread already is.
class ComScope {
public:
    ComScope() : entered_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) {}
    ~ComScope() {
        if (entered_)
            CoUninitialize();
    }
    ComScope(const ComScope &) = delete;
    ComScope &operator=(const ComScope &) = delete;

private:
    bool entered_;
};

ComPtr<IAudioEndpointVolume> openEndpoint(int32_t device) {
    ComPtr<IMMDeviceEnumerator> enumerator;
    ComPtr<IMMDevice> endpoint;
    ComPtr<IAudioEndpointVolume> volume;
    if (SUCCEEDED(CoCreateInstance(__uuidof(MMDeviceEnumerator), nullptr, CLSCTX_INPROC_SERVER,
                                   IID_PPV_ARGS(enumerator.GetAddressOf()))) &&
        SUCCEEDED(enumerator->GetDefaultAudioEndpoint(device == 0 ? eRender : eCapture, eConsole,
                                                      endpoint.GetAddressOf())))
        endpoint->Activate(__uuidof(IAudioEndpointVolume), CLSCTX_INPROC_SERVER, nullptr,
                           reinterpret_cast<void **>(volume.GetAddressOf()));
    return volume;
}

const wchar_t *valueName(int32_t device) {
    return device == 0 ? L"PlaybackVolume" : L"MicrophoneVolume";
}

bool isDevice(int32_t device) {
    return device == 0 || device == 1;
}

} // namespace

namespace EndpointVolume {

Outcome get(int32_t device) {
    if (!isDevice(device))
        return {kFailed, "no such device"};
    const ComScope com;
    const auto endpoint = openEndpoint(device);
    float level = 0;
    if (endpoint && SUCCEEDED(endpoint->GetMasterVolumeLevelScalar(&level)))
        return {static_cast<int32_t>(std::lround(level * 100))};
    return {static_cast<int32_t>(std::min(Knobs::number(valueName(device), kFirstVolume), 100u)),
            kInRegistry};
}

Outcome set(int32_t percent, int32_t device) {
    if (!isDevice(device))
        return {kFailed, "no such device"};
    const int32_t limited = std::clamp(percent, 0, 100);
    const ComScope com;
    const auto endpoint = openEndpoint(device);
    if (endpoint &&
        SUCCEEDED(endpoint->SetMasterVolumeLevelScalar(static_cast<float>(limited) / 100, nullptr)))
        return {};
    Knobs::writeNumber(valueName(device), static_cast<uint32_t>(limited));
    return {0, kInRegistry};
}

Outcome setMuted(bool muted) {
    const ComScope com;
    const auto endpoint = openEndpoint(0);
    if (endpoint && SUCCEEDED(endpoint->SetMute(muted, nullptr)))
        return {};
    Knobs::writeNumber(L"PlaybackMuted", muted);
    return {0, kInRegistry};
}

} // namespace EndpointVolume
