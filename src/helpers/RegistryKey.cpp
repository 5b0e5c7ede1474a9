#include "helpers/RegistryKey.h"

#include "helpers/Registry.h"
#include "helpers/SystemMessage.h"

#include <cwctype>

namespace Registry {

namespace {

struct RootName {
    const wchar_t *name;
    HKEY key;
};

const RootName kRoots[] = {
    {L"HKEY_CLASSES_ROOT", HKEY_CLASSES_ROOT},
    {L"HKEY_CURRENT_CONFIG", HKEY_CURRENT_CONFIG},
    {L"HKEY_CURRENT_USER", HKEY_CURRENT_USER},
    {L"HKEY_LOCAL_MACHINE", HKEY_LOCAL_MACHINE},
    {L"HKEY_USERS", HKEY_USERS},
};

HKEY rootByName(const std::wstring &name) {
    std::wstring upper = name;
    for (wchar_t &c : upper)
        c = static_cast<wchar_t>(std::towupper(c));
    for (const RootName &root : kRoots) {
        if (upper == root.name)
            return root.key;
    }
    throw RegistryException(L"Unknown root key " + name);
}

} // namespace

KeyPath splitKeyPath(const std::wstring &keyPath) {
    const size_t backslash = keyPath.find(L'\\');
    if (backslash == std::wstring::npos)
        throw RegistryException(L"Key " + keyPath + L" has invalid format");
    return {rootByName(keyPath.substr(0, backslash)), keyPath.substr(backslash + 1)};
}

UniqueRegistryKey openKey(const std::wstring &keyPath, REGSAM access) {
    const KeyPath path = splitKeyPath(keyPath);
    UniqueRegistryKey key;
    const LSTATUS status =
        RegOpenKeyExW(path.root, path.subKey.c_str(), 0, access | KEY_WOW64_64KEY, key.put());
    if (status != ERROR_SUCCESS)
        fail(L"Error while opening registry key", keyPath, status);
    return key;
}

void fail(const std::wstring &what, const std::wstring &path, LSTATUS status) {
    throw RegistryException(what + L" " + path + L": " + SystemMessage(static_cast<DWORD>(status)));
}

} // namespace Registry
