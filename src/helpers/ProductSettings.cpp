#include "helpers/ProductSettings.h"

#include "helpers/LogHelper.h"
#include "helpers/Registry.h"

#include <mutex>
#include <new>
#include <set>

namespace ProductSettings {

namespace {

// Each failure is logged once: some values are read ten times a second.
void logOnce(const std::wstring &message) {
    static std::mutex mutex;
    static std::set<std::wstring> logged;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (!logged.insert(message).second)
            return;
    }
    QOR_LOG(L"%s", message.c_str());
}

// Runs a registry operation; a failure is logged and gives `otherwise`.
template<typename Operation, typename Result>
Result logged(Operation operation, Result otherwise) {
    try {
        return operation();
    } catch (const RegistryException &error) {
        logOnce(error.message());
    } catch (const std::bad_alloc &) {
        // Out of memory: the value counts as missing; there is no room for a log line either.
    }
    return otherwise;
}

// A missing key means that every value is missing. It is looked for last, since one value is read ten times a
// second.
bool exists(const wchar_t *key, const wchar_t *name) {
    try {
        return Registry::ValueExists(key, name);
    } catch (const RegistryException &) {
        if (Registry::KeyExists(key))
            throw;
        return false;
    }
}

template<typename Value>
std::optional<Value> readExisting(const wchar_t *key, const wchar_t *name,
                                  Value (*read)(std::wstring, std::wstring)) {
    return logged(
        [&]() -> std::optional<Value> {
            if (!exists(key, name))
                return std::nullopt;
            return read(key, name);
        },
        std::optional<Value>());
}

} // namespace

std::optional<uint32_t> readDword(const wchar_t *name, const wchar_t *key) {
    return readExisting<uint32_t>(key, name, &Registry::ReadDwordValue);
}

std::optional<std::wstring> readString(const wchar_t *name) {
    return readExisting<std::wstring>(kProductKey, name, &Registry::ReadStringValue);
}

bool writeDword(const wchar_t *name, uint32_t value, const wchar_t *key) {
    return logged(
        [&] {
            Registry::WriteDwordValue(key, name, value);
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

bool takeExitRequest() {
    if (readDword(kExitRequest).value_or(0) == 0)
        return false;
    writeDword(kExitRequest, 0);
    return true;
}

std::wstring productDisplayName() {
    return readString(L"DisplayName").value_or(L"QorSound Kit");
}

} // namespace ProductSettings
