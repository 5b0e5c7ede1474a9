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
        {"other product", 0x040B, 0xF778, 3, 2, 0},
        {"more than 16 bits", 0x1040B, 0xF779, 3, 2, 0},
        {"other interface", 0x040B, 0xF779, 2, 2, 0},
        {"interface 0 with a report", 0x040B, 0xF779, 0, 5, 11},
        {"interface 0 and report 0", 0x040B, 0xF779, 0, 0, 0},
        {"hexadecimal interface", 0x1234, 0x5678, 10, 2, 21},
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
    for (const D::Kind kind : {D::Input, D::Output, D::Feature}) {
        for (const bool button : {true, false}) {
            D descriptor;
            descriptor.values(D::Input, 1, 4).buttons(D::Input, 3, 8).values(D::Output, 4, 4);
            button ? descriptor.buttons(kind, 7, 8) : descriptor.values(kind, 7, 8);
            hid.setDescriptor(descriptor.bytes());
            hid.plug();
            HidDevice device;
            EXPECT_TRUE(device.open(0x040B, 0xF779, 3, 7)) << kind << button;
            EXPECT_FALSE(device.open(0x040B, 0xF779, 3, 6)) << kind << button << ", absent ID";
            hid.unplug();
        }
    }
}

TEST_F(HidOpenTest, IndexesEndWithNoMoreDevices) {
    const std::wstring receiver = hid.plug();
    HidDevice device;
    bool seen = false;
    for (uint32_t index = 0; index < 100; ++index) {
        std::wstring path;
        device.openByIndex(index, path);
        if (device.noMoreDevices())
            break;
        seen = seen || _wcsicmp(path.c_str(), receiver.c_str()) == 0;
    }
    EXPECT_TRUE(seen);
    EXPECT_TRUE(device.noMoreDevices());
}

TEST_F(HidOpenTest, GoesThroughItsStates) {
    const std::wstring path = hid.plug();
    uint8_t data[64] = {};
    const auto expectClosed = [&](HidDevice &device) {
        EXPECT_FALSE(device.isOpen());
        EXPECT_EQ(device.read(data, kReportId, 10), 0u);
        EXPECT_FALSE(device.write(data, kReportId, 0));
    };
    HidDevice device;
    expectClosed(device);
    ASSERT_TRUE(device.openPath(path));
    EXPECT_EQ(device.outputReportLength(), 65);
    EXPECT_EQ(device.featureReportLength(), 65);
    ASSERT_TRUE(openReceiver(device)) << "opening again closes first";
    EXPECT_FALSE(device.openPath(path + L"x"));
    EXPECT_FALSE(device.isOpen());

    ASSERT_TRUE(device.openPath(path));
    device.close();
    expectClosed(device);
    EXPECT_EQ(device.inputReportLength(), 65) << "closing keeps the lengths";

    HidDevice constructed(0x040B, 0xF779, 3);
    EXPECT_TRUE(constructed.isOpen());
    const ULONG closes = hid.counters().closes;
    EXPECT_EQ(constructed.reset(), 0); // forgets without closing
    EXPECT_FALSE(constructed.isOpen());
    EXPECT_EQ(constructed.inputReportLength() + constructed.outputReportLength(), 0);
    Sleep(50);
    EXPECT_EQ(hid.counters().closes, closes);
}

} // namespace
