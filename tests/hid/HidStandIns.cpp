#include "hid/HidStandIns.h"

#include "hid/HidHandles.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <mutex>
#include <utility>

// Defines a function together with its import pointer, so that the linker takes neither from the library.
#define STAND_IN(result, name, parameters)                                                                   \
    extern "C" result WINAPI standIn_##name parameters __asm__(#name);                                       \
    extern "C" {                                                                                             \
    void *standInImport_##name __asm__("__imp_" #name) = reinterpret_cast<void *>(&standIn_##name);          \
    }                                                                                                        \
    extern "C" result WINAPI standIn_##name parameters

namespace {

using Step = HidStandIns::Step;
using Device = HidStandIns::Device;

struct PendingRead {
    void *buffer;
    DWORD size;
    OVERLAPPED *overlapped; // null: none is pending
};

std::mutex mutex; // for what follows: the listener's thread goes on while a test looks
std::map<HANDLE, const Device *> openDevices;
PendingRead pendingRead;
int readCount;
std::vector<HidStandIns::Report> writtenReports;

HDEVINFO const kList = reinterpret_cast<HDEVINFO>(0x10);

HidStandIns &s() {
    return HidStandIns::instance();
}

template<typename Function>
Function original(const char *name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void *>(GetProcAddress(GetModuleHandleW(L"kernel32"), name)));
}

BOOL failWith(DWORD error) {
    SetLastError(error);
    return FALSE;
}

const Device *deviceOf(HANDLE handle) {
    const std::lock_guard<std::mutex> lock(mutex);
    const auto found = openDevices.find(handle);
    return found == openDevices.end() ? nullptr : found->second;
}

const Device &deviceOf(PHIDP_PREPARSED_DATA preparsed) {
    return *reinterpret_cast<const Device *>(preparsed);
}

bool endPendingRead(const HidStandIns::Report &report, NTSTATUS status) {
    const std::lock_guard<std::mutex> lock(mutex);
    const PendingRead read = std::exchange(pendingRead, {});
    if (!read.overlapped)
        return false;
    const size_t count = std::min<size_t>(report.size(), read.size);
    std::copy_n(report.begin(), count, static_cast<uint8_t *>(read.buffer));
    read.overlapped->InternalHigh = count;
    read.overlapped->Internal = static_cast<ULONG_PTR>(status);
    SetEvent(read.overlapped->hEvent);
    return true;
}

} // namespace

HidStandIns &HidStandIns::instance() {
    static HidStandIns standIns;
    return standIns;
}

void HidStandIns::reset() {
    *this = HidStandIns();
    const std::lock_guard<std::mutex> lock(mutex);
    openDevices.clear();
    pendingRead = {};
}

void HidStandIns::send(const Report &report) {
    while (!endPendingRead(report, 0))
        Sleep(1);
}

int HidStandIns::reads() {
    const std::lock_guard<std::mutex> lock(mutex);
    return readCount;
}

std::vector<HidStandIns::Report> HidStandIns::written() {
    const std::lock_guard<std::mutex> lock(mutex);
    return writtenReports;
}

STAND_IN(HDEVINFO, SetupDiGetClassDevsW, (const GUID *, PCWSTR, HWND, DWORD)) {
    if (s().failing == Step::List)
        return INVALID_HANDLE_VALUE;
    ++s().held;
    return kList;
}

STAND_IN(BOOL, SetupDiDestroyDeviceInfoList, (HDEVINFO)) {
    --s().held;
    return TRUE;
}

STAND_IN(BOOL, SetupDiEnumDeviceInfo, (HDEVINFO, DWORD index, PSP_DEVINFO_DATA)) {
    const std::vector<DWORD> &errors = s().enumerationErrors;
    if (index < errors.size())
        return failWith(errors[index]);
    if (index < errors.size() + s().devices.size())
        return TRUE;
    return failWith(s().enumerationNeverEnds ? ERROR_INVALID_DATA : ERROR_NO_MORE_ITEMS);
}

