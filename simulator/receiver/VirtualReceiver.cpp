#include "simulator/receiver/VirtualReceiver.h"

#include "helpers/UniqueResource.h"
#include "hid/HidHandles.h"
#include "simulator/WaitUntil.h"

#include <algorithm>
#include <stdexcept>

namespace {

constexpr wchar_t kRootKey[] = L"System\\CurrentControlSet\\Enum\\ROOT\\";
constexpr wchar_t kInstance[] = L"7&1A2B3C4D&0&0000";
constexpr wchar_t kServiceName[] = L"QorSoundKitReceiver";
constexpr DWORD kReenumerateRootDevices = 128; // control code of Wine's driver services
constexpr unsigned kArrivalTimeoutMs = 30000;  // a busy machine takes its time
constexpr uint8_t kControlReportId = 3;        // see driver/driver.c
constexpr size_t kReportSize = 65;

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
    const std::string path = RECEIVER_DRIVER_FILE; // a Unix path, Wine's drive Z
    std::wstring result = L"Z:" + std::wstring(path.begin(), path.end());
    std::replace(result.begin(), result.end(), L'/', L'\\');
    return result;
}

UniqueService openDriverService() {
    const UniqueService manager(OpenSCManagerW(nullptr, nullptr, SC_MANAGER_ALL_ACCESS));
    require(static_cast<bool>(manager), "service manager");
    const std::wstring file = driverPath();
    UniqueService service(CreateServiceW(manager.get(), kServiceName, kServiceName, SERVICE_ALL_ACCESS,
                                         SERVICE_KERNEL_DRIVER, SERVICE_DEMAND_START, SERVICE_ERROR_NORMAL,
                                         file.c_str(), nullptr, nullptr, nullptr, nullptr, nullptr));
    if (!service) {
        service.reset(OpenServiceW(manager.get(), kServiceName, SERVICE_ALL_ACCESS));
        require(static_cast<bool>(service), "driver service");
        // Another build may have made it.
        ChangeServiceConfigW(service.get(), SERVICE_NO_CHANGE, SERVICE_NO_CHANGE, SERVICE_NO_CHANGE,
                             file.c_str(), nullptr, nullptr, nullptr, nullptr, nullptr, nullptr);
    }
    return service;
}

// Wine's driver services take and give up devices as the registry lists them.
void reenumerate() {
    const UniqueService service = openDriverService();
    require(StartServiceW(service.get(), 0, nullptr) || GetLastError() == ERROR_SERVICE_ALREADY_RUNNING,
            "start of the driver");
    SERVICE_STATUS status;
    require(ControlService(service.get(), kReenumerateRootDevices, &status), "enumeration");
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

} // namespace

bool VirtualReceiver::isSupported() {
    return GetProcAddress(GetModuleHandleW(L"ntdll"), "wine_get_version") != nullptr;
}

VirtualReceiver::VirtualReceiver(std::wstring id)
    : id_(std::move(id)), path_(interfacePath(id_)), control_(openDevice(path_)) {}

void VirtualReceiver::plug() {
    UniqueRegistryKey key;
    const LSTATUS created = RegCreateKeyExW(HKEY_LOCAL_MACHINE, (kRootKey + id_ + L"\\" + kInstance).c_str(),
                                            0, nullptr, 0, KEY_ALL_ACCESS, nullptr, key.put(), nullptr);
    SetLastError(static_cast<DWORD>(created));
    require(created == ERROR_SUCCESS, "device key");
    setText(key.get(), L"ClassGUID", L"{745A17A0-74D3-11D0-B6FE-00A0C90F57DA}");
    setText(key.get(), L"Class", L"HIDClass");
    setText(key.get(), L"Service", kServiceName);
    setText(key.get(), L"HardwareID", L"ROOT\\" + id_, REG_MULTI_SZ);
    reenumerate();
    const auto hasArrived = [this] { return static_cast<bool>(control_ = openDevice(path_)); };
    require(waitUntil(hasArrived, kArrivalTimeoutMs), "arrival");
}

void VirtualReceiver::unplug() {
    control_.reset();
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, (kRootKey + id_).c_str());
    reenumerate();
    require(waitUntil([this] { return !openDevice(path_); }, kArrivalTimeoutMs), "removal");
}

VirtualReceiver::Report VirtualReceiver::keyEvent(uint8_t state) {
    Report report{2, 0xFF, 0xFF, 0xFF, 0xFF, 0x01, state};
    report.resize(kReportSize);
    return report;
}

std::optional<uint8_t> VirtualReceiver::pressKey(unsigned timeoutMs) {
    while (!nextWrite(0).empty()) {
    } // answers to earlier presses
    input(keyEvent());
    const Report answer = nextWrite(timeoutMs);
    return answer.empty() ? std::nullopt : std::optional(answer[6]);
}

void VirtualReceiver::input(const Report &report) {
    Report request(1 + kReportSize);
    request[0] = kControlReportId;
    std::copy_n(report.begin(), kReportSize, request.begin() + 1);
    require(HidD_SetFeature(control_.get(), request.data(), static_cast<ULONG>(request.size())), "input");
    // This handle gets every report, too: once it has it, so have the others.
    DWORD count = 0;
    require(ReadFile(control_.get(), request.data(), static_cast<DWORD>(kReportSize), &count, nullptr),
            "input passed on");
}

VirtualReceiver::Report VirtualReceiver::nextWrite(unsigned timeoutMs) {
    Report answer(1 + kReportSize);
    const auto hasCome = [&] {
        answer[0] = kControlReportId;
        require(HidD_GetFeature(control_.get(), answer.data(), static_cast<ULONG>(answer.size())),
                "written report");
        return answer[1] != 0;
    };
    return waitUntil(hasCome, timeoutMs) ? Report(answer.begin() + 1, answer.end()) : Report();
}
