// Core Audio's device enumerator, default device and endpoint volume in one object, in the place of Windows'
// own ones for code on the constructing thread.
#pragma once

#include <thread>
#include <wrl/client.h>

#include <endpointvolume.h>
#include <mmdeviceapi.h>

// The first methods of Core Audio's interfaces, as far as a watcher calls them.
struct EnumeratorStart : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE EnumAudioEndpoints() { return E_NOTIMPL; }
    virtual HRESULT STDMETHODCALLTYPE GetDefaultAudioEndpoint(EDataFlow flow, ERole role, void **out) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetDevice() { return E_NOTIMPL; }
    virtual HRESULT STDMETHODCALLTYPE RegisterEndpointNotificationCallback(IMMNotificationClient *added) = 0;
    virtual HRESULT STDMETHODCALLTYPE UnregisterEndpointNotificationCallback(IMMNotificationClient *old) = 0;
};
struct DeviceStart : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE Activate(REFIID iid, DWORD context, void *parameters, void **out) = 0;
};
struct EndpointVolumeStart : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE RegisterControlChangeNotify(IAudioEndpointVolumeCallback *added) = 0;
    virtual HRESULT STDMETHODCALLTYPE UnregisterControlChangeNotify(IAudioEndpointVolumeCallback *old) = 0;
};

class FakeEndpoint : IClassFactory, EnumeratorStart, DeviceStart, EndpointVolumeStart {
public:
    FakeEndpoint() {
        CoRegisterClassObject(__uuidof(MMDeviceEnumerator), static_cast<IClassFactory *>(this),
                              CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_);
    }
    ~FakeEndpoint() { CoRevokeClassObject(cookie_); }

    void notifyFromAudioThread(float level, bool muted) const {
        std::thread([=] {
            AUDIO_VOLUME_NOTIFICATION_DATA data{};
            data.bMuted = muted ? TRUE : FALSE;
            data.fMasterVolume = level;
            callback->OnNotify(&data);
        }).join();
    }

    Microsoft::WRL::ComPtr<IAudioEndpointVolumeCallback> callback; // registered, or null
    Microsoft::WRL::ComPtr<IMMNotificationClient> defaultCallback; // likewise

private:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void **out) override {
        const bool known = iid == __uuidof(IUnknown) || iid == __uuidof(IClassFactory);
        return known ? give(static_cast<IClassFactory *>(this), out) : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    HRESULT STDMETHODCALLTYPE LockServer(WINBOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown *, REFIID, void **out) override {
        return give(static_cast<EnumeratorStart *>(this), out);
    }
    HRESULT STDMETHODCALLTYPE GetDefaultAudioEndpoint(EDataFlow flow, ERole role, void **out) override {
        return flow == eRender && role == eConsole ? give(static_cast<DeviceStart *>(this), out)
                                                   : E_INVALIDARG;
    }
    HRESULT STDMETHODCALLTYPE RegisterEndpointNotificationCallback(IMMNotificationClient *added) override {
        defaultCallback = added;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE UnregisterEndpointNotificationCallback(IMMNotificationClient *) override {
        defaultCallback.Reset();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Activate(REFIID, DWORD, void *, void **out) override {
        return give(static_cast<EndpointVolumeStart *>(this), out);
    }
    HRESULT STDMETHODCALLTYPE RegisterControlChangeNotify(IAudioEndpointVolumeCallback *added) override {
        callback = added;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE UnregisterControlChangeNotify(IAudioEndpointVolumeCallback *) override {
        callback.Reset();
        return S_OK;
    }

    static HRESULT give(IUnknown *part, void **out) {
        *out = part;
        return S_OK;
    }

    DWORD cookie_ = 0;
};
