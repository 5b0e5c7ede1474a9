#include "helpers/Registry.h"
#include "helpers/UniqueResource.h"

#include <objbase.h>

namespace Registry {

namespace {

struct ComMemoryTraits {
    using Type = void *;
    static Type empty() noexcept { return nullptr; }
    static void release(Type memory) noexcept { CoTaskMemFree(memory); }
};

} // namespace

std::wstring GuidToString(const GUID &guid) {
    wchar_t *text = nullptr;
    const HRESULT result = StringFromCLSID(guid, &text);
    const UniqueResource<ComMemoryTraits> owner(text);
    if (FAILED(result) || !text)
        throw RegistryException(L"Could not convert GUID to string");
    return text;
}

} // namespace Registry
