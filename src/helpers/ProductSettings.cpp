#include "helpers/ProductSettings.h"

#include "helpers/LogHelper.h"
#include "helpers/Registry.h"

#include <exception>

namespace ProductSettings {

namespace {

// Runs a registry operation; a failure is logged and gives `otherwise`.
template <typename Operation, typename Result>
Result logged(Operation operation, Result otherwise) {
    try {
        return operation();
    } catch (const RegistryException &error) {
        QOR_LOG(L"%s", error.message().c_str());
    } catch (const std::exception &error) {
        QOR_LOG(L"%S", error.what());
    }
    return otherwise;
}

bool exists(const wchar_t *name) {
    return Registry::KeyExists(kProductKey) && Registry::ValueExists(kProductKey, name);
}

template <typename Value>
std::optional<Value> readExisting(const wchar_t *name, Value (*read)(std::wstring, std::wstring)) {
    return logged(
        [&]() -> std::optional<Value> {
            if (!exists(name))
                return std::nullopt;
            return read(kProductKey, name);
        },
        std::optional<Value>());
}

} // namespace

std::optional<uint32_t> readDword(const wchar_t *name) {
    return readExisting<uint32_t>(name, &Registry::ReadDwordValue);
}

std::optional<std::wstring> readString(const wchar_t *name) {
    return readExisting<std::wstring>(name, &Registry::ReadStringValue);
}

bool writeDword(const wchar_t *name, uint32_t value) {
    return logged(
        [&] {
            Registry::WriteDwordValue(kProductKey, name, value);
            return true;
        },
        false);
}

bool writeBinary(const wchar_t *name, const void *bytes, size_t byteCount) {
    return logged(
        [&] {
            Registry::WriteBinaryValue(kProductKey, name, bytes, byteCount);
            return true;
        },
        false);
}

std::wstring productDisplayName() {
    return readString(L"DisplayName").value_or(L"QorSound Kit");
}

} // namespace ProductSettings
