#include "app/StartUp.h"

#include "device/DeviceApi.h"
#include "helpers/LogHelper.h"
#include "helpers/MessageBoxes.h"
#include "helpers/ProductSettings.h"
#include "helpers/SystemVersion.h"
#include "window/InstanceOrder.h"

namespace StartUp {

namespace {

constexpr wchar_t kInstanceMutex[] = L"Global\\{45A8C662-65D7-4679-801E-604A2DF76732}";
constexpr DWORD kHandoverMs = 1000; // the running instance polls every 100 ms

} // namespace

Ending ensureElevated() {
    if (DeviceApi::isElevated())
        return std::nullopt;
    return DeviceApi::restartElevated() ? 1 : -1;
}

void logVersions() {
    const WindowsVersion windows = runningWindows();
    QOR_LOG(L"QorSound Kit %S on Windows %u.%u.%u", QOR_VERSION, windows.major, windows.minor, windows.build);
}

bool takeOverFromRunningInstance() {
    if (!DeviceApi::anotherInstanceRuns(kInstanceMutex))
        return false;
    ProductSettings::writeDword(ProductSettings::kExitRequest, 1);
    InstanceOrder::askForPlace();
    Sleep(kHandoverMs);
    return true;
}

Ending requireDevice() {
    if (DeviceApi::deviceCount() >= 1)
        return std::nullopt;
    // The two leading blanks belong to the text.
    ShowMessageByLocale(L"Can't connect to device", L"  找不到设备", L"温馨提示", MB_OK);
    InstanceOrder::withdraw();
    ProductSettings::takeExitRequest();
    return 0;
}

} // namespace StartUp
