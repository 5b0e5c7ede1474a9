// The transport on Wine's real HID stack: which device it takes, reports, and the receiver's going away.
#include "hid/HidDevice.h"
#include "hid/PluggedReceiver.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <gtest/gtest.h>
#include <numeric>
#include <thread>

#include <winioctl.h> // before hidclass.h, which needs it

#include <hidclass.h>

// The receiver has no feature report of ID 0: the numbers 1 to 64 are given for it.
static BOOLEAN featureResult;
extern "C" BOOLEAN WINAPI getFeature(HANDLE, uint8_t *, ULONG) __asm__("HidD_GetFeature");
extern "C" {
void *getFeatureImport __asm__("__imp_HidD_GetFeature") = reinterpret_cast<void *>(&getFeature);
}
extern "C" BOOLEAN WINAPI getFeature(HANDLE device, uint8_t *report, ULONG length) {
    DWORD count = 0;
    if (report[0] != 0)
        return DeviceIoControl(device, IOCTL_HID_GET_FEATURE, nullptr, 0, report, length, &count, nullptr) !=
               0;
    std::iota(report, report + length, report[0]);
    return featureResult;
}

static constexpr uint8_t kUntouched = 0xEE;

// The receiver's report with data bytes first, first + 1, ...
static PluggedReceiver::Report numbered(uint8_t first) {
    PluggedReceiver::Report report(65, 2);
    std::iota(report.begin() + 1, report.end(), first);
    return report;
}

class HidDeviceTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(device.open(0x040B, 0xF779, 3, 2));
        out.fill(kUntouched);
    }

    uint32_t read(uint32_t timeoutMs = 2000) { return device.read(out.data(), 2, timeoutMs); }
    bool write() { return device.write(numbered(1).data() + 1, 2, 0); }
    bool isUntouched() const { return std::count(out.begin(), out.end(), kUntouched) == 65; }

    PluggedReceiver hid;
    HidDevice device;
    std::array<uint8_t, 65> out{}; // one byte more than the data of a report
};

TEST_F(HidDeviceTest, ChoosesByVendorProductInterfaceAndReport) {
    PluggedReceiver hexadecimal(L"VID_1234&PID_5678&MI_0A");
    const PluggedReceiver interface0(L"VID_040B&PID_F779&MI_00");
    const struct {
        const char *what;
        uint32_t vendorId, productId, interfaceNumber, reportId;
        PluggedReceiver *found;
    } cases[] = {
        {"all given", 0x040B, 0xF779, 3, 2, &hid},
        {"a feature value", 0x040B, 0xF779, 3, 3, &hid},
        {"an input button", 0x040B, 0xF779, 3, 4, &hid},
        {"an output button", 0x040B, 0xF779, 3, 5, &hid},
        {"a feature button", 0x040B, 0xF779, 3, 6, &hid},
        {"an output value", 0x040B, 0xF779, 3, 7, &hid},
        {"report absent", 0x040B, 0xF779, 3, 8, nullptr},
        {"any vendor and product", 0, 0, 10, 2, &hexadecimal},
        {"other product", 0x040B, 0xF778, 3, 2, nullptr},
        {"interface 0 and report 0", 0x040B, 0xF779, 0, 0, nullptr},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(device.open(c.vendorId, c.productId, c.interfaceNumber, c.reportId), c.found != nullptr);
        EXPECT_EQ(write(), c.found != nullptr);
        EXPECT_TRUE(!c.found || c.found->nextWrite() == numbered(1));
    }
}

TEST_F(HidDeviceTest, FeatureReports) {
    const uint8_t request[66] = {3, 2, 10}; // the receiver sends what follows the ID back as input
    EXPECT_TRUE(device.setFeature(request, 66));
    EXPECT_EQ(read(), 65u);
    EXPECT_EQ(out[0], 10);
    for (const BOOLEAN result : {BOOLEAN{2}, BOOLEAN{0}, BOOLEAN{1}}) {
        featureResult = result;
        out.fill(kUntouched);
        EXPECT_EQ(device.getFeature(out.data(), 64), result != 0);
        EXPECT_EQ(isUntouched(), result != 1) << "filled by the result 1 alone";
    }
    EXPECT_EQ(out[0], 1) << "without the ID";
    EXPECT_EQ(out[64], kUntouched) << "wrote past the data";
}

TEST_F(HidDeviceTest, TimeOutLeavesTheBufferAndLosesNoReport) {
    EXPECT_EQ(read(50), 0u);
    hid.input(numbered(0)); // must not land in the buffer of the read that was given up
    EXPECT_TRUE(isUntouched());
    EXPECT_EQ(read(), 65u) << "counts the report ID";
    EXPECT_EQ(out[64], kUntouched) << "wrote past the data";

    // Reports that arrive in the very moment of a time-out.
    std::atomic<uint8_t> received{0};
    std::thread sender([&] {
        for (uint8_t i = 0; i < 100; ++i) {
            Sleep(i % 3);
            hid.input(numbered(i));
            EXPECT_TRUE(waitUntil([&] { return received > i; }, 2000));
        }
        received = 200;
    });
    while (received < 100) {
        if (read(1) == 65) {
            EXPECT_EQ(out[0], received++);
        }
    }
    sender.join();
}

TEST_F(HidDeviceTest, UnpluggedInTheMiddleOfARead) {
    std::thread reader([&] { EXPECT_EQ(read(60000), 0u); });
    Sleep(50); // mostly in the middle; at its start must do as well
    hid.unplug();
    reader.join();
    EXPECT_EQ(read(0), 0u); // from now on at once
    EXPECT_FALSE(write() || device.setFeature(out.data(), 64));
    EXPECT_TRUE(isUntouched() && device.isOpen());
    hid.plug();
    EXPECT_TRUE(device.open(0x040B, 0xF779, 3, 2)) << "again";
}
