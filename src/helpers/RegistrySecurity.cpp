// The parts of the registry layer that change or ask for rights.
#include "helpers/Registry.h"
#include "helpers/RegistryKey.h"

#include <aclapi.h>
#include <authz.h>

namespace Registry {

namespace {

constexpr wchar_t kWritability[] = L"while ensuring writability";
constexpr wchar_t kOwnership[] = L"while taking ownership";
constexpr wchar_t kFileAccess[] = L"while getting file access";

struct AuthzManagerTraits {
    using Type = AUTHZ_RESOURCE_MANAGER_HANDLE;
    static Type empty() noexcept { return nullptr; }
    static void release(Type handle) noexcept { AuthzFreeResourceManager(handle); }
};

struct AuthzContextTraits {
    using Type = AUTHZ_CLIENT_CONTEXT_HANDLE;
    static Type empty() noexcept { return nullptr; }
    static void release(Type handle) noexcept { AuthzFreeContext(handle); }
};

void require(bool succeeded, const wchar_t *step, const wchar_t *doing) {
    if (!succeeded)
        throw RegistryException(std::wstring(L"Error in ") + step + L" " + doing);
}

UniqueSid makeSid(const wchar_t *doing, BYTE count, DWORD first, DWORD second = 0) {
    SID_IDENTIFIER_AUTHORITY authority = SECURITY_NT_AUTHORITY;
    UniqueSid sid;
    require(AllocateAndInitializeSid(&authority, count, first, second, 0, 0, 0, 0, 0, 0, sid.put()),
            L"AllocateAndInitializeSid", doing);
    return sid;
}

UniqueSid administrators(const wchar_t *doing) {
    return makeSid(doing, 2, SECURITY_BUILTIN_DOMAIN_RID, DOMAIN_ALIAS_RID_ADMINS);
}

void setKeySecurity(HKEY key, const std::wstring &keyPath, SECURITY_INFORMATION what,
                    PSECURITY_DESCRIPTOR descriptor) {
    const LSTATUS status = RegSetKeySecurity(key, what, descriptor);
    if (status != ERROR_SUCCESS)
        fail(L"Error while setting security information for registry key", keyPath, status);
}

// The key's security descriptor with its DACL, self-relative.
UniqueLocalMemory readDacl(HKEY key, const std::wstring &keyPath) {
    constexpr wchar_t getting[] = L"Error while getting security information for registry key";
    DWORD size = 0;
    LSTATUS status = RegGetKeySecurity(key, DACL_SECURITY_INFORMATION, nullptr, &size);
    if (status != ERROR_INSUFFICIENT_BUFFER && status != ERROR_SUCCESS)
        fail(getting, keyPath, status);
    UniqueLocalMemory descriptor(LocalAlloc(LPTR, size));
    require(static_cast<bool>(descriptor), L"LocalAlloc", kWritability);
    status = RegGetKeySecurity(key, DACL_SECURITY_INFORMATION, descriptor.get(), &size);
    if (status != ERROR_SUCCESS)
        fail(getting, keyPath, status);
    return descriptor;
}

UniqueLocalMemory freshDescriptor(const wchar_t *doing) {
    UniqueLocalMemory descriptor(LocalAlloc(LPTR, SECURITY_DESCRIPTOR_MIN_LENGTH));
    require(static_cast<bool>(descriptor), L"LocalAlloc", doing);
    require(InitializeSecurityDescriptor(descriptor.get(), SECURITY_DESCRIPTOR_REVISION),
            L"InitializeSecurityDescriptor", doing);
    return descriptor;
}

// Enables the take-ownership privilege of the process for its own life time.
class TakeOwnershipPrivilege {
public:
    TakeOwnershipPrivilege() {
        require(OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, token_.put()),
                L"OpenProcessToken", kOwnership);
        require(LookupPrivilegeValueW(nullptr, L"SeTakeOwnershipPrivilege", &luid_), L"LookupPrivilegeValue",
                kOwnership);
        require(set(SE_PRIVILEGE_ENABLED), L"AdjustTokenPrivileges", kOwnership);
    }
    ~TakeOwnershipPrivilege() {
        if (enabled_)
            set(0);
    }
    // Throws where the destructor could not tell.
    void disable() {
        enabled_ = false;
        require(set(0), L"SetPrivilege", kOwnership);
    }
    TakeOwnershipPrivilege(const TakeOwnershipPrivilege &) = delete;
    TakeOwnershipPrivilege &operator=(const TakeOwnershipPrivilege &) = delete;

private:
    bool set(DWORD attributes) {
        TOKEN_PRIVILEGES privileges{};
        privileges.PrivilegeCount = 1;
        privileges.Privileges[0] = {luid_, attributes};
        // A token without the privilege is a success with ERROR_NOT_ALL_ASSIGNED.
        return AdjustTokenPrivileges(token_.get(), FALSE, &privileges, sizeof privileges, nullptr, nullptr) &&
               GetLastError() == ERROR_SUCCESS;
    }

