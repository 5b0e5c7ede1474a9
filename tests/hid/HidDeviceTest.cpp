// Reports and handles of a receiver on Wine's real HID stack, and the receiver's going away.
#include "hid/HidDevice.h"
#include "hid/VirtualHid.h"
#include "support/ProcessHoldings.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <gtest/gtest.h>
#include <numeric>
#include <thread>

namespace {

using Report = VirtualHid::Report;

constexpr uint8_t kReportId = 2;
constexpr uint32_t kTimeoutMs = 2000;
constexpr uint8_t kUntouched = 0xEE;

// The receiver's report with data bytes first, first + 1, ...
Report numbered(uint8_t first, size_t length = 65) {
    Report report(length);
    report[0] = kReportId;
    std::iota(report.begin() + 1, report.end(), first);
    return report;
}

class HidDeviceTest : public testing::Test {
protected:
    void SetUp() override {
        hid.unplugAll();
        path = hid.plug();
        ASSERT_TRUE(open());
        out.fill(kUntouched);
    }
    void TearDown() override { hid.unplugAll(); }

    bool open() { return device.open(0x040B, 0xF779, 3, kReportId); }
    uint32_t read(uint32_t timeoutMs = kTimeoutMs) { return device.read(out.data(), kReportId, timeoutMs); }
    bool write(const Report &report) { return device.write(report.data() + 1, report[0], 0); }
    bool isUntouched() const { return std::count(out.begin(), out.end(), kUntouched) == 65; }

    // The device is gone for good: every request fails at once.
    void expectGone() {
        const DWORD start = GetTickCount();
        EXPECT_EQ(read(0), 0u);
        EXPECT_EQ(read(5000), 0u);
        EXPECT_FALSE(write(numbered(1)));
        EXPECT_FALSE(device.getFeature(out.data(), 64));
        EXPECT_FALSE(device.setFeature(out.data(), 64));
        EXPECT_LT(GetTickCount() - start, 2000u);
        EXPECT_TRUE(isUntouched());
        EXPECT_TRUE(device.isOpen()) << "only close and open change it";
        hid.plug();
        EXPECT_TRUE(open()) << "the same object opens the device again";
    }

