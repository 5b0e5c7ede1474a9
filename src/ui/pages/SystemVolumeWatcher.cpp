#include "ui/pages/SystemVolumeWatcher.h"

#include "helpers/LogHelper.h"
#include "ui/pages/VolumeBalance.h"

#include <atomic>
#include <mutex>

#include <endpointvolume.h>
#include <mmdeviceapi.h>

using Microsoft::WRL::ComPtr;

ComApartment::ComApartment() : entered_(SUCCEEDED(CoInitialize(nullptr))) {}

ComApartment::~ComApartment() {
    if (entered_)
        CoUninitialize();
}

// Lives as long as the watcher or the audio system holds a reference, hence possibly longer than its owner:
// the watcher detaches itself first, and whatever the audio system still delivers then goes nowhere.
class SystemVolumeWatcher::VolumeCallback : public IAudioEndpointVolumeCallback {
public:
    explicit VolumeCallback(SystemVolumeWatcher *watcher) : owner(watcher) {}

    // Waits for a notification that is being delivered on another thread.
    void detach() {
        const std::lock_guard lock(ownerLock_);
        owner = nullptr;
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void **out) override {
        if (!out)
            return E_POINTER;
        *out = nullptr;
        if (iid != __uuidof(IUnknown) && iid != __uuidof(IAudioEndpointVolumeCallback))
            return E_NOINTERFACE;
        *out = static_cast<IAudioEndpointVolumeCallback *>(this);
        AddRef();
        return S_OK;
    }

    ULONG STDMETHODCALLTYPE AddRef() override { return ++refCount; }

    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG count = --refCount;
        if (count == 0)
            delete this;
        return count;
    }

    HRESULT STDMETHODCALLTYPE OnNotify(AUDIO_VOLUME_NOTIFICATION_DATA *data) override {
        try {
            if (data)
                deliver(*data);
        } catch (...) {
            QOR_LOG(L"a volume notification was lost");
        }
        return S_OK;
    }

private:
    virtual ~VolumeCallback() = default; // by Release only

    void deliver(const AUDIO_VOLUME_NOTIFICATION_DATA &data) {
        const ComPtr<VolumeCallback> alive(this); // a receiver may destroy the watcher
        const std::lock_guard lock(ownerLock_);
        if (!data.bMuted && owner)
            emit owner->volumeChanged(VolumeBalance::percentOfScalar(data.fMasterVolume));
        if (owner)
            emit owner->muteChanged(data.bMuted != FALSE);
    }

    SystemVolumeWatcher *owner; // null once detached; guarded by ownerLock_
    std::atomic<ULONG> refCount{0};
    // Recursive, since a receiver on the notifying thread may set the volume and so cause the next
    // notification.
    std::recursive_mutex ownerLock_;
};

SystemVolumeWatcher::SystemVolumeWatcher(QObject *parent) : QObject(parent) {
    if (FAILED(CoCreateInstance(__uuidof(MMDeviceEnumerator), nullptr, CLSCTX_INPROC_SERVER,
                                IID_PPV_ARGS(enumerator.GetAddressOf()))))
        return;
    ComPtr<IMMDevice> device;
    if (FAILED(enumerator->GetDefaultAudioEndpoint(eRender, eConsole, device.GetAddressOf())))
        return;
    const HRESULT activated = device->Activate(__uuidof(IAudioEndpointVolume), CLSCTX_ALL, nullptr,
                                               reinterpret_cast<void **>(endpointVolume.GetAddressOf()));
    device.Reset();
    if (FAILED(activated))
        return;
    callback = new VolumeCallback(this); // the watcher's own reference, beside the audio system's
    endpointVolume->RegisterControlChangeNotify(callback.Get());
}

SystemVolumeWatcher::~SystemVolumeWatcher() {
    if (!endpointVolume || !callback)
        return;
    callback->detach();
    endpointVolume->UnregisterControlChangeNotify(callback.Get());
}
