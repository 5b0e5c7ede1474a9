// Reports in both directions on a device that works, and handles.
#include "hid/HidFixture.h"

#include <atomic>
#include <chrono>
#include <cstring>
#include <thread>

namespace {

class HidTransferTest : public VirtualHidTest {
protected:
    void SetUp() override {
        VirtualHidTest::SetUp();
        path = hid.plug();
        ASSERT_TRUE(openReceiver(device));
    }

    std::wstring path;
    HidDevice device;
    std::array<uint8_t, 65> out{}; // one byte more than a report has
};

TEST_F(HidTransferTest, ReadsDataWithoutTheReportId) {
    out.fill(kUntouched);
    hid.input(numbered(10));
    EXPECT_EQ(device.read(out.data(), kReportId, kTimeoutMs), 65u) << "counts the report ID";
    for (size_t k = 0; k < 64; ++k)
        ASSERT_EQ(out[k], 10 + k);
    EXPECT_EQ(out[64], kUntouched) << "wrote past the data";
}

TEST_F(HidTransferTest, TimeOutReturnsZeroAndLeavesTheBuffer) {
    out.fill(kUntouched);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(device.read(out.data(), kReportId, 50), 0u);
    const auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_GE(waited, std::chrono::milliseconds(40));
    EXPECT_LT(waited, std::chrono::milliseconds(1500));
    hid.input(numbered(1)); // must not land in the buffer of the read that was given up
    Sleep(50);
    EXPECT_TRUE(isUntouched(out));
    EXPECT_EQ(device.read(out.data(), kReportId, kTimeoutMs), 65u);
    EXPECT_EQ(out[0], 1);
}

TEST_F(HidTransferTest, TimeOutOfZeroWaitsForTheReport) {
    std::thread late([this] {
        Sleep(100);
        hid.input(numbered(5));
    });
    EXPECT_EQ(device.read(out.data(), kReportId, 0), 65u);
    EXPECT_EQ(out[0], 5);
    late.join();
}

// Reports that arrive in the very moment of a time-out are neither lost nor mixed up.
TEST_F(HidTransferTest, LosesNoReportBetweenTimeOuts) {
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
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (received < kReports && std::chrono::steady_clock::now() < end) {
        if (device.read(out.data(), kReportId, 1) != 65)
            continue;
        const auto first = static_cast<uint8_t>(received.load());
        EXPECT_EQ(std::memcmp(out.data(), numbered(first).data() + 1, 64), 0) << received;
        ++received;
    }
    stop = true;
    sender.join();
    EXPECT_EQ(received, kReports);
}

TEST_F(HidTransferTest, DropsTheBacklogOfReports) {
    for (uint8_t i = 0; i < 20; ++i)
        hid.input(numbered(i));
    Sleep(100);
    int read = 0;
    while (device.read(out.data(), kReportId, 50) != 0)
        ++read;
    EXPECT_LE(read, 2) << "the driver keeps two reports";
    EXPECT_GE(out[0], 18) << "and these are the newest";
}

TEST_F(HidTransferTest, WritesTheReportIdAndTheData) {
    const Report data = numbered(100, 65);
    EXPECT_TRUE(device.write(data.data() + 1, kReportId, 0));
    EXPECT_EQ(hid.nextReport(VHID_WRITE), data);
}

TEST_F(HidTransferTest, WriteWaitsForTheDeviceWithoutTimeOut) {
    hid.holdWrites(true);
    std::atomic<int> result{-1};
    std::thread writer([&] { result = device.write(numbered(1).data() + 1, kReportId, 1); });
    Sleep(150);
    EXPECT_EQ(result, -1) << "returned before the device had taken the report";
    hid.holdWrites(false);
    writer.join();
    EXPECT_EQ(result, 1);
    EXPECT_EQ(hid.nextReport(VHID_WRITE), numbered(1));
}

TEST_F(HidTransferTest, ReadsWhileAnotherObjectWrites) {
    HidDevice other;
    ASSERT_TRUE(openReceiver(other));
    constexpr uint8_t kReports = 50;
    std::thread writer([&] {
        for (uint8_t i = 0; i < kReports; ++i)
            EXPECT_TRUE(other.write(numbered(i).data() + 1, kReportId, 0));
    });
    for (uint8_t i = 0; i < kReports; ++i) {
        hid.input(numbered(i));
        ASSERT_EQ(device.read(out.data(), kReportId, kTimeoutMs), 65u) << int{i};
        EXPECT_EQ(out[63], static_cast<uint8_t>(i + 63));
    }
    writer.join();
    for (uint8_t i = 0; i < kReports; ++i)
        ASSERT_EQ(hid.nextReport(VHID_WRITE), numbered(i));
}

TEST_F(HidTransferTest, FeatureReports) {
    hid.unplugAll();
    hid.setDescriptor(DescriptorBuilder()
                          .values(DescriptorBuilder::Input, 0, 4)
                          .values(DescriptorBuilder::Feature, 0, 16)
                          .bytes());
    hid.setFeature(numbered(30, 17));
    ASSERT_TRUE(device.openPath(hid.plug()));
    EXPECT_EQ(device.featureReportLength(), 17);
    EXPECT_EQ(device.outputReportLength(), 0);
    EXPECT_FALSE(device.write(out.data(), 0, 0)) << "there is no output report";

    out.fill(kUntouched);
    EXPECT_TRUE(device.getFeature(out.data(), 16));
    EXPECT_EQ(out[0], kReportId);
    EXPECT_EQ(out[15], 44);
    EXPECT_EQ(out[16], kUntouched);

    const Report report = {0, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0, 1, 2, 3, 4, 5, 6};
    EXPECT_TRUE(device.setFeature(report.data(), 17));
    EXPECT_EQ(hid.nextReport(VHID_SET_FEATURE), Report(report.begin() + 1, report.end()));
}

// Handles of this process, by the system's own table.
size_t handleCount() {
    struct Entry {
        void *object;
        ULONG_PTR processId, handle;
        ULONG rest[4];
    };
    struct Table {
        ULONG_PTR count, reserved;
        Entry entries[1];
    };
    using Query = LONG(WINAPI *)(ULONG, void *, ULONG, ULONG *);
    const auto query = reinterpret_cast<Query>(
        reinterpret_cast<void *>(GetProcAddress(GetModuleHandleW(L"ntdll"), "NtQuerySystemInformation")));
    constexpr ULONG kExtendedHandleInformation = 64;
    std::vector<ULONG_PTR> buffer(1 << 20);
    ULONG length = 0;
    if (query(kExtendedHandleInformation, buffer.data(), static_cast<ULONG>(buffer.size() * sizeof buffer[0]),
              &length) != 0)
        return 0;
    const auto *table = reinterpret_cast<const Table *>(buffer.data());
    size_t count = 0;
    for (ULONG_PTR i = 0; i < table->count; ++i)
        count += table->entries[i].processId == GetCurrentProcessId();
    return count;
}

TEST_F(HidTransferTest, OpenAndCloseLeakNoHandle) {
    device.close();
    ASSERT_TRUE(device.openPath(path)); // what the first use of a library keeps is not a leak
    device.close();
    const size_t handles = handleCount();
    ASSERT_GT(handles, 0u);
    const VhidCounters before = hid.counters();
    for (int cycle = 0; cycle < 1000; ++cycle) {
        if (cycle % 40 == 0) {
            ASSERT_TRUE(openReceiver(device));
            ASSERT_FALSE(device.open(0x040B, 0xF779, 3, 9)) << "rejected at the last test";
        }
        ASSERT_TRUE(device.openPath(path));
        if (cycle % 20 == 0)
            device.read(out.data(), kReportId, 1);
        if (cycle % 2 == 0)
            device.close();
    }
    device.close();
    EXPECT_EQ(handleCount(), handles);
    const VhidCounters after = hid.counters();
    EXPECT_GE(after.opens - before.opens, 1000u);
    EXPECT_EQ(after.closes - before.closes, after.opens - before.opens);
}

} // namespace