    VirtualHid hid;
    std::wstring path;
    HidDevice device;
    std::array<uint8_t, 65> out{}; // one byte more than the data of a report
};

TEST_F(HidDeviceTest, ReportsCarryTheirIdBesideTheData) {
    hid.input(numbered(10));
    EXPECT_EQ(read(), 65u) << "counts the report ID";
    EXPECT_TRUE(std::equal(out.begin(), out.begin() + 64, numbered(10).begin() + 1));
    EXPECT_EQ(out[64], kUntouched) << "wrote past the data";

    EXPECT_TRUE(write(numbered(100)));
    EXPECT_EQ(hid.nextWrite(), numbered(100));
    EXPECT_FALSE(write(Report(65, 9))) << "the device has no report 9";
}

TEST_F(HidDeviceTest, TimeOutReturnsZeroAndLeavesTheBuffer) {
    const DWORD start = GetTickCount();
    EXPECT_EQ(read(50), 0u);
    EXPECT_GE(GetTickCount() - start, 30u); // the clock has steps of 16 ms
    EXPECT_LT(GetTickCount() - start, 1500u);
    hid.input(numbered(1)); // must not land in the buffer of the read that was given up
    Sleep(50);
    EXPECT_TRUE(isUntouched());
    EXPECT_EQ(read(), 65u);
    EXPECT_EQ(out[0], 1);
}

// Reports that arrive in the very moment of a time-out are neither lost nor mixed up.
TEST_F(HidDeviceTest, LosesNoReportBetweenTimeOuts) {
    constexpr int kReports = 300;
    std::atomic<int> received{0};
    std::atomic<bool> stop{false};
    std::thread sender([&] {
        for (int i = 0; i < kReports && !stop; ++i) {
            Sleep(static_cast<DWORD>(i % 3));
            hid.input(numbered(static_cast<uint8_t>(i)));
            while (received <= i && !stop)
                std::this_thread::yield();
        }
    });
    const DWORD start = GetTickCount();
    while (received < kReports && GetTickCount() - start < 30000) {
        if (read(1) != 65)
            continue;
        EXPECT_EQ(out[0], static_cast<uint8_t>(received));
        ++received;
    }
    stop = true;
    sender.join();
    EXPECT_EQ(received, kReports);
}

TEST_F(HidDeviceTest, DropsTheBacklogOfReports) {
    for (uint8_t i = 0; i < 20; ++i)
        hid.input(numbered(i));
    Sleep(100);
    int reports = 0;
    while (read(50) != 0)
        ++reports;
    EXPECT_LE(reports, 2) << "the driver keeps two reports";
    EXPECT_GE(out[0], 18) << "and these are the newest";
}

TEST_F(HidDeviceTest, ReportsOfAWrongLengthDoNoHarm) {
    for (const size_t length : {size_t{1}, size_t{10}, size_t{64}, size_t{66}, size_t{200}}) {
        hid.input(numbered(1, length));
        EXPECT_EQ(read(50), 0u) << length;
        EXPECT_TRUE(isUntouched()) << length;
    }
    hid.input(numbered(7));
    EXPECT_EQ(read(), 65u);
    EXPECT_EQ(out[0], 7);
}

TEST_F(HidDeviceTest, ReadsWhileAnotherObjectWrites) {
    HidDevice other;
    ASSERT_TRUE(other.openPath(path));
    constexpr uint8_t kReports = 50;
    std::thread writer([&] {
        for (uint8_t i = 0; i < kReports; ++i)
            EXPECT_TRUE(other.write(numbered(i).data() + 1, kReportId, 0));
    });
    for (uint8_t i = 0; i < kReports; ++i) {
        hid.input(numbered(i));
        EXPECT_EQ(read(), 65u) << int{i};
        EXPECT_EQ(out[63], static_cast<uint8_t>(i + 63));
    }
    writer.join();
    for (uint8_t i = 0; i < kReports; ++i)
        EXPECT_EQ(hid.nextWrite(), numbered(i));
}

TEST_F(HidDeviceTest, UnpluggedInTheMiddleOfARead) {
    for (const uint32_t timeoutMs : {0u, 60000u}) {
        std::atomic<int> result{-1};
        std::thread reader([&] { result = static_cast<int>(read(timeoutMs)); });
        Sleep(50);
        EXPECT_EQ(result, -1);
        hid.unplug();
        reader.join();
        EXPECT_EQ(result, 0);
        expectGone();
    }
}

TEST_F(HidDeviceTest, UnpluggedInTheMiddleOfAWrite) {
    hid.holdWrites(true);
    std::atomic<int> result{-1};
    std::thread writer([&] { result = device.write(numbered(1).data() + 1, kReportId, 1); });
    Sleep(150);
    EXPECT_EQ(result, -1) << "a write has no time-out";
    hid.unplug();
    writer.join();
    EXPECT_EQ(result, 0);
    hid.holdWrites(false);
    expectGone();
}

TEST_F(HidDeviceTest, OpenAndCloseLeakNoHandle) {
    const auto handles = [] { return ProcessHoldings::of(GetCurrentProcessId()).handles; };
    device.close();
    handles(); // what the first use of a library keeps is not a leak
    const size_t before = handles();
    ASSERT_GT(before, 0u);
    for (int cycle = 0; cycle < 1000; ++cycle) {
        if (cycle % 40 == 0) {
            ASSERT_TRUE(open());
            ASSERT_FALSE(device.open(0x040B, 0xF779, 3, 9)) << "rejected at the last test";
        }
        ASSERT_TRUE(device.openPath(path));
        if (cycle % 20 == 0)
            read(1);
        if (cycle % 2 == 0)
            device.close();
    }
    device.close();
    EXPECT_EQ(handles(), before);
}

} // namespace
