#include "simulator/Knobs.h"

#include "helpers/WinHandles.h"

#include <algorithm>
#include <vector>

namespace {

bool writeValue(const wchar_t *name, DWORD type, const void *bytes, size_t byteCount) {
    UniqueRegistryKey key;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, Knobs::kKey, 0, nullptr, 0, KEY_SET_VALUE, nullptr, key.put(),
                        nullptr) != ERROR_SUCCESS)
        return false;
    return RegSetValueExW(key.get(), name, 0, type, static_cast<const BYTE *>(bytes),
                          static_cast<DWORD>(byteCount)) == ERROR_SUCCESS;
}

} // namespace

namespace Knobs {

std::optional<uint32_t> number(const wchar_t *name) {
    uint32_t value = 0;
    DWORD size = sizeof value;
    if (RegGetValueW(HKEY_CURRENT_USER, kKey, name, RRF_RT_REG_DWORD, nullptr, &value, &size) !=
        ERROR_SUCCESS)
        return std::nullopt;
    return value;
}

uint32_t number(const wchar_t *name, uint32_t missing) {
    return number(name).value_or(missing);
}

int32_t signedNumber(const wchar_t *name, int32_t missing) {
    return static_cast<int32_t>(number(name, static_cast<uint32_t>(missing)));
}

std::wstring text(const wchar_t *name) {
    DWORD size = 0;
    if (RegGetValueW(HKEY_CURRENT_USER, kKey, name, RRF_RT_REG_SZ, nullptr, nullptr, &size) != ERROR_SUCCESS)
        return {};
    std::vector<wchar_t> buffer(size / sizeof(wchar_t) +
                                1); // one more than asked for, so that it ends in zero
    if (RegGetValueW(HKEY_CURRENT_USER, kKey, name, RRF_RT_REG_SZ, nullptr, buffer.data(), &size) !=
        ERROR_SUCCESS)
        return {};
    return buffer.data();
}

bool readBytes(const wchar_t *name, void *bytes, size_t byteCount) {
    std::vector<uint8_t> stored(byteCount);
    DWORD size = static_cast<DWORD>(byteCount);
    if (RegGetValueW(HKEY_CURRENT_USER, kKey, name, RRF_RT_REG_BINARY, nullptr, stored.data(), &size) !=
            ERROR_SUCCESS ||
        size != byteCount)
        return false;
    std::copy(stored.begin(), stored.end(), static_cast<uint8_t *>(bytes));
    return true;
}

bool writeNumber(const wchar_t *name, uint32_t value) {
    return writeValue(name, REG_DWORD, &value, sizeof value);
}

bool writeBytes(const wchar_t *name, const void *bytes, size_t byteCount) {
    return writeValue(name, REG_BINARY, bytes, byteCount);
}

void forgetAll() {
    RegDeleteTreeW(HKEY_CURRENT_USER, kKey);
}

} // namespace Knobs
