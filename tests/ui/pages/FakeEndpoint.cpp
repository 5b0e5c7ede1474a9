#include "ui/pages/FakeEndpoint.h"

#include <stdexcept>
#include <thread>

using Microsoft::WRL::ComPtr;

namespace fake_endpoint {

HRESULT Volume::RegisterControlChangeNotify(IAudioEndpointVolumeCallback *notify) {
    const std::lock_guard lock(lock_);
    callback_ = notify;
    ++registrations;
    return S_OK;
}

HRESULT Volume::UnregisterControlChangeNotify(IAudioEndpointVolumeCallback *notify) {
    const std::lock_guard lock(lock_);
    if (!notify || callback_.Get() != notify)
        return E_INVALIDARG;
    callback_.Reset();
    --registrations;
    return S_OK;
}

ComPtr<IAudioEndpointVolumeCallback> Volume::registered() {
    const std::lock_guard lock(lock_);
    return callback_;
}

HRESULT Device::Activate(REFIID iid, DWORD, PROPVARIANT *, void **out) {
    *out = nullptr;
    return volume.QueryInterface(iid, out);
}

HRESULT Enumerator::GetDefaultAudioEndpoint(EDataFlow flow, ERole role, IMMDevice **out) {
    *out = nullptr;
    if (flow != eRender || role != eConsole)
        return HRESULT_FROM_WIN32(ERROR_NOT_FOUND);
    return device.QueryInterface(__uuidof(IMMDevice), reinterpret_cast<void **>(out));
}

HRESULT Factory::CreateInstance(IUnknown *, REFIID iid, void **out) {
    *out = nullptr;
    return enumerator.QueryInterface(iid, out);
}

} // namespace fake_endpoint

FakeEndpoint::FakeEndpoint() {
    if (FAILED(CoRegisterClassObject(__uuidof(MMDeviceEnumerator), &factory_, CLSCTX_INPROC_SERVER,
                                     REGCLS_MULTIPLEUSE, &cookie_)))
        throw std::runtime_error("cannot take the place of MMDeviceEnumerator");
}

FakeEndpoint::~FakeEndpoint() {
    CoRevokeClassObject(cookie_);
}

void FakeEndpoint::notify(float level, bool muted) {
    if (const auto registered = callback())
        notifyCallback(registered.Get(), level, muted);
}

void FakeEndpoint::notifyFromAudioThread(float level, bool muted) {
    std::thread([=] { notify(level, muted); }).join();
}

long FakeEndpoint::references() const {
    const fake_endpoint::Enumerator &enumerator = factory_.enumerator;
    return enumerator.references + enumerator.device.references + enumerator.device.volume.references;
}

bool notifyCallback(IAudioEndpointVolumeCallback *callback, float level, bool muted) {
    AUDIO_VOLUME_NOTIFICATION_DATA data{};
    data.bMuted = muted ? TRUE : FALSE;
    data.fMasterVolume = level;
    data.nChannels = 1;
    return callback->OnNotify(&data) == S_OK;
}
