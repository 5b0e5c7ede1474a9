// What the tests on virtual devices share.
#pragma once

#include "hid/HidDevice.h"
#include "hid/VirtualHid.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <iterator>
#include <numeric>
#include <vector>

class VirtualHidTest : public testing::Test {
protected:
    using Report = VirtualHid::Report;

    static constexpr uint8_t kReportId = 2;
    static constexpr uint32_t kTimeoutMs = 2000;

    void SetUp() override { hid.unplugAll(); }
    void TearDown() override { hid.unplugAll(); }

    static bool openReceiver(HidDevice &device) { return device.open(0x040B, 0xF779, 3, kReportId); }

    // The receiver's report with data bytes first, first + 1, ...
    static Report numbered(uint8_t first, size_t length = 65) {
        Report report(length);
        report[0] = kReportId;
        std::iota(report.begin() + 1, report.end(), first);
        return report;
    }

    VirtualHid hid;
};

// Output buffers are filled with this before a read that must leave them alone.
constexpr uint8_t kUntouched = 0xEE;

template<size_t Size>
bool isUntouched(const std::array<uint8_t, Size> &buffer) {
    return std::count(buffer.begin(), buffer.end(), kUntouched) == Size;
}

// A report descriptor: one application collection of vendor-defined fields.
class DescriptorBuilder {
public:
    enum Kind : uint8_t { Input = 0x81, Output = 0x91, Feature = 0xB1 };

    // Without IDs when id is 0. count fields of 8 bits; with buttons, of 1 bit.
    DescriptorBuilder &values(Kind kind, uint8_t id, uint8_t count) {
        return add(kind, id, {0x06, 0x00, 0xFF, 0x15, 0x00, 0x26, 0xFF, 0x00, 0x75, 0x08, 0x09, 0x02}, count);
    }
    DescriptorBuilder &buttons(Kind kind, uint8_t id, uint8_t count) {
        return add(kind, id, {0x05, 0x09, 0x15, 0x00, 0x25, 0x01, 0x75, 0x01, 0x19, 0x01, 0x29, count},
                   count);
    }
    VirtualHid::Report bytes() const {
        VirtualHid::Report result = bytes_;
        result.push_back(0xC0);
        return result;
    }

private:
    DescriptorBuilder &add(Kind kind, uint8_t id, const VirtualHid::Report &field, uint8_t count) {
        if (id != 0)
            bytes_.insert(bytes_.end(), {0x85, id});
        bytes_.insert(bytes_.end(), field.begin(), field.end());
        bytes_.insert(bytes_.end(), {0x95, count, kind, 0x02});
        return *this;
    }

    static constexpr uint8_t kHead[] = {0x06, 0x00, 0xFF, 0x09, 0x01, 0xA1, 0x01};
    VirtualHid::Report bytes_ = VirtualHid::Report(std::begin(kHead), std::end(kHead));
};
