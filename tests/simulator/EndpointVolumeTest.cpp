// Without an endpoint, which is how the test machines are; what Core Audio does is not ours to test.
#include "simulator/SimulatorLibrary.h"

#include <gmock/gmock.h>
#include <objbase.h>

namespace {

class EndpointVolumeTest : public SimulatorTest {
protected:
    SimulatorLibrary library_;
};

TEST_F(EndpointVolumeTest, IsKeptPerDeviceAndLimited) {
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
