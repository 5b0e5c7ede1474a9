#include "simulator/SimulatorLibrary.h"
#include "ui/pages/FakeEndpoint.h"

#include <gmock/gmock.h>
#include <objbase.h>

namespace {

// Two endpoints that keep a level and a mute state, in the place of the system's for code on the constructing
// thread.
class LevelEndpoint : public fake_endpoint::Counted<IMMDevice> {
public:
    class Volume : public fake_endpoint::Volume {
    public:
        HRESULT STDMETHODCALLTYPE SetMasterVolumeLevelScalar(FLOAT newLevel, LPCGUID) override {
            level = newLevel;
            return broken ? E_NOTIMPL : S_OK;
        }
        HRESULT STDMETHODCALLTYPE GetMasterVolumeLevelScalar(FLOAT *currentLevel) override {
            *currentLevel = level;
            return broken ? E_NOTIMPL : S_OK;
        }
        HRESULT STDMETHODCALLTYPE SetMute(WINBOOL mute, LPCGUID) override {
            muted = mute != FALSE;
            return broken ? E_NOTIMPL : S_OK;
        }

        float level = 0;
        bool muted = false;
        bool broken = false;
    };

    HRESULT STDMETHODCALLTYPE Activate(REFIID iid, DWORD, PROPVARIANT *, void **out) override {
        return volume.QueryInterface(iid, out);
    }
    HRESULT STDMETHODCALLTYPE OpenPropertyStore(DWORD, IPropertyStore **) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetId(LPWSTR *) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetState(DWORD *) override { return E_NOTIMPL; }

    Volume volume;
};

class TwoEndpoints : public fake_endpoint::Enumerator {
public:
    HRESULT STDMETHODCALLTYPE GetDefaultAudioEndpoint(EDataFlow flow, ERole, IMMDevice **out) override {
        return (flow == eRender ? playback : microphone)
            .QueryInterface(__uuidof(IMMDevice), reinterpret_cast<void **>(out));
    }

    LevelEndpoint playback, microphone;
};

class EnumeratorFactory : public fake_endpoint::Counted<IClassFactory> {
public:
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown *, REFIID iid, void **out) override {
        return enumerator.QueryInterface(iid, out);
    }
    HRESULT STDMETHODCALLTYPE LockServer(WINBOOL) override { return S_OK; }

    TwoEndpoints enumerator;
};

class EndpointVolumeTest : public SimulatorTest {
protected:
    SimulatorLibrary library_;
};

TEST_F(EndpointVolumeTest, GoesToTheEndpointsWhereThereAreSome) {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    EnumeratorFactory factory;
    LevelEndpoint::Volume &playback = factory.enumerator.playback.volume;
    LevelEndpoint::Volume &microphone = factory.enumerator.microphone.volume;
    DWORD cookie = 0;
    ASSERT_EQ(CoRegisterClassObject(__uuidof(MMDeviceEnumerator), &factory, CLSCTX_INPROC_SERVER,
                                    REGCLS_MULTIPLEUSE, &cookie),
              S_OK);

    EXPECT_EQ(library_.setVolum(37, 0, 0), 0);
    EXPECT_EQ(library_.setVolum(150, 1, 0), 0);
    EXPECT_EQ(lastLine(), "_SetVolum(150, 1, 0) -> 0");
    EXPECT_FLOAT_EQ(playback.level, 0.37f);
    EXPECT_FLOAT_EQ(microphone.level, 1.0f);
    playback.level = 0.289999f; // what Windows makes of 29 %
    EXPECT_EQ(library_.getVolum(0, 0), 29);
    EXPECT_EQ(library_.setMasterMute(5, 0), 0);
    EXPECT_TRUE(playback.muted);
    EXPECT_FALSE(microphone.muted);

    playback.broken = true;
    EXPECT_EQ(library_.setVolum(64, 0, 0), 0);
    EXPECT_EQ(library_.getVolum(0, 0), 64) << "from the registry when the endpoint refuses";
    EXPECT_EQ(playback.references + microphone.references + factory.enumerator.references, 0);
    CoRevokeClassObject(cookie);
    CoUninitialize();
}

TEST_F(EndpointVolumeTest, IsKeptInTheRegistryWithoutAnEndpoint) {
    struct Case {
        int32_t given, kept;
    };
    for (const Case &c :
         {Case{0, 0}, Case{37, 37}, Case{100, 100}, Case{101, 100}, Case{-1, 0}, Case{-128, 0}}) {
        EXPECT_EQ(library_.setVolum(c.given, 0, 0), 0);
        EXPECT_EQ(library_.getVolum(0, 0), c.kept) << c.given;
    }
    EXPECT_EQ(library_.setVolum(80, 1, 0), 0);
    EXPECT_EQ(library_.getVolum(1, 0), 80);
    EXPECT_EQ(library_.getVolum(0, 0), 0) << "the other device";
    EXPECT_LT(library_.setVolum(10, 2, 0), 0);
    EXPECT_LT(library_.getVolum(-1, 0), 0);
    setKnob(L"PlaybackVolume", 0xFFFFFFFF);
    EXPECT_EQ(library_.getVolum(0, 0), 100);
    EXPECT_EQ(library_.setMasterMute(1, 0), 0);
    EXPECT_EQ(lastLine(), "_SetMasterMute(1, 0) -> 0 (no endpoint, kept in the registry)");
}

TEST_F(EndpointVolumeTest, LeavesTheCallersApartmentAsItIs) {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    EXPECT_EQ(library_.setVolum(12, 0, 0), 0);
    APTTYPE type{};
    APTTYPEQUALIFIER qualifier{};
    EXPECT_EQ(CoGetApartmentType(&type, &qualifier), S_OK);
    EXPECT_EQ(type, APTTYPE_MTA);
    CoUninitialize();
    EXPECT_EQ(library_.setVolum(13, 0, 0), 0);
    EXPECT_NE(CoGetApartmentType(&type, &qualifier), S_OK) << "no apartment is left behind";
}

} // namespace
