#include "hid/HidSearch.h"

#include "hid/HidHandles.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace HidSearch {

namespace {

// Entries that cannot be read are passed over; a list with this many in a row has no end of its own.
constexpr uint32_t kMostUnreadableEntries = 1000;

GUID hidGuid() {
    GUID guid{};
    HidD_GetHidGuid(&guid);
    return guid;
}

UniqueDeviceInfoList presentDevices(const GUID &guid) {
    return UniqueDeviceInfoList(
        SetupDiGetClassDevsW(&guid, nullptr, nullptr, DIGCF_PRESENT | DIGCF_DEVICEINTERFACE));
}

std::optional<std::wstring> interfacePath(HDEVINFO devices, const GUID &guid, uint32_t index) {
    SP_DEVICE_INTERFACE_DATA interfaceData{};
    interfaceData.cbSize = sizeof interfaceData;
    if (!SetupDiEnumDeviceInterfaces(devices, nullptr, &guid, index, &interfaceData))
        return {};

    DWORD size = 0;
    SetupDiGetDeviceInterfaceDetailW(devices, &interfaceData, nullptr, 0, &size, nullptr);
    if (size < sizeof(SP_DEVICE_INTERFACE_DETAIL_DATA_W))
        return {};
    std::vector<std::byte> buffer(size);
    auto *detail = reinterpret_cast<SP_DEVICE_INTERFACE_DETAIL_DATA_W *>(buffer.data());
    detail->cbSize = sizeof(SP_DEVICE_INTERFACE_DETAIL_DATA_W);
    if (!SetupDiGetDeviceInterfaceDetailW(devices, &interfaceData, detail, size, nullptr, nullptr))
        return {};
    return std::wstring(detail->DevicePath);
}

template<typename Capability>
using CapabilityQuery = NTSTATUS(WINAPI *)(HIDP_REPORT_TYPE, USAGE, USHORT, USAGE, Capability *, PUSHORT,
                                           PHIDP_PREPARSED_DATA);

// count: how many records of this kind the device announces. reportId is not 0, which marks records that the
// answer leaves out.
template<typename Capability>
bool listHasReportId(CapabilityQuery<Capability> query, HIDP_REPORT_TYPE type, USHORT count,
                     PHIDP_PREPARSED_DATA preparsed, uint16_t reportId) {
    if (count == 0)
        return false;
    std::vector<Capability> records(count);
    if (query(type, 0, 0, 0, records.data(), &count, preparsed) != HIDP_STATUS_SUCCESS)
        return false;
    return std::any_of(records.begin(), records.end(),
                       [=](const Capability &record) { return record.ReportID == reportId; });
}

} // namespace

uint32_t presentDeviceCount() {
    const UniqueDeviceInfoList devices = presentDevices(hidGuid());
    if (!devices)
        return 0;
    uint32_t count = 0;
    uint32_t unreadable = 0;
    for (uint32_t index = 0; unreadable < kMostUnreadableEntries; ++index) {
        SP_DEVINFO_DATA device{};
        device.cbSize = sizeof device;
        if (SetupDiEnumDeviceInfo(devices.get(), index, &device)) {
            ++count;
            unreadable = 0;
        } else if (GetLastError() == ERROR_NO_MORE_ITEMS) {
            break;
        } else {
            ++unreadable;
        }
    }
    return count;
}

UniqueFileHandle openPath(const std::wstring &path) {
    return UniqueFileHandle(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                        FILE_FLAG_OVERLAPPED, nullptr));
}

IndexedDevice openByIndex(uint32_t index) {
    const GUID guid = hidGuid();
    const UniqueDeviceInfoList devices = presentDevices(guid);
    IndexedDevice device{interfacePath(devices.get(), guid, index), {}};
    if (device.path)
        device.handle = openPath(*device.path);
    return device;
}

bool hasReportId(HANDLE device, uint16_t reportId) {
    if (!device || device == INVALID_HANDLE_VALUE)
        return false;
    UniquePreparsedData preparsed;
    HIDP_CAPS caps{};
    if (!HidD_GetPreparsedData(device, preparsed.put()) ||
        HidP_GetCaps(preparsed.get(), &caps) != HIDP_STATUS_SUCCESS)
        return false;
    if (reportId == 0)
        return true;

    const auto inButtons = [&](HIDP_REPORT_TYPE type, USHORT count) {
        return listHasReportId<HIDP_BUTTON_CAPS>(HidP_GetSpecificButtonCaps, type, count, preparsed.get(),
                                                 reportId);
    };
    const auto inValues = [&](HIDP_REPORT_TYPE type, USHORT count) {
        return listHasReportId<HIDP_VALUE_CAPS>(HidP_GetSpecificValueCaps, type, count, preparsed.get(),
                                                reportId);
    };
    return inButtons(HidP_Input, caps.NumberInputButtonCaps) ||
           inValues(HidP_Input, caps.NumberInputValueCaps) ||
           inButtons(HidP_Output, caps.NumberOutputButtonCaps) ||
           inValues(HidP_Output, caps.NumberOutputValueCaps) ||
           inButtons(HidP_Feature, caps.NumberFeatureButtonCaps) ||
           inValues(HidP_Feature, caps.NumberFeatureValueCaps);
}

} // namespace HidSearch
