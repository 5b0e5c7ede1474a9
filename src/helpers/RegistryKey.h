// Splitting and opening of key paths, shared by the files of the registry layer.
#pragma once

#include "helpers/WinHandles.h"

#include <string>

namespace Registry {

struct KeyPath {
    HKEY root;
    std::wstring subKey; // may be empty: the root itself
};

// Throws RegistryException when there is no backslash or the root name is unknown.
KeyPath splitKeyPath(const std::wstring &keyPath);

// Opens in the 64-bit view; throws RegistryException with the system's message.
UniqueRegistryKey openKey(const std::wstring &keyPath, REGSAM access);

// Throws RegistryException "<what> <path>: <system message>".
[[noreturn]] void fail(const std::wstring &what, const std::wstring &path, LSTATUS status);

} // namespace Registry
