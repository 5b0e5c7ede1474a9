#include "pages/volume/SystemVolumeWatcher.h"

#include "helpers/LogHelper.h"
#include "pages/volume/ComCallback.h"
#include "pages/volume/VolumeBalance.h"

#include <mutex>

#include <endpointvolume.h>
#include <mmdeviceapi.h>

using Microsoft::WRL::ComPtr;

namespace {

void logFailure(const wchar_t *what, HRESULT result) {
    if (FAILED(result))
        QOR_LOG(L"%s failed: 0x%08lx", what, static_cast<unsigned long>(result));
}

} // namespace

ComApartment::ComApartment() : entered_(SUCCEEDED(CoInitialize(nullptr))) {}

ComApartment::~ComApartment() {
    if (entered_)
        CoUninitialize();
}

// May outlive the watcher, which detaches itself first: whatever the audio system still delivers then goes
// nowhere.
class SystemVolumeWatcher::VolumeCallback : public ComCallback<IAudioEndpointVolumeCallback> {
public:
    explicit VolumeCallback(SystemVolumeWatcher &watcher)
        : owner(&watcher), current_(watcher.generation_), generation_(*current_) {}

    // Waits for a notification that is being delivered on another thread.
    void detach() {
        const std::lock_guard lock(ownerLock_);
        owner = nullptr;
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
    void deliver(const AUDIO_VOLUME_NOTIFICATION_DATA &data) {
        const ComPtr<VolumeCallback> alive(this); // a receiver may destroy the watcher
        const std::lock_guard lock(ownerLock_);
        if (generation_ != *current_)
            return;
        if (!data.bMuted && owner)
            emit owner->volumeChanged(VolumeBalance::percentOfScalar(data.fMasterVolume));
        if (owner)
            emit owner->muteChanged(data.bMuted != FALSE);
    }

    SystemVolumeWatcher *owner; // null once detached; guarded by ownerLock_
    const std::shared_ptr<Generation> current_;
    const unsigned generation_; // of the endpoint that this object was registered with
    // Recursive, since a receiver on the notifying thread may set the volume and so cause the next
    // notification.
    std::recursive_mutex ownerLock_;
};

// Windows' documentation of IMMNotificationClient asks that its methods neither wait nor register, unregister
// or release anything, so the endpoint is exchanged on the GUI thread.
class SystemVolumeWatcher::DefaultDeviceCallback : public ComCallback<IMMNotificationClient> {
public:
    explicit DefaultDeviceCallback(SystemVolumeWatcher &watcher)
        : owner_(&watcher), current_(watcher.generation_) {}

    void detach() {
        const std::lock_guard lock(ownerLock_);
        owner_ = nullptr;
    }

    // Also without a device, when the last one went away.
    HRESULT STDMETHODCALLTYPE OnDefaultDeviceChanged(EDataFlow flow, ERole role, LPCWSTR) override {
        if (flow != eRender || role != eConsole)
            return S_OK;
        ++*current_; // the old endpoint is left from now on
        try {
            const std::lock_guard lock(ownerLock_);
            if (owner_)
                QMetaObject::invokeMethod(owner_, &SystemVolumeWatcher::watchDefaultEndpoint,
                                          Qt::QueuedConnection);
        } catch (...) {
            QOR_LOG(L"a change of the default playback device was lost");
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE OnDeviceStateChanged(LPCWSTR, DWORD) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnDeviceAdded(LPCWSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnDeviceRemoved(LPCWSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnPropertyValueChanged(LPCWSTR, const PROPERTYKEY) override { return S_OK; }

private:
    SystemVolumeWatcher *owner_; // null once detached; guarded by ownerLock_
    const std::shared_ptr<Generation> current_;
    std::mutex ownerLock_;
};

SystemVolumeWatcher::SystemVolumeWatcher(QObject *parent) : QObject(parent) {
    if (FAILED(CoCreateInstance(__uuidof(MMDeviceEnumerator), nullptr, CLSCTX_INPROC_SERVER,
                                IID_PPV_ARGS(enumerator.GetAddressOf()))))
        return;
    // Before the endpoint is taken, so that no change is missed.
    defaultDeviceCallback_ = new DefaultDeviceCallback(*this);
    logFailure(L"RegisterEndpointNotificationCallback",
               enumerator->RegisterEndpointNotificationCallback(defaultDeviceCallback_.Get()));
    watchDefaultEndpoint();
}

SystemVolumeWatcher::~SystemVolumeWatcher() {
    if (defaultDeviceCallback_) {
        defaultDeviceCallback_->detach();
        enumerator->UnregisterEndpointNotificationCallback(defaultDeviceCallback_.Get());
    }
    leaveEndpoint();
}

void SystemVolumeWatcher::watchDefaultEndpoint() {
    leaveEndpoint();
    // Made first: where the default device changes meanwhile, it is outdated from the start.
    const ComPtr<VolumeCallback> fresh(new VolumeCallback(*this));
    ComPtr<IMMDevice> device;
    if (FAILED(enumerator->GetDefaultAudioEndpoint(eRender, eConsole, device.GetAddressOf())))
        return;
    const HRESULT activated = device->Activate(__uuidof(IAudioEndpointVolume), CLSCTX_ALL, nullptr,
                                               reinterpret_cast<void **>(endpointVolume.GetAddressOf()));
    device.Reset();
    if (FAILED(activated))
        return;
    callback = fresh;
    logFailure(L"RegisterControlChangeNotify", endpointVolume->RegisterControlChangeNotify(callback.Get()));
}

void SystemVolumeWatcher::leaveEndpoint() {
    if (callback) {
        callback->detach();
        endpointVolume->UnregisterControlChangeNotify(callback.Get());
    }
    callback.Reset();
    endpointVolume.Reset();
}
