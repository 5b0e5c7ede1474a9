#include "hid/VirtualHid.h"

#include "helpers/UniqueResource.h"

#include <algorithm>
#include <stdexcept>

namespace {

constexpr wchar_t kRootKey[] = L"System\\CurrentControlSet\\Enum\\ROOT";
constexpr wchar_t kInstance[] = L"7&1A2B3C4D&0&0000";
constexpr DWORD kReenumerateRootDevices = 128; // control code of Wine's driver services
constexpr unsigned kArrivalTimeoutMs = 5000;

struct ServiceTraits {
    using Type = SC_HANDLE;
    static Type empty() noexcept { return nullptr; }
    static void release(Type handle) noexcept { CloseServiceHandle(handle); }
};
using UniqueService = UniqueResource<ServiceTraits>;

void require(bool ok, const char *what) {
    if (!ok)
        throw std::runtime_error(std::string(what) + ": error " + std::to_string(GetLastError()));
}

std::wstring driverPath() {
    const std::string path = VHID_DRIVER_FILE; // a Unix path, Wine's drive Z
    std::wstring result = L"Z:" + std::wstring(path.begin(), path.end());
    std::replace(result.begin(), result.end(), L'/', L'\\');
    return result;
}

UniqueService openDriverService() {
    const UniqueService manager(OpenSCManagerW(nullptr, nullptr, SC_MANAGER_ALL_ACCESS));
    require(static_cast<bool>(manager), "service manager");
    UniqueService service(CreateServiceW(manager.get(), L"vhid", L"vhid", SERVICE_ALL_ACCESS,
                                         SERVICE_KERNEL_DRIVER, SERVICE_DEMAND_START, SERVICE_ERROR_NORMAL,
                                         driverPath().c_str(), nullptr, nullptr, nullptr, nullptr, nullptr));
    if (!service)
        service.reset(OpenServiceW(manager.get(), L"vhid", SERVICE_ALL_ACCESS));
    require(static_cast<bool>(service), "driver service");
    return service;
}

void setText(HKEY key, const wchar_t *name, const std::wstring &text, DWORD type = REG_SZ) {
    // One zero more than the text has, two for a list of one text.
    const std::wstring value = type == REG_MULTI_SZ ? text + L'\0' : text;
    RegSetValueExW(key, name, 0, type, reinterpret_cast<const BYTE *>(value.c_str()),
                   static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

std::wstring interfacePath(const std::wstring &id) {
    std::wstring path = L"\\\\?\\hid#" + id + L"#" + kInstance + L"#{4d1e55b2-f16f-11cf-88cb-001111000030}";
    std::transform(path.begin(), path.end(), path.begin(), towlower);
    return path;
}

UniqueFileHandle openDevice(const std::wstring &path) {
    return UniqueFileHandle(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                                        nullptr));
}

template<typename Condition>
bool waitUntil(unsigned timeoutMs, Condition condition) {
    const DWORD start = GetTickCount();
    while (!condition()) {
        if (GetTickCount() - start >= timeoutMs)
            return false;
        Sleep(2);
    }
    return true;
}

} // namespace

VirtualHid::VirtualHid() {
    const UniqueService service = openDriverService();
    require(StartServiceW(service.get(), 0, nullptr) || GetLastError() == ERROR_SERVICE_ALREADY_RUNNING,
            "start of the driver");
    waitUntil(kArrivalTimeoutMs, [this] {
        control_ = openDevice(L"\\\\.\\VHidCtl");
        return static_cast<bool>(control_);
    });
    require(static_cast<bool>(control_), "control device");
}

void VirtualHid::reenumerate() {
    SERVICE_STATUS status;
    require(ControlService(openDriverService().get(), kReenumerateRootDevices, &status), "enumeration");
}

void VirtualHid::unplugAll() {
    send(VHID_IOCTL_RESET, nullptr, 0);
    UniqueRegistryKey root;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kRootKey, 0, KEY_ALL_ACCESS, root.put()) != ERROR_SUCCESS)
        return;
    std::vector<std::wstring> ids;
    wchar_t name[256];
    for (DWORD index = 0; RegEnumKeyW(root.get(), index, name, 256) == ERROR_SUCCESS; ++index) {
        if (std::wstring(name).compare(0, 4, L"VID_") == 0)
            ids.emplace_back(name);
    }
    for (const std::wstring &id : ids)
        RegDeleteTreeW(root.get(), id.c_str());
    reenumerate();
    send(VHID_IOCTL_RESET, nullptr, 0);
}

