#include "hid/HidStandIns.h"

#include "hid/HidHandles.h"

#include <algorithm>
#include <cstddef>
#include <set>

// Defines a function together with its import pointer, so that the linker takes neither from the library.
#define STAND_IN(result, name, parameters)                                                                   \
    extern "C" result WINAPI standIn_##name parameters __asm__(#name);                                       \
    extern "C" {                                                                                             \
    void *standInImport_##name __asm__("__imp_" #name) = reinterpret_cast<void *>(&standIn_##name);          \
    }                                                                                                        \
    extern "C" result WINAPI standIn_##name parameters

namespace {

constexpr wchar_t kPipe[] = L"\\\\.\\pipe\\qorsound-hid-stand-in";
UniqueFileHandle deviceEnd;
std::set<HANDLE> openPipes;

template<typename Function>
Function original(const char *name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void *>(GetProcAddress(GetModuleHandleW(L"kernel32"), name)));
}

HidStandIns &s() {
    return HidStandIns::instance();
}

BOOL failWith(DWORD error) {
    SetLastError(error);
    return FALSE;
}

HDEVINFO const kList = reinterpret_cast<HDEVINFO>(0x10);
PHIDP_PREPARSED_DATA const kPreparsed = reinterpret_cast<PHIDP_PREPARSED_DATA>(0x20);

} // namespace

HidStandIns &HidStandIns::instance() {
    static HidStandIns standIns;
    return standIns;
}

void HidStandIns::reset() {
    *this = HidStandIns();
    openPipes.clear();
    deviceEnd.reset();
}

void HidStandIns::send(const std::vector<uint8_t> &report) {
    DWORD count = 0;
    WriteFile(deviceEnd.get(), report.data(), static_cast<DWORD>(report.size()), &count, nullptr);
}

STAND_IN(HDEVINFO, SetupDiGetClassDevsW, (const GUID *, PCWSTR, HWND, DWORD)) {
    if (s().listFails)
        return INVALID_HANDLE_VALUE;
    ++s().listsOutstanding;
    return kList;
}

STAND_IN(BOOL, SetupDiDestroyDeviceInfoList, (HDEVINFO)) {
    --s().listsOutstanding;
    return TRUE;
}

STAND_IN(BOOL, SetupDiEnumDeviceInfo, (HDEVINFO, DWORD index, PSP_DEVINFO_DATA)) {
    if (index < s().enumerationErrors.size())
        return failWith(s().enumerationErrors[index]);
    if (index == s().enumerationErrors.size())
        return TRUE;
    return failWith(s().enumerationNeverEnds ? ERROR_INVALID_DATA : ERROR_NO_MORE_ITEMS);
}

STAND_IN(BOOL, SetupDiEnumDeviceInterfaces,
         (HDEVINFO list, PSP_DEVINFO_DATA, const GUID *, DWORD index, PSP_DEVICE_INTERFACE_DATA data)) {
    return list == kList && index == 0 && data->cbSize == 32 ? TRUE : failWith(ERROR_NO_MORE_ITEMS);
}

STAND_IN(BOOL, SetupDiGetDeviceInterfaceDetailW,
         (HDEVINFO, PSP_DEVICE_INTERFACE_DATA, PSP_DEVICE_INTERFACE_DETAIL_DATA_W detail, DWORD size,
          PDWORD required, PSP_DEVINFO_DATA)) {
    const DWORD needed = static_cast<DWORD>(offsetof(SP_DEVICE_INTERFACE_DETAIL_DATA_W, DevicePath) +
                                            (s().path.size() + 1) * sizeof(wchar_t));
    if (required)
        *required = s().detailSizeIsZero ? 0 : needed;
    if (!detail || size < needed)
        return failWith(ERROR_INSUFFICIENT_BUFFER);
    if (s().detailFails || detail->cbSize != 8)
        return failWith(ERROR_ACCESS_DENIED);
    std::copy_n(s().path.c_str(), s().path.size() + 1, detail->DevicePath);
    return TRUE;
}

