#include "app/StartUp.h"

#include "device/DeviceApi.h"
#include "helpers/MessageBoxes.h"
#include "helpers/ProductSettings.h"

namespace StartUp {

namespace {

constexpr wchar_t kInstanceMutex[] = L"Global\\{45A8C662-65D7-4679-801E-604A2DF76732}";
constexpr wchar_t kExitRequest[] = L"exitCmd"; // the running instance polls it every 100 ms
constexpr DWORD kHandoverMs = 1000;

} // namespace

Ending ensureElevated() {
    if (DeviceApi::isElevated())
        return std::nullopt;
    return DeviceApi::restartElevated() ? 1 : -1;
}

void takeOverFromRunningInstance() {
    if (!DeviceApi::anotherInstanceRuns(kInstanceMutex))
        return;
    ProductSettings::writeDword(kExitRequest, 1);
    Sleep(kHandoverMs);
}

Ending requireDevice() {
    if (DeviceApi::deviceCount() >= 1)
        return std::nullopt;
    // The two leading blanks belong to the text.
    ShowMessageByLocale(L"Can't connect to device", L"  找不到设备", L"温馨提示", MB_OK);
    if (ProductSettings::readDword(kExitRequest).value_or(0) != 0)
        ProductSettings::writeDword(kExitRequest, 0);
    return 0;
}

} // namespace StartUp
