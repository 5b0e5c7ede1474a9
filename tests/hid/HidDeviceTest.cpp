// The transport on Wine's real HID stack: which device it takes, reports, and the receiver's going away.
#include "hid/HidDevice.h"
#include "hid/PluggedReceiver.h"
#include "support/ProcessHoldings.h"
#include "support/WaitUntil.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <gtest/gtest.h>
#include <numeric>
#include <optional>
#include <thread>

// The receiver has no feature report of ID 0. With a result here, the numbers 1 to 64 are given for it.
static std::optional<BOOLEAN> feature0Result;
extern "C" BOOLEAN WINAPI getFeature(HANDLE, void *, ULONG) __asm__("HidD_GetFeature");
extern "C" {
void *getFeatureImport __asm__("__imp_HidD_GetFeature") = reinterpret_cast<void *>(&getFeature);
}
extern "C" BOOLEAN WINAPI getFeature(HANDLE device, void *report, ULONG length) {
    auto *const bytes = static_cast<uint8_t *>(report);
    if (bytes[0] != 0 || !feature0Result) {
        const auto real = reinterpret_cast<decltype(&getFeature)>(
            reinterpret_cast<void *>(GetProcAddress(GetModuleHandleW(L"hid"), "HidD_GetFeature")));
        return real(device, report, length);
    }
    std::iota(bytes + 1, bytes + length, uint8_t{1});
    return *feature0Result;
}

namespace {

using Report = PluggedReceiver::Report;

constexpr uint8_t kReportId = 2;
constexpr uint32_t kTimeoutMs = 2000;
constexpr uint8_t kUntouched = 0xEE;

// The receiver's report with data bytes first, first + 1, ...
Report numbered(uint8_t first) {
    Report report(65);
    report[0] = kReportId;
    std::iota(report.begin() + 1, report.end(), first);
    return report;
}

class HidDeviceTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(open());
        out.fill(kUntouched);
    }

    bool open() { return device.open(0x040B, 0xF779, 3, kReportId); }
    uint32_t read(uint32_t timeoutMs = kTimeoutMs) { return device.read(out.data(), kReportId, timeoutMs); }
    bool write(const Report &report) { return device.write(report.data() + 1, report[0], 0); }
    bool isUntouched() const { return std::count(out.begin(), out.end(), kUntouched) == 65; }

    PluggedReceiver hid;
    HidDevice device;
    std::array<uint8_t, 65> out{}; // one byte more than the data of a report
};

TEST_F(HidDeviceTest, ChoosesByVendorProductInterfaceAndReport) {
    PluggedReceiver hexadecimal(L"VID_1234&PID_5678&MI_0A"), interface0(L"VID_040B&PID_F779&MI_00");
    const struct {
        const char *what;
        uint32_t vendorId, productId, interfaceNumber, reportId;
        PluggedReceiver *device; // null: none matches
    } cases[] = {
        {"all given", 0x040B, 0xF779, 3, 2, &hid},
        {"any report", 0x040B, 0xF779, 3, 0, &hid},
        {"a feature value", 0x040B, 0xF779, 3, 3, &hid},
        {"an input button", 0x040B, 0xF779, 3, 4, &hid},
        {"an output button", 0x040B, 0xF779, 3, 5, &hid},
        {"a feature button", 0x040B, 0xF779, 3, 6, &hid},
        {"an output value", 0x040B, 0xF779, 3, 7, &hid},
        {"report absent", 0x040B, 0xF779, 3, 8, nullptr},
        {"any vendor and product", 0, 0, 10, 2, &hexadecimal},
        {"other vendor", 0x040C, 0xF779, 3, 2, nullptr},
        {"other product", 0x040B, 0xF778, 3, 2, nullptr},
        {"more than 16 bits", 0x1040B, 0xF779, 3, 2, nullptr},
        {"hexadecimal interface", 0x1234, 0x5678, 10, 2, &hexadecimal},
        {"interface 0 with a report", 0x040B, 0xF779, 0, 2, &interface0},
        {"interface 0 and report 0", 0x040B, 0xF779, 0, 0, nullptr},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(device.open(c.vendorId, c.productId, c.interfaceNumber, c.reportId), c.device != nullptr)
            << c.what;
        EXPECT_EQ(device.isOpen(), c.device != nullptr) << c.what;
        EXPECT_EQ(write(numbered(1)), c.device != nullptr) << c.what;
        if (c.device) {
            EXPECT_EQ(c.device->nextWrite(), numbered(1)) << c.what;
        }
    }
    EXPECT_TRUE(HidDevice(0x040B, 0xF779, 3).isOpen());
    EXPECT_FALSE(HidDevice(0x040B, 0xF779, 0).isOpen());
}

