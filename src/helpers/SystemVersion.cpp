#include "helpers/SystemVersion.h"

#include <vector>
#include <windows.h>

extern "C" LONG WINAPI RtlGetVersion(OSVERSIONINFOW *version); // of ntdll, declared for drivers only

namespace Registry {

FileVersion GetSystemFileVersion() {
    constexpr wchar_t file[] = L"kernel32.dll";
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeW(file, &ignored);
    std::vector<uint8_t> resource(size);
    VS_FIXEDFILEINFO *info = nullptr;
    UINT length = 0;
    if (size == 0 || !GetFileVersionInfoW(file, 0, size, resource.data()) ||
        !VerQueryValueW(resource.data(), L"\\", reinterpret_cast<void **>(&info), &length) || !info)
        return {};
    return {HIWORD(info->dwFileVersionMS), LOWORD(info->dwFileVersionMS), HIWORD(info->dwFileVersionLS),
            LOWORD(info->dwFileVersionLS)};
}

} // namespace Registry

WindowsVersion runningWindows() {
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    RtlGetVersion(&version);
    return {version.dwMajorVersion, version.dwMinorVersion, version.dwBuildNumber};
}
