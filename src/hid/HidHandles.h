// Windows' HID and SetupAPI headers, and owners of what these functions give out.
#pragma once

#include "helpers/UniqueResource.h"

#include <windows.h>

#include <setupapi.h>

extern "C" { // mingw-w64's HID headers declare no linkage
#include <hidsdi.h>
}

struct DeviceInfoListTraits {
    using Type = HDEVINFO;
    static Type empty() noexcept { return INVALID_HANDLE_VALUE; }
    static void release(Type list) noexcept { SetupDiDestroyDeviceInfoList(list); }
};
using UniqueDeviceInfoList = UniqueResource<DeviceInfoListTraits>;

struct PreparsedDataTraits {
    using Type = PHIDP_PREPARSED_DATA;
    static Type empty() noexcept { return nullptr; }
    static void release(Type data) noexcept { HidD_FreePreparsedData(data); }
};
using UniquePreparsedData = UniqueResource<PreparsedDataTraits>;