STAND_IN(BOOL, SetupDiEnumDeviceInterfaces,
         (HDEVINFO list, PSP_DEVINFO_DATA, const GUID *, DWORD index, PSP_DEVICE_INTERFACE_DATA data)) {
    data->Reserved = index;
    return list == kList && index < s().devices.size() && data->cbSize == 32 ? TRUE
                                                                             : failWith(ERROR_NO_MORE_ITEMS);
}

STAND_IN(BOOL, SetupDiGetDeviceInterfaceDetailW,
         (HDEVINFO, PSP_DEVICE_INTERFACE_DATA data, PSP_DEVICE_INTERFACE_DETAIL_DATA_W detail, DWORD size,
          PDWORD required, PSP_DEVINFO_DATA)) {
    const std::wstring &path = s().devices[data->Reserved].path;
    const DWORD needed = static_cast<DWORD>(offsetof(SP_DEVICE_INTERFACE_DETAIL_DATA_W, DevicePath) +
                                            (path.size() + 1) * sizeof(wchar_t));
    if (required)
        *required = s().failing == Step::DetailSize ? 0 : needed;
    if (!detail || size < needed)
        return failWith(ERROR_INSUFFICIENT_BUFFER);
    if (s().failing == Step::Detail || detail->cbSize != 8)
        return failWith(ERROR_ACCESS_DENIED);
    std::copy_n(path.c_str(), path.size() + 1, detail->DevicePath);
    return TRUE;
}

// The handle of a device is one of an event that is not used.
STAND_IN(HANDLE, CreateFileW,
         (LPCWSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security, DWORD disposition,
          DWORD flags, HANDLE pattern)) {
    static const auto real = original<decltype(&CreateFileW)>("CreateFileW");
    for (const Device &device : s().devices) {
        if (device.path != name)
            continue;
        if (s().failing == Step::Open || access != (GENERIC_READ | GENERIC_WRITE) ||
            share != (FILE_SHARE_READ | FILE_SHARE_WRITE) || disposition != OPEN_EXISTING ||
            flags != FILE_FLAG_OVERLAPPED)
            return failWith(ERROR_ACCESS_DENIED), INVALID_HANDLE_VALUE;
        const std::lock_guard<std::mutex> lock(mutex);
        const HANDLE handle = CreateEventW(nullptr, TRUE, FALSE, nullptr);
        openDevices[handle] = &device;
        ++s().held;
        return handle;
    }
    return real(name, access, share, security, disposition, flags, pattern);
}

STAND_IN(BOOL, CloseHandle, (HANDLE handle)) {
    static const auto real = original<decltype(&CloseHandle)>("CloseHandle");
    const std::lock_guard<std::mutex> lock(mutex);
    s().held -= static_cast<int>(openDevices.erase(handle));
    return real(handle);
}

STAND_IN(BOOL, ReadFile, (HANDLE handle, LPVOID buffer, DWORD size, LPDWORD count, LPOVERLAPPED overlapped)) {
    static const auto real = original<decltype(&ReadFile)>("ReadFile");
    if (!deviceOf(handle))
        return real(handle, buffer, size, count, overlapped);
    const std::lock_guard<std::mutex> lock(mutex);
    ++readCount;
    if (s().failing == Step::Read)
        return failWith(ERROR_DEVICE_NOT_CONNECTED);
    overlapped->Internal = STATUS_PENDING;
    pendingRead = {buffer, size, overlapped};
    return failWith(ERROR_IO_PENDING);
}

STAND_IN(BOOL, WriteFile,
         (HANDLE handle, LPCVOID buffer, DWORD size, LPDWORD count, LPOVERLAPPED overlapped)) {
    static const auto real = original<decltype(&WriteFile)>("WriteFile");
    if (!deviceOf(handle))
        return real(handle, buffer, size, count, overlapped);
    const std::lock_guard<std::mutex> lock(mutex);
    const auto *bytes = static_cast<const uint8_t *>(buffer);
    writtenReports.emplace_back(bytes, bytes + size);
    return TRUE;
}

STAND_IN(BOOL, CancelIo, (HANDLE)) {
    if (s().onCancel)
        s().onCancel();
    else
        endPendingRead({}, static_cast<NTSTATUS>(0xC0000120)); // cancelled
    return TRUE;
}

