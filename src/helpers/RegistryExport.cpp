// Reading a whole key into a text file.
#include "helpers/Registry.h"
#include "helpers/RegistryBytes.h"
#include "helpers/RegistryKey.h"
#include "helpers/WinHandles.h"

#include <cwchar>

namespace Registry {

namespace {

std::wstring quoted(const std::wstring &text) {
    std::wstring result = L"\"";
    for (const wchar_t c : text) {
        if (c == L'"' || c == L'\\')
            result += L'\\';
        result += c;
    }
    return result + L"\"";
}

std::wstring hexBytes(const std::vector<uint8_t> &bytes) {
    std::wstring result;
    for (const uint8_t byte : bytes) {
        wchar_t text[4];
        std::swprintf(text, 4, result.empty() ? L"%02x" : L",%02x", byte);
        result += text;
    }
    return result;
}

std::wstring valueText(DWORD type, const std::vector<uint8_t> &bytes) {
    if (type == REG_SZ && bytes.size() % 2 == 0) {
        std::wstring text = charactersOf(bytes);
        while (!text.empty() && text.back() == L'\0')
            text.pop_back();
        return quoted(text);
    }
    wchar_t prefix[32];
    if (type == REG_DWORD && bytes.size() == 4) {
        std::swprintf(prefix, 32, L"dword:%08x", numberOf(bytes));
        return prefix;
    }
    if (type == REG_BINARY)
        return L"hex:" + hexBytes(bytes);
    std::swprintf(prefix, 32, L"hex(%x):", static_cast<unsigned>(type));
    return prefix + hexBytes(bytes);
}

std::wstring valuesText(HKEY key, const std::wstring &keyPath) {
    constexpr wchar_t reading[] = L"Error while reading info for registry key";
    DWORD longestName = 0;
    DWORD longestData = 0;
    LSTATUS status = RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                      &longestName, &longestData, nullptr, nullptr);
    if (status != ERROR_SUCCESS)
        fail(reading, keyPath, status);

    std::wstring text;
    std::vector<wchar_t> name(longestName + 1);
    for (DWORD index = 0;; ++index) {
        std::vector<uint8_t> bytes(longestData + 1);
        DWORD nameLength = longestName + 1;
        DWORD size = static_cast<DWORD>(bytes.size());
        DWORD type = 0;
        status = RegEnumValueW(key, index, name.data(), &nameLength, nullptr, &type, bytes.data(), &size);
        if (status == ERROR_NO_MORE_ITEMS)
            return text;
        if (status != ERROR_SUCCESS)
            fail(reading, keyPath, status);
        bytes.resize(size);
        const std::wstring label = nameLength == 0 ? L"@" : quoted(std::wstring(name.data(), nameLength));
        text += label + L"=" + valueText(type, bytes) + L"\r\n";
    }
}

std::wstring keyText(const std::wstring &keyPath) {
    std::wstring text = L"\r\n[" + keyPath + L"]\r\n";
    text += valuesText(openKey(keyPath, KEY_QUERY_VALUE).get(), keyPath);
    for (const std::wstring &name : EnumerateSubKeys(keyPath))
        text += keyText(std::wstring(keyPath).append(L"\\").append(name));
    return text;
}

} // namespace

void ExportKeyToFile(std::wstring keyPath, std::wstring filePath) {
    const std::wstring text = L"\xFEFFWindows Registry Editor Version 5.00\r\n" + keyText(keyPath);
    const UniqueFileHandle file(CreateFileW(filePath.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                            FILE_ATTRIBUTE_NORMAL, nullptr));
    DWORD written = 0;
    if (!file || !WriteFile(file.get(), text.data(), static_cast<DWORD>(text.size() * sizeof(wchar_t)),
                            &written, nullptr))
        throw RegistryException(L"Error while opening file " + filePath + L" for writing");
}

} // namespace Registry
