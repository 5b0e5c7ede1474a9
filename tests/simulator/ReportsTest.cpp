#include "simulator/SimulatorLibrary.h"

#include <gmock/gmock.h>

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

using Report = std::array<uint8_t, 64>;

class ReportsTest : public SimulatorTest {
protected:
    int32_t transfer(const Report &request, Report *reply, uint32_t product = 0xF779) {
        return library_.hidTransData(kKey, 0x040B, product, 3, 2, request.data(),
                                     reply ? reply->data() : nullptr);
    }

    SimulatorLibrary library_;
};

TEST_F(ReportsTest, BatteryReplyFollowsTheKnobs) {
    struct Case {
        const wchar_t *knob;
        uint32_t value;
        size_t index;
    };
    Report reply{};
    EXPECT_EQ(transfer({0x0B, 0x01}, &reply), 64);
    EXPECT_EQ(reply[1], 1) << "connected";
    EXPECT_EQ(reply[2], 0) << "not charging";
    EXPECT_EQ(reply[3], 6) << "70 %";
    for (const Case &c : {Case{L"UsbConnected", 0, 1}, Case{L"Charging", 1, 2}, Case{L"BatteryStep", 0, 3},
                          Case{L"BatteryStep", 255, 3}}) {
        setKnob(c.knob, c.value);
        EXPECT_EQ(transfer({0x0B, 0x01}, &reply), 64);
        EXPECT_EQ(reply[c.index], c.value);
    }
    EXPECT_EQ(transfer({0x0B, 0x01}, nullptr), 64) << "without a reply buffer";
}

TEST_F(ReportsTest, LedReportIsKept) {
    Report report{0x0A, 3, 50, 255, 128, 1};
    report[63] = 9;
    EXPECT_EQ(transfer(report, nullptr), 64);
    EXPECT_THAT(storedBytes(L"LedReport"), testing::ElementsAreArray(report));
    EXPECT_THAT(lastLine(), HasSubstr("_hid_trans_data(1035, 63353, 3, 2) [0a 03 32 ff 80 01 00"));
}

TEST_F(ReportsTest, OtherReportsAreEchoedWithTheFirmwareVersion) {
    const Report report{0xFF, 0, 0, 0x0A, 1};
    Report reply{};
    EXPECT_EQ(transfer(report, &reply, 0xF778), 0x0203);
    EXPECT_EQ(reply, report);
    setKnob(L"FirmwareVersion", 0x0310);
    EXPECT_EQ(transfer(report, &reply), 0x0310);
}

TEST_F(ReportsTest, RefusalsLeaveTheReplyAlone) {
    Report reply;
    reply.fill(0xEE);
    EXPECT_EQ(transfer({0x0B, 0x01}, &reply, 0x1234), 0) << "another product";
    EXPECT_EQ(library_.hidTransData(kKey, 0, 0, 0, 0, reply.data(), reply.data()), 0)
        << "selectors not read yet";
    EXPECT_EQ(library_.hidTransData(kKey, 0x040B, 0xF779, 3, 2, nullptr, reply.data()), 0);
    setKnob(L"RefuseReports", 1);
    EXPECT_EQ(transfer({0x0B, 0x01}, &reply), 0);
    EXPECT_EQ(transfer({0x0A, 1}, nullptr), 0);
    setKnob(L"RefuseReports", 0);
    setKnob(L"DeviceCount", 0);
    EXPECT_EQ(transfer({0x0B, 0x01}, &reply), 0);
    EXPECT_EQ(lastLine(), "_hid_trans_data(1035, 63353, 3, 2) [0b 01] with reply -> 0 (unplugged)");
    EXPECT_THAT(reply, Each(0xEE));
    EXPECT_THAT(storedBytes(L"LedReport"), testing::IsEmpty());
}

TEST_F(ReportsTest, SelectorsNameTheReceiverWhileItIsPluggedIn) {
    uint32_t id[4] = {};
    EXPECT_EQ(library_.execUsbEncrypt(kKey, &id[0], &id[1], &id[2], &id[3]), 0);
    EXPECT_THAT(id, ElementsAre(0x040Bu, 0xF779u, 3u, 2u));
    uint32_t none[4] = {};
    setKnob(L"DeviceCount", 0);
    EXPECT_LT(library_.execUsbEncrypt(kKey, &none[0], &none[1], &none[2], &none[3]), 0);
    EXPECT_THAT(none, Each(0u));
    EXPECT_LT(library_.execUsbEncrypt(kKey, &none[0], nullptr, &none[2], &none[3]), 0);
}

} // namespace
