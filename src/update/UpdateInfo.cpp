#include "update/UpdateInfo.h"

#include <algorithm>
#include <cstdio>

std::string installerEntry(uint32_t crc) {
    char text[32];
    std::snprintf(text, sizeof text, "setup.exe:crc=0x%.8x", crc);
    return text;
}

std::wstring updateInformationText(const void *bytes, size_t count) {
    // As the C run-time's "%S" does in the "C" locale: every byte becomes the character of the same number.
    const auto *start = static_cast<const unsigned char *>(bytes);
    return std::wstring(start, std::find(start, start + count, '\0'));
}

bool listsInstaller(const std::wstring &updateInformation, uint32_t crc) {
    const std::string entry = installerEntry(crc);
    return updateInformation.find(std::wstring(entry.begin(), entry.end())) != std::wstring::npos;
}
