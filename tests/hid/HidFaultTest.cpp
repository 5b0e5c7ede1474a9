// Devices that go away, refuse, or send something else than they announced.
#include "hid/HidFixture.h"

#include <atomic>
#include <thread>

namespace {

constexpr int32_t kStatusUnsuccessful = static_cast<int32_t>(0xC0000001);

class HidFaultTest : public VirtualHidTest {
protected:
    void SetUp() override {
        VirtualHidTest::SetUp();
        hid.plug();
        ASSERT_TRUE(openReceiver(device));
        out.fill(kUntouched);
    }

    // The device is gone for good: every request fails at once.
    void expectGone() {
        const DWORD start = GetTickCount();
        EXPECT_EQ(device.read(out.data(), kReportId, 0), 0u);
        EXPECT_EQ(device.read(out.data(), kReportId, 5000), 0u);
        EXPECT_FALSE(device.write(out.data(), kReportId, 0));
        EXPECT_FALSE(device.getFeature(out.data(), 64));
        EXPECT_FALSE(device.setFeature(out.data(), 64));
        EXPECT_LT(GetTickCount() - start, 2000u);
        EXPECT_TRUE(isUntouched(out));
        EXPECT_TRUE(device.isOpen()) << "only close and open change it";
    }

    HidDevice device;
    std::array<uint8_t, 64> out{};
};

TEST_F(HidFaultTest, UnpluggedInTheMiddleOfARead) {
    for (const uint32_t timeoutMs : {0u, 60000u}) {
        std::atomic<int> result{-1};
        std::thread reader([&] { result = static_cast<int>(device.read(out.data(), kReportId, timeoutMs)); });
        Sleep(50);
        EXPECT_EQ(result, -1);
        hid.unplug();
        reader.join();
        EXPECT_EQ(result, 0);
        expectGone();
        hid.plug();
        ASSERT_TRUE(openReceiver(device)) << "the same object opens the device again";
    }
}

TEST_F(HidFaultTest, UnpluggedInTheMiddleOfAWrite) {
    hid.holdWrites(true);
    std::atomic<int> result{-1};
    std::thread writer([&] { result = device.write(out.data(), kReportId, 0); });
    while (hid.counters().heldWrites == 0)
        Sleep(1);
    EXPECT_EQ(result, -1);
    hid.unplug();
    writer.join();
    EXPECT_EQ(result, 0);
    hid.holdWrites(false);
    expectGone();
}

TEST_F(HidFaultTest, FailedRequestsAreReportedAndTheNextOnesWork) {
    hid.fail(VHID_WRITE, kStatusUnsuccessful, 2);
    EXPECT_FALSE(device.write(numbered(1).data() + 1, kReportId, 0));
    EXPECT_FALSE(device.write(numbered(2).data() + 1, kReportId, 0));
    EXPECT_TRUE(device.write(numbered(3).data() + 1, kReportId, 0));

    hid.fail(VHID_SET_FEATURE, kStatusUnsuccessful);
    EXPECT_FALSE(device.setFeature(numbered(1).data(), 65));
    EXPECT_TRUE(device.setFeature(numbered(1).data(), 65));
}

TEST_F(HidFaultTest, RefusesReportIdsThatTheDeviceDoesNotHave) {
    EXPECT_FALSE(device.write(out.data(), 9, 0));
    EXPECT_FALSE(device.setFeature(Report(65, 9).data(), 65));
    EXPECT_FALSE(device.getFeature(out.data(), 63)) << "asks for report 0, which a device with IDs has not";
    EXPECT_TRUE(isUntouched(out));
}

TEST_F(HidFaultTest, ReportsOfAWrongLengthDoNoHarm) {
    for (const size_t length : {size_t{1}, size_t{10}, size_t{64}, size_t{66}, size_t{200}}) {
        hid.input(numbered(1, length));
        EXPECT_EQ(device.read(out.data(), kReportId, 50), 0u) << length;
        EXPECT_TRUE(isUntouched(out)) << length;
    }
    hid.input(numbered(7));
    EXPECT_EQ(device.read(out.data(), kReportId, kTimeoutMs), 65u);
    EXPECT_EQ(out[0], 7);
}

// A report of the device that is shorter than its longest one.
TEST_F(HidFaultTest, ShorterReportOfAnotherId) {
    hid.unplugAll();
    using D = DescriptorBuilder;
    hid.setDescriptor(D().values(D::Input, 2, 64).values(D::Input, 3, 4).bytes());
    ASSERT_TRUE(device.openPath(hid.plug()));
    hid.input({3, 1, 2, 3, 4});
    EXPECT_EQ(device.read(out.data(), 3, kTimeoutMs), 65u);
    EXPECT_EQ(out[3], 4);
    EXPECT_EQ(out[4], 0);
}

} // namespace
