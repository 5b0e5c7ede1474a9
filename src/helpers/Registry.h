// Every registry access of the program. A key is named by its full path ("HKEY_LOCAL_MACHINE\SOFTWARE\...";
// the root name is matched without regard to case); each call opens the key in the 64-bit view, does its one
// thing and closes it. All functions may be called from any thread and throw RegistryException on failure.
#pragma once

#include "helpers/SystemVersion.h"

#include <cstdint>
#include <string>
#include <vector>
#include <windows.h>

// The one error of this layer: the whole message, system text included.
class RegistryException {
public:
    explicit RegistryException(std::wstring text) : message_(std::move(text)) {}
    const std::wstring &message() const noexcept { return message_; }

private:
    std::wstring message_;
};

namespace Registry {

// Throws when the key is missing; false when only the value is.
bool ValueExists(std::wstring keyPath, std::wstring valueName);
// Throws for a malformed path only.
bool KeyExists(std::wstring keyPath);

// Readers throw when the value is missing or has another type.
std::wstring ReadStringValue(std::wstring keyPath, std::wstring valueName);
uint32_t ReadDwordValue(std::wstring keyPath, std::wstring valueName);
std::vector<uint8_t> ReadBinaryValue(std::wstring keyPath, std::wstring valueName);
void ReadBinaryValue(std::wstring keyPath, std::wstring valueName, std::vector<uint8_t> &bytes);
std::vector<std::wstring> ReadMultiStringValue(std::wstring keyPath, std::wstring valueName);

// Writers throw when the key is missing: writing never creates a key.
void WriteDwordValue(std::wstring keyPath, std::wstring valueName, uint32_t value);
void WriteStringValue(std::wstring keyPath, std::wstring valueName, std::wstring value);
void WriteBinaryValue(std::wstring keyPath, std::wstring valueName, const void *bytes, size_t byteCount);
void WriteMultiStringValue(std::wstring keyPath, std::wstring valueName, std::wstring value);
void WriteMultiStringValue(std::wstring keyPath, std::wstring valueName,
                           const std::vector<std::wstring> &values);

// Creates the key and missing parents. Takes ownership of attributes' security descriptor (LocalFree).
void CreateKey(std::wstring keyPath, SECURITY_ATTRIBUTES *attributes = nullptr);
void DeleteValue(std::wstring keyPath, std::wstring valueName);
// The key must have no sub keys.
void DeleteKey(std::wstring keyPath);

// Names in enumeration order; a name of more than 255 characters fails.
std::vector<std::wstring> EnumerateSubKeys(std::wstring keyPath);

struct KeyInfo {
    uint32_t subKeyCount;
    uint32_t valueCount;
};
KeyInfo QueryKeyInfo(std::wstring keyPath);

// Adds full access for BUILTIN\Administrators to the key's DACL, inherited by sub keys. A key without a DACL,
// which everybody may write, stays as it is.
void EnsureWritable(std::wstring keyPath);
// Makes BUILTIN\Administrators the key's owner; needs "SeTakeOwnershipPrivilege".
void TakeOwnership(std::wstring keyPath);

// Access mask that the SID S-1-5-<relativeId> has on a file.
uint32_t GetFileAccess(std::wstring filePath, uint32_t relativeId);

// Writes the key with its values and sub keys as a registry export text file (UTF-16LE).
void ExportKeyToFile(std::wstring keyPath, std::wstring filePath);

// "{6F8E9E8B-...}", in upper case.
std::wstring GuidToString(const GUID &guid);

} // namespace Registry