std::wstring VirtualHid::plug(const std::wstring &id) {
    UniqueRegistryKey key;
    const std::wstring keyPath = std::wstring(kRootKey) + L"\\" + id + L"\\" + kInstance;
    const LSTATUS created = RegCreateKeyExW(HKEY_LOCAL_MACHINE, keyPath.c_str(), 0, nullptr, 0,
                                            KEY_ALL_ACCESS, nullptr, key.put(), nullptr);
    SetLastError(static_cast<DWORD>(created));
    require(created == ERROR_SUCCESS, "device key");
    setText(key.get(), L"ClassGUID", L"{745A17A0-74D3-11D0-B6FE-00A0C90F57DA}");
    setText(key.get(), L"Class", L"HIDClass");
    setText(key.get(), L"Service", L"vhid");
    setText(key.get(), L"HardwareID", L"ROOT\\" + id, REG_MULTI_SZ);
    reenumerate();
    const std::wstring path = interfacePath(id);
    require(waitUntil(kArrivalTimeoutMs, [&] { return static_cast<bool>(openDevice(path)); }), "arrival");
    return path;
}

void VirtualHid::unplug(const std::wstring &id) {
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, (std::wstring(kRootKey) + L"\\" + id + L"\\" + kInstance).c_str());
    reenumerate();
    const std::wstring path = interfacePath(id);
    require(waitUntil(kArrivalTimeoutMs, [&] { return !openDevice(path); }), "removal");
}

void VirtualHid::input(const Report &report) {
    VhidReport request{};
    request.length = static_cast<ULONG>(std::min(report.size(), sizeof request.bytes));
    std::copy_n(report.begin(), request.length, request.bytes);
    send(VHID_IOCTL_INPUT, &request, sizeof request);
}

VirtualHid::Report VirtualHid::nextWrite(unsigned timeoutMs) {
    VhidReport report{};
    waitUntil(timeoutMs, [&] {
        receive(VHID_IOCTL_NEXT_WRITE, &report, sizeof report);
        return report.length != 0;
    });
    return Report(report.bytes, report.bytes + report.length);
}

void VirtualHid::holdWrites(bool hold) {
    const ULONG request = hold;
    send(VHID_IOCTL_HOLD_WRITES, &request, sizeof request);
}

VhidCounters VirtualHid::counters() {
    VhidCounters result{};
    receive(VHID_IOCTL_COUNTERS, &result, sizeof result);
    return result;
}

ULONG VirtualHid::settledHandles() {
    ULONG handles = 0;
    for (int same = 0; same < 15; ++same) {
        const ULONG now = counters().openHandles;
        if (now != handles)
            same = 0;
        handles = now;
        Sleep(10);
    }
    return handles;
}

bool VirtualHid::waitForMoreHandles(ULONG than) {
    return waitUntil(10000, [&] { return settledHandles() > than; });
}

void VirtualHid::send(DWORD request, const void *input, size_t length) {
    control(request, const_cast<void *>(input), length, nullptr, 0);
}

void VirtualHid::receive(DWORD request, void *output, size_t length) {
    control(request, nullptr, 0, output, length);
}

void VirtualHid::control(DWORD request, void *input, size_t inputLength, void *output, size_t outputLength) {
    DWORD count = 0;
    require(DeviceIoControl(control_.get(), request, input, static_cast<DWORD>(inputLength), output,
                            static_cast<DWORD>(outputLength), &count, nullptr),
            "request");
}
