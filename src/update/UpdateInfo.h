// "qor_updateinfo.dat": the text on the server that lists the CRC of every acceptable installer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// "setup.exe:crc=0x0123abcd".
std::string installerEntry(uint32_t crc);

// The downloaded bytes up to the first NUL.
std::wstring updateInformationText(const void *bytes, size_t count);

// Whether the text holds the installer's entry, wherever it stands.
bool listsInstaller(const std::wstring &updateInformation, uint32_t crc);
