// Core Audio's device enumerator, default device and endpoint volume in one object, in the place of Windows'
// own ones for code on the constructing thread (an initialised single-threaded apartment). References are
// counted, never acted on.
#pragma once

#include <mutex>
#include <stdexcept>
#include <thread>
#include <wrl/client.h>

#include <endpointvolume.h>
#include <mmdeviceapi.h>

class FakeEndpoint : IClassFactory, IMMDeviceEnumerator, IMMDevice, IAudioEndpointVolume {
public:
    FakeEndpoint() {
        if (FAILED(CoRegisterClassObject(__uuidof(MMDeviceEnumerator), static_cast<IClassFactory *>(this),
                                         CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_)))
            throw std::runtime_error("cannot take the place of MMDeviceEnumerator");
        references_ = 0; // those of COM itself do not count
    }
    ~FakeEndpoint() { CoRevokeClassObject(cookie_); }
    FakeEndpoint(const FakeEndpoint &) = delete;
    FakeEndpoint &operator=(const FakeEndpoint &) = delete;

    // Tells the registered callback, if there is one, on the calling thread / on a thread of its own.
    void notify(float level, bool muted) {
        if (const auto registered = callback())
            notify(*registered.Get(), level, muted);
    }
    void notifyFromAudioThread(float level, bool muted) {
        std::thread([=] { notify(level, muted); }).join();
    }
    static void notify(IAudioEndpointVolumeCallback &callback, float level, bool muted) {
        AUDIO_VOLUME_NOTIFICATION_DATA data{};
        data.bMuted = muted ? TRUE : FALSE;
        data.fMasterVolume = level;
        callback.OnNotify(&data);
    }

    Microsoft::WRL::ComPtr<IAudioEndpointVolumeCallback> callback() {
        const std::lock_guard lock(lock_);
        return callback_;
    }
    long references() const { return references_; } // held by others, of all interfaces together

private:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void **out) override {
        *out = nullptr;
        if (iid == __uuidof(IUnknown) || iid == __uuidof(IClassFactory))
            *out = static_cast<IClassFactory *>(this);
        else if (iid == __uuidof(IMMDeviceEnumerator))
            *out = static_cast<IMMDeviceEnumerator *>(this);
        else if (iid == __uuidof(IAudioEndpointVolume))
            *out = static_cast<IAudioEndpointVolume *>(this);
        else
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references_); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--references_); }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown *, REFIID iid, void **out) override {
        return QueryInterface(iid, out);
    }
    HRESULT STDMETHODCALLTYPE GetDefaultAudioEndpoint(EDataFlow flow, ERole role, IMMDevice **out) override {
        *out = nullptr;
        if (flow != eRender || role != eConsole)
            return E_INVALIDARG;
        AddRef();
        *out = this;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Activate(REFIID iid, DWORD, PROPVARIANT *, void **out) override {
        return QueryInterface(iid, out);
    }
    HRESULT STDMETHODCALLTYPE RegisterControlChangeNotify(IAudioEndpointVolumeCallback *callback) override {
        const std::lock_guard lock(lock_);
        callback_ = callback;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE UnregisterControlChangeNotify(IAudioEndpointVolumeCallback *callback) override {
        const std::lock_guard lock(lock_);
        if (callback_.Get() == callback)
            callback_.Reset();
        return S_OK;
    }

    // What a watcher has no use for.
    HRESULT STDMETHODCALLTYPE LockServer(WINBOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE EnumAudioEndpoints(EDataFlow, DWORD, IMMDeviceCollection **) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetDevice(LPCWSTR, IMMDevice **) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE RegisterEndpointNotificationCallback(IMMNotificationClient *) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE UnregisterEndpointNotificationCallback(IMMNotificationClient *) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE OpenPropertyStore(DWORD, IPropertyStore **) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetId(LPWSTR *) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetState(DWORD *) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetChannelCount(UINT *) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetMasterVolumeLevel(FLOAT, LPCGUID) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetMasterVolumeLevelScalar(FLOAT, LPCGUID) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMasterVolumeLevel(FLOAT *) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMasterVolumeLevelScalar(FLOAT *) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetChannelVolumeLevel(UINT, FLOAT, LPCGUID) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetChannelVolumeLevelScalar(UINT, FLOAT, LPCGUID) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetChannelVolumeLevel(UINT, FLOAT *) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetChannelVolumeLevelScalar(UINT, FLOAT *) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetMute(WINBOOL, LPCGUID) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMute(WINBOOL *) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetVolumeStepInfo(UINT *, UINT *) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE VolumeStepUp(LPCGUID) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE VolumeStepDown(LPCGUID) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE QueryHardwareSupport(DWORD *) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetVolumeRange(FLOAT *, FLOAT *, FLOAT *) override { return E_NOTIMPL; }

    long references_ = 0;
    DWORD cookie_ = 0;
    std::mutex lock_; // notifications come from any thread
    Microsoft::WRL::ComPtr<IAudioEndpointVolumeCallback> callback_;
};
