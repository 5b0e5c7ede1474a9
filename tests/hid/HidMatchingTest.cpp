// Which of the present devices `open` takes.
#include "hid/HidFixture.h"

namespace {

using HidOpenTest = VirtualHidTest;

TEST_F(HidOpenTest, ChoosesByVendorProductInterfaceAndReport) {
    using Descriptor = DescriptorBuilder;
    hid.plug(L"VID_040B&PID_F779&MI_03", L"A"); // 64 bytes, report ID 2
    hid.setDescriptor(Descriptor().values(Descriptor::Input, 5, 10).bytes());
    hid.plug(L"VID_040B&PID_F779&MI_00", L"B");
    hid.setDescriptor(Descriptor().values(Descriptor::Input, 2, 20).bytes());
    hid.plug(L"VID_1234&PID_5678&MI_0A", L"C");

    const struct {
        const char *what;
        uint32_t vendorId, productId, interfaceNumber, reportId;
        int32_t inputLength; // tells the devices apart; 0: none matches
    } cases[] = {
        {"all given", 0x040B, 0xF779, 3, 2, 65},
        {"any report", 0x040B, 0xF779, 3, 0, 65},
        {"any vendor", 0, 0xF779, 3, 2, 65},
        {"any product", 0x040B, 0, 3, 2, 65},
        {"any vendor and product", 0, 0, 3, 2, 65},
        {"report absent", 0x040B, 0xF779, 3, 5, 0},
        {"other product", 0x040B, 0xF778, 3, 2, 0},
        {"other vendor", 0x040C, 0xF779, 3, 2, 0},
        {"more than 16 bits", 0x1040B, 0xF779, 3, 2, 0},
        {"other interface", 0x040B, 0xF779, 2, 2, 0},
        {"interface 0 with a report", 0x040B, 0xF779, 0, 5, 11},
        {"interface 0, report of interface 3", 0x040B, 0xF779, 0, 2, 0},
        {"interface 0 and report 0", 0x040B, 0xF779, 0, 0, 0},
        {"hexadecimal interface", 0x1234, 0x5678, 10, 2, 21},
        {"decimal digits of it", 0x1234, 0x5678, 0x10, 2, 0},
        {"nothing given", 0, 0, 0, 0, 0},
    };
    for (const auto &c : cases) {
        HidDevice device;
        const bool opened = device.open(c.vendorId, c.productId, c.interfaceNumber, c.reportId);
        EXPECT_EQ(opened, c.inputLength != 0) << c.what;
        EXPECT_EQ(device.isOpen(), opened) << c.what;
        EXPECT_EQ(device.inputReportLength(), c.inputLength) << c.what;
    }
}

TEST_F(HidOpenTest, FindsTheReportIdInEveryKindOfReport) {
    using D = DescriptorBuilder;
    const struct {
        const char *what;
        D::Kind kind;
        bool button;
    } cases[] = {
        {"input button", D::Input, true},     {"input value", D::Input, false},
        {"output button", D::Output, true},   {"output value", D::Output, false},
        {"feature button", D::Feature, true}, {"feature value", D::Feature, false},
    };
    for (const auto &c : cases) {
        D descriptor;
        descriptor.values(D::Input, 1, 4).buttons(D::Input, 3, 8).values(D::Output, 4, 4);
        hid.setDescriptor(
            (c.button ? descriptor.buttons(c.kind, 7, 8) : descriptor.values(c.kind, 7, 8)).bytes());
        hid.plug();
        HidDevice device;
        EXPECT_TRUE(device.open(0x040B, 0xF779, 3, 7)) << c.what;
        EXPECT_FALSE(device.open(0x040B, 0xF779, 3, 6)) << c.what << ", absent ID";
        hid.unplug();
    }
}

TEST_F(HidOpenTest, IndexesEndWithNoMoreDevices) {
    const std::wstring receiver = hid.plug();
    HidDevice device;
    bool seen = false;
    uint32_t index = 0;
    for (;; ++index) {
        std::wstring path;
        const UniqueFileHandle handle = device.openByIndex(index, path);
        if (device.noMoreDevices()) {
            EXPECT_FALSE(handle);
            break;
        }
        seen = seen || _wcsicmp(path.c_str(), receiver.c_str()) == 0;
        ASSERT_LT(index, 100u);
    }
    EXPECT_TRUE(seen);
    std::wstring path;
    device.openByIndex(0, path);
    EXPECT_FALSE(device.noMoreDevices()) << "cleared at the start of each call";
    EXPECT_FALSE(HidDevice::hasReportId(nullptr, 0));
    EXPECT_FALSE(HidDevice::hasReportId(INVALID_HANDLE_VALUE, 0));
}

TEST_F(HidOpenTest, GoesThroughItsStates) {
    const std::wstring path = hid.plug();
    uint8_t data[64] = {};

    HidDevice device;
    EXPECT_FALSE(device.isOpen());
    EXPECT_EQ(device.read(data, kReportId, 10), 0u);
    EXPECT_FALSE(device.write(data, kReportId, 0));

    ASSERT_TRUE(device.openPath(path));
    EXPECT_EQ(device.inputReportLength(), 65);
    EXPECT_EQ(device.outputReportLength(), 65);
    EXPECT_EQ(device.featureReportLength(), 65);

    ASSERT_TRUE(openReceiver(device)) << "opening again closes first";
    EXPECT_FALSE(device.openPath(path + L"x"));
    EXPECT_FALSE(device.isOpen());

    ASSERT_TRUE(device.openPath(path));
    device.close();
    device.close();
    EXPECT_FALSE(device.isOpen());
    EXPECT_EQ(device.inputReportLength(), 65) << "closing keeps the lengths";
    EXPECT_EQ(device.read(data, kReportId, 10), 0u);
    EXPECT_FALSE(device.write(data, kReportId, 0));

    const HidDevice constructed(0x040B, 0xF779, 3);
    EXPECT_TRUE(constructed.isOpen());
    EXPECT_FALSE(HidDevice(0x040B, 0xF779, 0).isOpen());
}

TEST_F(HidOpenTest, ResetForgetsWithoutClosing) {
    hid.plug();
    HidDevice device;
    ASSERT_TRUE(openReceiver(device));
    const ULONG closes = hid.counters().closes;
    EXPECT_EQ(device.reset(), 0);
    EXPECT_FALSE(device.isOpen());
    EXPECT_EQ(device.inputReportLength() + device.outputReportLength() + device.featureReportLength(), 0);
    Sleep(50);
    EXPECT_EQ(hid.counters().closes, closes);
}

} // namespace