STAND_IN(HANDLE, CreateFileW,
         (LPCWSTR name, DWORD access, DWORD share, LPSECURITY_ATTRIBUTES security, DWORD disposition,
          DWORD flags, HANDLE pattern)) {
    static const auto real = original<decltype(&CreateFileW)>("CreateFileW");
    if (name != s().path)
        return real(name, access, share, security, disposition, flags, pattern);
    s().openedPath = name;
    if (s().openFails)
        return failWith(ERROR_ACCESS_DENIED), INVALID_HANDLE_VALUE;
    deviceEnd.reset(); // a pipe end serves one opening
    deviceEnd.reset(CreateNamedPipeW(kPipe, PIPE_ACCESS_DUPLEX, PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE, 1,
                                     4096, 4096, 0, nullptr));
    const HANDLE pipe = real(kPipe, access, share, security, disposition, flags, pattern);
    DWORD mode = PIPE_READMODE_MESSAGE;
    SetNamedPipeHandleState(pipe, &mode, nullptr, nullptr);
    openPipes.insert(pipe);
    ++s().filesOutstanding;
    return pipe;
}

STAND_IN(BOOL, CloseHandle, (HANDLE handle)) {
    static const auto real = original<decltype(&CloseHandle)>("CloseHandle");
    s().filesOutstanding -= static_cast<int>(openPipes.erase(handle));
    return real(handle);
}

STAND_IN(BOOL, ReadFile, (HANDLE handle, LPVOID buffer, DWORD size, LPDWORD count, LPOVERLAPPED overlapped)) {
    static const auto real = original<decltype(&ReadFile)>("ReadFile");
    if (openPipes.count(handle) == 0)
        return real(handle, buffer, size, count, overlapped);
    ++s().reads;
    return s().readFails ? failWith(ERROR_DEVICE_NOT_CONNECTED)
                         : real(handle, buffer, size, count, overlapped);
}

STAND_IN(BOOL, CancelIo, (HANDLE handle)) {
    static const auto real = original<decltype(&CancelIo)>("CancelIo");
    ++s().cancels;
    if (s().onCancel && s().onCancel())
        return TRUE;
    return real(handle);
}

STAND_IN(BOOLEAN, HidD_GetAttributes, (HANDLE handle, PHIDD_ATTRIBUTES attributes)) {
    attributes->VendorID = 0x040B;
    attributes->ProductID = 0xF779;
    return handle != INVALID_HANDLE_VALUE && !s().attributesFail;
}

STAND_IN(BOOLEAN, HidD_GetPreparsedData, (HANDLE, PHIDP_PREPARSED_DATA *data)) {
    if (s().preparsedFails)
        return FALSE;
    ++s().preparsedOutstanding;
    *data = kPreparsed;
    return TRUE;
}

STAND_IN(BOOLEAN, HidD_FreePreparsedData, (PHIDP_PREPARSED_DATA)) {
    --s().preparsedOutstanding;
    return TRUE;
}

STAND_IN(NTSTATUS, HidP_GetCaps, (PHIDP_PREPARSED_DATA, PHIDP_CAPS caps)) {
    *caps = {};
    caps->InputReportByteLength = s().inputLength;
    caps->OutputReportByteLength = s().inputLength;
    caps->NumberInputValueCaps = s().announcedValues;
    return s().capabilitiesFail ? HIDP_STATUS_INVALID_PREPARSED_DATA : HIDP_STATUS_SUCCESS;
}

STAND_IN(NTSTATUS, HidP_GetSpecificValueCaps,
         (HIDP_REPORT_TYPE, USAGE, USHORT, USAGE, PHIDP_VALUE_CAPS records, PUSHORT count,
          PHIDP_PREPARSED_DATA)) {
    if (s().valueQueryFails)
        return HIDP_STATUS_USAGE_NOT_FOUND;
    for (uint16_t i = 0; i < std::min<uint16_t>(*count, s().givenValues); ++i)
        records[i].ReportID = static_cast<UCHAR>(i + 1 == s().givenValues ? s().reportId : 0xFF);
    *count = s().givenValues;
    return HIDP_STATUS_SUCCESS;
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