STAND_IN(BOOLEAN, HidD_GetAttributes, (HANDLE handle, PHIDD_ATTRIBUTES attributes)) {
    const Device *device = deviceOf(handle);
    if (!device || s().failing == Step::Attributes)
        return FALSE;
    attributes->VendorID = device->vendorId;
    attributes->ProductID = device->productId;
    return TRUE;
}

STAND_IN(BOOLEAN, HidD_GetPreparsedData, (HANDLE handle, PHIDP_PREPARSED_DATA *data)) {
    if (s().failing == Step::Preparsed)
        return FALSE;
    ++s().held;
    *data = reinterpret_cast<PHIDP_PREPARSED_DATA>(const_cast<Device *>(deviceOf(handle)));
    return TRUE;
}

STAND_IN(BOOLEAN, HidD_FreePreparsedData, (PHIDP_PREPARSED_DATA)) {
    --s().held;
    return TRUE;
}

STAND_IN(NTSTATUS, HidP_GetCaps, (PHIDP_PREPARSED_DATA preparsed, PHIDP_CAPS caps)) {
    const Device &device = deviceOf(preparsed);
    *caps = {};
    caps->InputReportByteLength = caps->OutputReportByteLength = device.reportLength;
    USHORT *const counts[] = {&caps->NumberInputButtonCaps,   &caps->NumberInputValueCaps,
                              &caps->NumberOutputButtonCaps,  &caps->NumberOutputValueCaps,
                              &caps->NumberFeatureButtonCaps, &caps->NumberFeatureValueCaps};
    for (size_t kind = 0; kind < device.reportIds.size(); ++kind)
        *counts[kind] = device.reportIds[kind] ? s().announcedRecords : 0;
    return s().failing == Step::Capabilities ? HIDP_STATUS_INVALID_PREPARSED_DATA : HIDP_STATUS_SUCCESS;
}

template<typename Capability>
static NTSTATUS giveRecords(uint8_t reportId, Capability *records, USHORT *count) {
    if (s().failing == Step::Query || reportId == 0)
        return HIDP_STATUS_USAGE_NOT_FOUND;
    const USHORT given = s().givenRecords;
    for (USHORT i = 0; i < std::min(*count, given); ++i)
        records[i].ReportID = i + 1 == given ? reportId : 0xFF;
    *count = given;
    return HIDP_STATUS_SUCCESS;
}

STAND_IN(NTSTATUS, HidP_GetSpecificButtonCaps,
         (HIDP_REPORT_TYPE type, USAGE, USHORT, USAGE, PHIDP_BUTTON_CAPS records, PUSHORT count,
          PHIDP_PREPARSED_DATA preparsed)) {
    return giveRecords(deviceOf(preparsed).reportIds[2 * static_cast<size_t>(type)], records, count);
}

STAND_IN(NTSTATUS, HidP_GetSpecificValueCaps,
         (HIDP_REPORT_TYPE type, USAGE, USHORT, USAGE, PHIDP_VALUE_CAPS records, PUSHORT count,
          PHIDP_PREPARSED_DATA preparsed)) {
    return giveRecords(deviceOf(preparsed).reportIds[2 * static_cast<size_t>(type) + 1], records, count);
}

STAND_IN(BOOLEAN, HidD_GetFeature, (HANDLE, PVOID buffer, ULONG length)) {
    auto *bytes = static_cast<uint8_t *>(buffer);
    s().feature.assign(bytes, bytes + length);
    for (ULONG i = 0; i < length; ++i)
        bytes[i] = static_cast<uint8_t>(i);
    return s().featureResult;
}

STAND_IN(BOOLEAN, HidD_SetFeature, (HANDLE, PVOID buffer, ULONG length)) {
    const auto *bytes = static_cast<const uint8_t *>(buffer);
    s().feature.assign(bytes, bytes + length);
    return s().featureResult;
}

STAND_IN(BOOLEAN, HidD_SetNumInputBuffers, (HANDLE, ULONG)) {
    return FALSE;
}

STAND_IN(BOOLEAN, HidD_GetNumInputBuffers, (HANDLE, PULONG)) {
    return FALSE;
}

STAND_IN(BOOLEAN, HidD_FlushQueue, (HANDLE)) {
    return FALSE;
}