    UniqueHandle token_;
    LUID luid_{};
    bool enabled_ = true;
};

} // namespace

void EnsureWritable(std::wstring keyPath) {
    const UniqueRegistryKey key = openKey(keyPath, READ_CONTROL | WRITE_DAC);
    const UniqueLocalMemory current = readDacl(key.get(), keyPath);

    BOOL present = FALSE;
    BOOL defaulted = FALSE;
    ACL *oldAcl = nullptr;
    require(GetSecurityDescriptorDacl(current.get(), &present, &oldAcl, &defaulted),
            L"GetSecurityDescriptorDacl", kWritability);
    if (!present || !oldAcl)
        return; // no DACL, or a null one: everybody may do everything, which an entry of its own would end

    const UniqueSid group = administrators(kWritability);
    EXPLICIT_ACCESS_W entry{};
    entry.grfAccessPermissions = KEY_ALL_ACCESS;
    entry.grfAccessMode = SET_ACCESS;
    entry.grfInheritance = CONTAINER_INHERIT_ACE | OBJECT_INHERIT_ACE;
    entry.Trustee.TrusteeForm = TRUSTEE_IS_SID;
    entry.Trustee.TrusteeType = TRUSTEE_IS_GROUP;
    entry.Trustee.ptstrName = static_cast<wchar_t *>(group.get());
    ACL *merged = nullptr;
    const DWORD result = SetEntriesInAclW(1, &entry, oldAcl, &merged);
    const UniqueLocalMemory mergedOwner(merged);
    require(result == ERROR_SUCCESS, L"SetEntriesInAcl", kWritability);

    const UniqueLocalMemory descriptor = freshDescriptor(kWritability);
    require(SetSecurityDescriptorDacl(descriptor.get(), TRUE, merged, FALSE), L"SetSecurityDescriptorDacl",
            kWritability);
    setKeySecurity(key.get(), keyPath, DACL_SECURITY_INFORMATION, descriptor.get());
}

void TakeOwnership(std::wstring keyPath) {
    TakeOwnershipPrivilege privilege;
    const UniqueRegistryKey key = openKey(keyPath, WRITE_OWNER);
    const UniqueLocalMemory descriptor = freshDescriptor(kOwnership);
    const UniqueSid owner = administrators(kOwnership);
    require(SetSecurityDescriptorOwner(descriptor.get(), owner.get(), FALSE), L"SetSecurityDescriptorOwner",
            kOwnership);
    setKeySecurity(key.get(), keyPath, OWNER_SECURITY_INFORMATION, descriptor.get());
    privilege.disable();
}

uint32_t GetFileAccess(std::wstring filePath, uint32_t relativeId) {
    constexpr SECURITY_INFORMATION wanted =
        OWNER_SECURITY_INFORMATION | GROUP_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
    PSECURITY_DESCRIPTOR security = nullptr;
    const DWORD result = GetNamedSecurityInfoW(filePath.c_str(), SE_FILE_OBJECT, wanted, nullptr, nullptr,
                                               nullptr, nullptr, &security);
    const UniqueLocalMemory securityOwner(security);
    require(result == ERROR_SUCCESS, L"GetNamedSecurityInfoW", kFileAccess);

    UniqueResource<AuthzManagerTraits> manager;
    require(AuthzInitializeResourceManager(AUTHZ_RM_FLAG_NO_AUDIT, nullptr, nullptr, nullptr, nullptr,
                                           manager.put()),
            L"AuthzInitializeResourceManager", kFileAccess);

    const UniqueSid sid = makeSid(kFileAccess, 1, relativeId);
    UniqueResource<AuthzContextTraits> context;
    require(
        AuthzInitializeContextFromSid(0, sid.get(), manager.get(), nullptr, LUID{}, nullptr, context.put()),
        L"AuthzInitializeContextFromSid", kFileAccess);

    AUTHZ_ACCESS_REQUEST request{};
    request.DesiredAccess = MAXIMUM_ALLOWED;
    ACCESS_MASK granted = 0;
    DWORD error = 0;
    AUTHZ_ACCESS_REPLY reply{};
    reply.ResultListLength = 1;
    reply.GrantedAccessMask = &granted;
    reply.Error = &error;
    require(AuthzAccessCheck(0, context.get(), &request, nullptr, security, nullptr, 0, &reply, nullptr),
            L"AuthzAccessCheck", kFileAccess);
    return granted;
}

} // namespace Registry
