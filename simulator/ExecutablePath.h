// Where the program that loaded the library stands.
#pragma once

#include <string>
#include <windows.h>

inline std::wstring executablePath() {
    std::wstring path(32768, L'\0'); // the longest path that Windows knows
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}
