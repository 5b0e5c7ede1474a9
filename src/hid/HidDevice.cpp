#include "hid/HidDevice.h"

#include "hid/HidHandles.h"
#include "hid/HidMatching.h"
#include "hid/HidSearch.h"

#include <algorithm>
#include <vector>

namespace {

constexpr ULONG kInputBufferCount = 2; // a fresh read is to see the current report, not a backlog

bool hasIds(HANDLE device, uint32_t vendorId, uint32_t productId) {
    HIDD_ATTRIBUTES attributes{};
    attributes.Size = sizeof attributes;
    return HidD_GetAttributes(device, &attributes) && HidMatching::idMatches(vendorId, attributes.VendorID) &&
           HidMatching::idMatches(productId, attributes.ProductID);
}

} // namespace

HidDevice::HidDevice(uint32_t vendorId, uint32_t productId, uint32_t interfaceNumber) {
    if (vendorId != 0 || productId != 0 || interfaceNumber != 0)
        open(vendorId, productId, interfaceNumber, 0);
}

bool HidDevice::open(uint32_t vendorId, uint32_t productId, uint32_t interfaceNumber, uint32_t reportId) {
    close();
    const std::wstring pattern = HidMatching::interfacePattern(interfaceNumber, reportId);
    if (pattern.empty())
        return false; // would reject every device
    const uint32_t count = HidSearch::presentDeviceCount();
    for (uint32_t index = 0; index < count; ++index) {
        std::wstring path;
        UniqueFileHandle device = openByIndex(index, path);
        if (hasIds(device.get(), vendorId, productId) && HidMatching::pathMatches(path, pattern) &&
            hasReportId(device.get(), static_cast<uint16_t>(reportId))) {
            deviceHandle_ = std::move(device);
            configure();
            isOpen_ = true;
            return true;
        }
    }
    return false;
}

bool HidDevice::openPath(const std::wstring &path) {
    close();
    deviceHandle_ = HidSearch::openPath(path);
    isOpen_ = static_cast<bool>(deviceHandle_);
    if (isOpen_)
        configure();
    return isOpen_;
}

void HidDevice::close() {
    readEvent_.reset();
    deviceHandle_.reset();
    isOpen_ = false;
}

int32_t HidDevice::reset() {
    deviceHandle_.release();
    readEvent_.release();
    noMoreDevices_ = 0;
    readOverlapped_ = {};
    inputReportLength_ = outputReportLength_ = featureReportLength_ = 0;
    isOpen_ = false;
    return 0;
}

UniqueFileHandle HidDevice::openByIndex(uint32_t index, std::wstring &path) {
    HidSearch::IndexedDevice device = HidSearch::openByIndex(index);
    noMoreDevices_ = !device.path;
    if (device.path)
        path = std::move(*device.path);
    return std::move(device.handle);
}

bool HidDevice::isConnected() const {
    return isOpen_ && hasIds(deviceHandle_.get(), 0, 0);
}

bool HidDevice::hasReportId(HANDLE device, uint16_t reportId) {
    return HidSearch::hasReportId(device, reportId);
}

void HidDevice::configure() {
    const HANDLE device = deviceHandle_.get();
    ULONG bufferCount = 0;
    HidD_GetNumInputBuffers(device, &bufferCount);
    HIDP_CAPS capabilities{};
    UniquePreparsedData preparsed;
    if (!HidD_GetPreparsedData(device, preparsed.put()) ||
        HidP_GetCaps(preparsed.get(), &capabilities) != HIDP_STATUS_SUCCESS)
        capabilities = {};
    HidD_SetNumInputBuffers(device, kInputBufferCount);
    inputReportLength_ = capabilities.InputReportByteLength;
    outputReportLength_ = capabilities.OutputReportByteLength;
    featureReportLength_ = capabilities.FeatureReportByteLength;

    const HANDLE event = CreateEventW(nullptr, TRUE, TRUE, nullptr);
    readEvent_.reset(event ? event : INVALID_HANDLE_VALUE);
    HidD_FlushQueue(device);
    readOverlapped_ = {};
    readOverlapped_.hEvent = readEvent_.get();
}

bool HidDevice::write(const uint8_t *data, uint8_t reportId, uint32_t) {
    if (outputReportLength_ < 1)
        return false;
    std::vector<uint8_t> report(static_cast<size_t>(outputReportLength_));
    report[0] = reportId;
    std::copy_n(data, report.size() - 1, report.begin() + 1);

    OVERLAPPED overlapped{}; // no event: the wait is on the device handle
    const HANDLE device = deviceHandle_.get();
    if (!WriteFile(device, report.data(), static_cast<DWORD>(report.size()), nullptr, &overlapped) &&
        GetLastError() != ERROR_IO_PENDING)
        return false;
    DWORD count = 0;
    BOOL written = GetOverlappedResult(device, &overlapped, &count, TRUE);
    // The handle is signalled by the end of any request on it; the report must outlive this one.
    while (!HasOverlappedIoCompleted(&overlapped)) {
        Sleep(1);
        written = GetOverlappedResult(device, &overlapped, &count, TRUE);
    }
    return written;
}

uint32_t HidDevice::read(uint8_t *out, uint8_t reportId, uint32_t timeoutMs) {
    if (inputReportLength_ < 1 || !readEvent_)
        return 0;
    std::vector<uint8_t> report(static_cast<size_t>(inputReportLength_));
    report[0] = reportId;

    const HANDLE device = deviceHandle_.get();
    ResetEvent(readEvent_.get());
    DWORD count = 0;
    if (!ReadFile(device, report.data(), static_cast<DWORD>(report.size()), &count, &readOverlapped_) &&
        GetLastError() != ERROR_IO_PENDING) {
        CancelIo(device);
        return 0;
    }
    if (timeoutMs != 0 && WaitForSingleObject(readEvent_.get(), timeoutMs) == WAIT_TIMEOUT)
        CancelIo(device);
    // Waits for the end of a cancelled read, too: until then the driver may write into the report. One that
    // arrived just before the cancelling is delivered.
    const BOOL arrived = GetOverlappedResult(device, &readOverlapped_, &count, TRUE);
    ResetEvent(readEvent_.get());
    if (!arrived || count == 0)
        return 0;
    std::copy(report.begin() + 1, report.end(), out);
    return count;
}

bool HidDevice::setFeature(const uint8_t *report, uint32_t length) {
    return HidD_SetFeature(deviceHandle_.get(), const_cast<uint8_t *>(report), length) != FALSE;
}

bool HidDevice::getFeature(uint8_t *out, uint32_t length) {
    std::vector<uint8_t> report(size_t{length} + 1);
    const BOOLEAN result = HidD_GetFeature(deviceHandle_.get(), report.data(), length + 1);
    if (result == TRUE)
        std::copy(report.begin() + 1, report.end(), out);
    return result != FALSE;
}
