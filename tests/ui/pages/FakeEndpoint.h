// Core Audio's device enumerator, default device and endpoint volume, in the place of Windows' own ones for
// code on the constructing thread (an initialised single-threaded apartment). Counts every reference.
#pragma once

#include <mutex>
#include <wrl/client.h>

#include <endpointvolume.h>
#include <mmdeviceapi.h>

namespace fake_endpoint {

// A COM object that lives as a member: references are counted for the test, never acted on.
template<typename Interface>
class Counted : public Interface {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void **out) override {
        *out = nullptr;
        if (iid != __uuidof(IUnknown) && iid != __uuidof(Interface))
            return E_NOINTERFACE;
        AddRef();
        *out = static_cast<Interface *>(this);
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--references); }

    long references = 0;
};

class Volume : public Counted<IAudioEndpointVolume> {
public:
    HRESULT STDMETHODCALLTYPE RegisterControlChangeNotify(IAudioEndpointVolumeCallback *notify) override;
    HRESULT STDMETHODCALLTYPE UnregisterControlChangeNotify(IAudioEndpointVolumeCallback *notify) override;
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

    Microsoft::WRL::ComPtr<IAudioEndpointVolumeCallback> registered();

    int registrations = 0; // that were not taken back

private:
    std::mutex lock_; // notifications come from any thread
    Microsoft::WRL::ComPtr<IAudioEndpointVolumeCallback> callback_;
};

class Device : public Counted<IMMDevice> {
public:
    HRESULT STDMETHODCALLTYPE Activate(REFIID iid, DWORD context, PROPVARIANT *parameters,
                                       void **out) override;
    HRESULT STDMETHODCALLTYPE OpenPropertyStore(DWORD, IPropertyStore **) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetId(LPWSTR *) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetState(DWORD *) override { return E_NOTIMPL; }

    Volume volume;
};

class Enumerator : public Counted<IMMDeviceEnumerator> {
public:
    HRESULT STDMETHODCALLTYPE GetDefaultAudioEndpoint(EDataFlow flow, ERole role, IMMDevice **out) override;
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

    Device device;
};

class Factory : public Counted<IClassFactory> {
public:
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown *outer, REFIID iid, void **out) override;
    HRESULT STDMETHODCALLTYPE LockServer(WINBOOL) override { return S_OK; }

    Enumerator enumerator;
};

} // namespace fake_endpoint

class FakeEndpoint {
public:
    FakeEndpoint();
    ~FakeEndpoint();
    FakeEndpoint(const FakeEndpoint &) = delete;
    FakeEndpoint &operator=(const FakeEndpoint &) = delete;

    // Tells the registered callback, if there is one, on the calling thread / on a thread of its own.
    void notify(float level, bool muted);
    void notifyFromAudioThread(float level, bool muted);

    Microsoft::WRL::ComPtr<IAudioEndpointVolumeCallback> callback() { return volume().registered(); }
    int registrations() { return volume().registrations; }

    // Held by others, of all objects together.
    long references() const;

private:
    fake_endpoint::Volume &volume() { return factory_.enumerator.device.volume; }

    fake_endpoint::Factory factory_;
    DWORD cookie_ = 0;
};

// One call of OnNotify; true when it answered S_OK.
bool notifyCallback(IAudioEndpointVolumeCallback *callback, float level, bool muted);
