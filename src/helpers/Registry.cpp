#include "helpers/Registry.h"

#include "helpers/RegistryBytes.h"
#include "helpers/RegistryKey.h"

#include <limits>

namespace Registry {

namespace {

constexpr wchar_t kReading[] = L"Error while reading registry value";
constexpr wchar_t kWriting[] = L"Error while writing to registry value";

std::wstring valuePath(const std::wstring &keyPath, const std::wstring &valueName) {
    return keyPath + L"\\" + valueName;
}

// The value's bytes, after its type was checked. Reads again while another writer makes the value grow, and
// checks the type of what really came.
std::vector<uint8_t> readValue(const std::wstring &keyPath, const std::wstring &valueName, DWORD wantedType) {
    const UniqueRegistryKey key = openKey(keyPath, KEY_QUERY_VALUE);
    const std::wstring path = valuePath(keyPath, valueName);
    const auto query = [&](DWORD &type, BYTE *data, DWORD &size) {
        return RegQueryValueExW(key.get(), valueName.c_str(), nullptr, &type, data, &size);
    };
    const auto requireType = [&](DWORD type) {
        if (type != wantedType)
            throw RegistryException(L"Registry value " + path + L" has wrong type");
    };

    DWORD type = 0;
    DWORD size = 0;
    LSTATUS status = query(type, nullptr, size);
    if (status != ERROR_SUCCESS)
        fail(kReading, path, status);
    requireType(type);

    std::vector<uint8_t> bytes;
    do {
        bytes.resize(size + sizeof(wchar_t)); // room for one more character, and never a null buffer
        size = static_cast<DWORD>(bytes.size());
        status = query(type, bytes.data(), size);
    } while (status == ERROR_MORE_DATA);
    if (status != ERROR_SUCCESS)
        fail(kReading, path, status);
    requireType(type);
    bytes.resize(size);
    return bytes;
}

void writeValue(const std::wstring &keyPath, const std::wstring &valueName, DWORD type, const void *bytes,
                size_t byteCount) {
    const UniqueRegistryKey key = openKey(keyPath, KEY_SET_VALUE);
    LSTATUS status = ERROR_INVALID_PARAMETER;
    if (byteCount <= std::numeric_limits<DWORD>::max()) {
        status = RegSetValueExW(key.get(), valueName.c_str(), 0, type, static_cast<const BYTE *>(bytes),
                                static_cast<DWORD>(byteCount));
    }
    if (status != ERROR_SUCCESS)
        fail(kWriting, valuePath(keyPath, valueName), status);
}

} // namespace

bool ValueExists(std::wstring keyPath, std::wstring valueName) {
    const UniqueRegistryKey key = openKey(keyPath, KEY_QUERY_VALUE);
    return RegQueryValueExW(key.get(), valueName.c_str(), nullptr, nullptr, nullptr, nullptr) ==
           ERROR_SUCCESS;
}

bool KeyExists(std::wstring keyPath) {
    const KeyPath path = splitKeyPath(keyPath);
    UniqueRegistryKey key;
    return RegOpenKeyExW(path.root, path.subKey.c_str(), 0, KEY_QUERY_VALUE | KEY_WOW64_64KEY, key.put()) ==
           ERROR_SUCCESS;
}

std::wstring ReadStringValue(std::wstring keyPath, std::wstring valueName) {
    std::wstring text = charactersOf(readValue(keyPath, valueName, REG_SZ));
    if (!text.empty() && text.back() == L'\0')
        text.pop_back();
    return text;
}

uint32_t ReadDwordValue(std::wstring keyPath, std::wstring valueName) {
    return numberOf(readValue(keyPath, valueName, REG_DWORD));
}

std::vector<uint8_t> ReadBinaryValue(std::wstring keyPath, std::wstring valueName) {
    return readValue(keyPath, valueName, REG_BINARY);
}

void ReadBinaryValue(std::wstring keyPath, std::wstring valueName, std::vector<uint8_t> &bytes) {
    bytes = readValue(keyPath, valueName, REG_BINARY);
}

std::vector<std::wstring> ReadMultiStringValue(std::wstring keyPath, std::wstring valueName) {
    const std::wstring all = charactersOf(readValue(keyPath, valueName, REG_MULTI_SZ));
    std::vector<std::wstring> values;
    for (size_t start = 0; start < all.size();) {
        const size_t end = std::min(all.find(L'\0', start), all.size());
        if (end == start)
            break;
        values.push_back(all.substr(start, end - start));
        start = end + 1;
    }
    return values;
}

void WriteDwordValue(std::wstring keyPath, std::wstring valueName, uint32_t value) {
    writeValue(keyPath, valueName, REG_DWORD, &value, sizeof value);
}

void WriteStringValue(std::wstring keyPath, std::wstring valueName, std::wstring value) {
    writeValue(keyPath, valueName, REG_SZ, value.c_str(), (value.size() + 1) * sizeof(wchar_t));
}

void WriteBinaryValue(std::wstring keyPath, std::wstring valueName, const void *bytes, size_t byteCount) {
    writeValue(keyPath, valueName, REG_BINARY, bytes, byteCount);
}

void WriteMultiStringValue(std::wstring keyPath, std::wstring valueName, std::wstring value) {
    value.append(2, L'\0'); // its own end and the closing empty string
    writeValue(keyPath, valueName, REG_MULTI_SZ, value.data(), value.size() * sizeof(wchar_t));
}

void WriteMultiStringValue(std::wstring keyPath, std::wstring valueName,
                           const std::vector<std::wstring> &values) {
    std::wstring joined;
    for (const std::wstring &value : values)
        joined += value + L'\0';
    joined.append(values.empty() ? 2 : 1, L'\0');
    writeValue(keyPath, valueName, REG_MULTI_SZ, joined.data(), joined.size() * sizeof(wchar_t));
}

void CreateKey(std::wstring keyPath, SECURITY_ATTRIBUTES *attributes) {
    const UniqueLocalMemory descriptor(attributes ? attributes->lpSecurityDescriptor : nullptr);
    const KeyPath path = splitKeyPath(keyPath);
    UniqueRegistryKey key;
    const LSTATUS status =
        RegCreateKeyExW(path.root, path.subKey.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                        KEY_SET_VALUE | KEY_WOW64_64KEY, attributes, key.put(), nullptr);
    if (status != ERROR_SUCCESS)
        fail(L"Error while creating registry key", keyPath, status);
}

void DeleteValue(std::wstring keyPath, std::wstring valueName) {
    const UniqueRegistryKey key = openKey(keyPath, KEY_SET_VALUE);
    const LSTATUS status = RegDeleteValueW(key.get(), valueName.c_str());
    if (status != ERROR_SUCCESS)
        fail(L"Error while deleting registry value", valuePath(keyPath, valueName), status);
}

void DeleteKey(std::wstring keyPath) {
    const KeyPath path = splitKeyPath(keyPath);
    const LSTATUS status = RegDeleteKeyExW(path.root, path.subKey.c_str(), KEY_WOW64_64KEY, 0);
    if (status != ERROR_SUCCESS)
        fail(L"Error while deleting registry key", keyPath, status);
}

std::vector<std::wstring> EnumerateSubKeys(std::wstring keyPath) {
    const UniqueRegistryKey key = openKey(keyPath, KEY_ENUMERATE_SUB_KEYS);
    std::vector<std::wstring> names;
    for (DWORD index = 0;; ++index) {
        wchar_t name[256];
        DWORD length = 256;
        const LSTATUS status =
            RegEnumKeyExW(key.get(), index, name, &length, nullptr, nullptr, nullptr, nullptr);
        if (status == ERROR_NO_MORE_ITEMS)
            return names;
        if (status != ERROR_SUCCESS)
            fail(L"Error while enumerating sub keys of registry key", keyPath, status);
        names.emplace_back(name, length);
    }
}

KeyInfo QueryKeyInfo(std::wstring keyPath) {
    const UniqueRegistryKey key = openKey(keyPath, KEY_QUERY_VALUE);
    DWORD subKeys = 0;
    DWORD values = 0;
    const LSTATUS status = RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, &subKeys, nullptr, nullptr,
                                            &values, nullptr, nullptr, nullptr, nullptr);
    if (status != ERROR_SUCCESS)
        fail(L"Error while reading info for registry key", keyPath, status);
    return {subKeys, values};
}

} // namespace Registry
