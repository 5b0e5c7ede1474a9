// The IUnknown part of a callback object that the audio system holds. It lives as long as anybody holds a
// reference, hence possibly longer than its owner.
#pragma once

#include <atomic>
#include <unknwn.h>

template<typename Interface>
class ComCallback : public Interface {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void **out) override {
        if (!out)
            return E_POINTER;
        *out = nullptr;
        if (iid != __uuidof(IUnknown) && iid != __uuidof(Interface))
            return E_NOINTERFACE;
        *out = static_cast<Interface *>(this);
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

protected:
    ComCallback() = default;
    virtual ~ComCallback() = default; // by Release only

private:
    std::atomic<ULONG> refCount{0};
};