TEST_F(HidDeviceTest, ReportsCarryTheirIdBesideTheData) {
    hid.input(numbered(10));
    EXPECT_EQ(read(), 65u) << "counts the report ID";
    EXPECT_TRUE(std::equal(out.begin(), out.begin() + 64, numbered(10).begin() + 1));
    EXPECT_EQ(out[64], kUntouched) << "wrote past the data";

    EXPECT_TRUE(write(numbered(100)));
    EXPECT_EQ(hid.nextWrite(), numbered(100));
    EXPECT_FALSE(write(Report(65, 9))) << "the device has no report 9";

    device.close();
    EXPECT_EQ(device.inputReportLength(), 65) << "closing keeps the lengths";
    EXPECT_EQ(read(10), 0u);
    EXPECT_FALSE(write(numbered(1)));
}

TEST_F(HidDeviceTest, FeatureReports) {
    Report request = numbered(10); // the receiver sends it back as input
    request.insert(request.begin(), 3);
    EXPECT_TRUE(device.setFeature(request.data(), 66));
    EXPECT_EQ(read(), 65u);
    EXPECT_EQ(out[0], 10);
    request[0] = 8;
    EXPECT_FALSE(device.setFeature(request.data(), 66)) << "no such report";

    for (const BOOLEAN result : {BOOLEAN{2}, BOOLEAN{0}, BOOLEAN{1}}) {
        feature0Result = result;
        out.fill(kUntouched);
        EXPECT_EQ(device.getFeature(out.data(), 64), result != 0);
        EXPECT_EQ(isUntouched(), result != 1) << "filled by the result 1 alone";
    }
    feature0Result.reset();
    EXPECT_TRUE(std::equal(out.begin(), out.begin() + 64, numbered(1).begin() + 1));
    EXPECT_EQ(out[64], kUntouched) << "wrote past the data";
}

TEST_F(HidDeviceTest, TimeOutReturnsZeroAndLeavesTheBuffer) {
    const DWORD start = GetTickCount();
    EXPECT_EQ(read(50), 0u);
    EXPECT_GE(GetTickCount() - start, 30u); // the clock has steps of 16 ms
    EXPECT_LT(GetTickCount() - start, 1500u);
    hid.input(numbered(1)); // must not land in the buffer of the read that was given up
    EXPECT_TRUE(isUntouched());
    EXPECT_EQ(read(), 65u);
    EXPECT_EQ(out[0], 1);
}

// Reports that arrive in the very moment of a time-out are neither lost nor mixed up.
TEST_F(HidDeviceTest, LosesNoReportBetweenTimeOuts) {
    constexpr int kReports = 100;
    std::atomic<int> received{0};
    std::atomic<bool> lost{false};
    std::thread sender([&] {
        for (int i = 0; i < kReports && !lost; ++i) {
            Sleep(static_cast<DWORD>(i % 3));
            hid.input(numbered(static_cast<uint8_t>(i)));
            lost = !waitUntil([&] { return received > i; });
        }
    });
    while (received < kReports && !lost) {
        if (read(1) != 65)
            continue;
        EXPECT_EQ(out[0], static_cast<uint8_t>(received));
        ++received;
    }
    sender.join();
    EXPECT_FALSE(lost);
}

TEST_F(HidDeviceTest, DropsTheBacklogOfReports) {
    for (uint8_t i = 0; i < 20; ++i)
        hid.input(numbered(i));
    int reports = 0;
    while (read(50) != 0)
        ++reports;
    EXPECT_LE(reports, 2) << "the driver keeps two reports";
    EXPECT_GE(out[0], 18) << "and these are the newest";
}

TEST_F(HidDeviceTest, UnpluggedInTheMiddleOfARead) {
    for (const uint32_t timeoutMs : {0u, 60000u}) {
        std::thread reader([&] { EXPECT_EQ(read(timeoutMs), 0u); });
        Sleep(50); // mostly in the middle; at its start must do as well
        hid.unplug();
        reader.join();

        // From now on every request fails at once.
        const DWORD start = GetTickCount();
        EXPECT_EQ(read(0) + read(5000), 0u);
        EXPECT_FALSE(write(numbered(1)));
        EXPECT_FALSE(device.getFeature(out.data(), 64) || device.setFeature(out.data(), 64));
        EXPECT_LT(GetTickCount() - start, 2000u);
        EXPECT_TRUE(isUntouched());
        EXPECT_TRUE(device.isOpen()) << "only close and open change it";
        hid.plug();
        EXPECT_TRUE(open()) << "the same object opens the device again";
    }
}

TEST_F(HidDeviceTest, OpenAndCloseLeakNoHandle) {
    const auto handles = [] { return ProcessHoldings::settled(GetCurrentProcessId()).handles; };
    device.close();
    const size_t before = handles();
    ASSERT_GT(before, 0u);
    for (int cycle = 0; cycle < 20; ++cycle) {
        ASSERT_TRUE(open());
        read(1);
        ASSERT_FALSE(device.open(0x040B, 0xF779, 3, 9)) << "rejected at the last test";
        ASSERT_TRUE(device.openPath(hid.path()));
        ASSERT_TRUE(device.openPath(hid.path()));
        device.close();
    }
    EXPECT_LE(handles(), before + ProcessHoldings::kHandleNoise);
}

} // namespace
