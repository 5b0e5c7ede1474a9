#include "simulator/Reports.h"

#include "simulator/DeviceStore.h"
#include "simulator/Knobs.h"

#include <algorithm>
#include <array>

namespace {

constexpr uint8_t kLedReport = 0x0A;
constexpr uint8_t kBatteryRequest = 0x0B;
constexpr int32_t kRefused = 0;
constexpr int32_t kWholeReport = Reports::kReportSize;

std::array<uint8_t, Reports::kReportSize> batteryReply() {
    std::array<uint8_t, Reports::kReportSize> reply{};
    reply[0] = kBatteryRequest;
    reply[1] = static_cast<uint8_t>(Knobs::number(L"UsbConnected", 1));
    reply[2] = static_cast<uint8_t>(Knobs::number(L"Charging", 0));
    reply[3] = static_cast<uint8_t>(Knobs::number(L"BatteryStep", 6));
    return reply;
}

} // namespace

namespace Reports {

Outcome readSelectors(uint32_t *vendor, uint32_t *product, uint32_t *interfaceNumber, uint32_t *reportId) {
    if (!vendor || !product || !interfaceNumber || !reportId)
        return {kFailed, "no place for a number"};
    if (DeviceStore::deviceCount() < 1)
        return {kFailed, "unplugged"};
    *vendor = kSelectors[0];
    *product = kSelectors[1];
    *interfaceNumber = kSelectors[2];
    *reportId = kSelectors[3];
    return {};
}

Outcome transfer(uint32_t vendor, uint32_t product, uint32_t interfaceNumber, uint32_t reportId,
                 const uint8_t *output, uint8_t *input) {
    if (!output)
        return {kRefused, "no report"};
    if (DeviceStore::deviceCount() < 1)
        return {kRefused, "unplugged"};
    if (Knobs::number(L"RefuseReports", 0) != 0)
        return {kRefused, "refused"};
    if (vendor != kSelectors[0] || (product != kSelectors[1] && product != kOtherProduct) ||
        interfaceNumber != kSelectors[2] || reportId != kSelectors[3])
        return {kRefused, "no such interface"};

    if (output[0] == kBatteryRequest) {
        const auto reply = batteryReply();
        if (input)
            std::copy(reply.begin(), reply.end(), input);
        return {kWholeReport};
    }
    if (input)
        std::copy_n(output, kReportSize, input);
    if (output[0] == kLedReport) {
        if (!Knobs::writeBytes(L"LedReport", output, kReportSize))
            return {kRefused, "the registry value cannot be written"};
        return {kWholeReport};
    }
    return {Knobs::signedNumber(L"FirmwareVersion", 0x0203)};
}

std::string digest(const uint8_t *report) {
    if (!report)
        return "null";
    size_t used = kReportSize;
    while (used > 1 && report[used - 1] == 0)
        --used;
    return "[" + hexBytes(report, used) + "]";
}

} // namespace Reports
