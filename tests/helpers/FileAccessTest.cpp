// GetFileAccess on stand-ins for the Authz functions, which are stubs in Wine. Linked before the import
// library, they define both the function and its import pointer, so that nothing of that library is taken.
#include "helpers/Registry.h"

#include <authz.h>
#include <gtest/gtest.h>

namespace {

enum Step { None, Manager, Context, Check };

struct Authz {
    Step failAt = None;
    int open = 0; // handles given out and not yet freed
    DWORD managerFlags = 0, subAuthority = 0, desired = 0;

    // The result of a step that gives out a handle.
    template<typename Handle>
    BOOL give(Step step, Handle *handle) {
        if (failAt == step)
            return FALSE;
        *handle = reinterpret_cast<Handle>(this);
        ++open;
        return TRUE;
    }
} authz;

} // namespace

#define STAND_IN(name, arguments)                                                                            \
    extern "C" BOOL WINAPI standIn_##name arguments __asm__(#name);                                          \
    extern "C" {                                                                                             \
    void *import_##name __asm__("__imp_" #name) = reinterpret_cast<void *>(&standIn_##name);                 \
    }                                                                                                        \
    extern "C" BOOL WINAPI standIn_##name arguments

STAND_IN(AuthzInitializeResourceManager,
         (DWORD flags, PFN_AUTHZ_DYNAMIC_ACCESS_CHECK, PFN_AUTHZ_COMPUTE_DYNAMIC_GROUPS,
          PFN_AUTHZ_FREE_DYNAMIC_GROUPS, PCWSTR, PAUTHZ_RESOURCE_MANAGER_HANDLE handle)) {
    authz.managerFlags = flags;
    return authz.give(Manager, handle);
}

STAND_IN(AuthzInitializeContextFromSid, (DWORD, PSID sid, AUTHZ_RESOURCE_MANAGER_HANDLE, PLARGE_INTEGER, LUID,
                                         PVOID, PAUTHZ_CLIENT_CONTEXT_HANDLE handle)) {
    authz.subAuthority = *GetSidSubAuthority(sid, 0);
    return authz.give(Context, handle);
}

STAND_IN(AuthzAccessCheck, (DWORD, AUTHZ_CLIENT_CONTEXT_HANDLE, PAUTHZ_ACCESS_REQUEST request,
                            AUTHZ_AUDIT_EVENT_HANDLE, PSECURITY_DESCRIPTOR, PSECURITY_DESCRIPTOR *, DWORD,
                            PAUTHZ_ACCESS_REPLY reply, PAUTHZ_ACCESS_CHECK_RESULTS_HANDLE)) {
    authz.desired = request->DesiredAccess;
    reply->GrantedAccessMask[0] = 0x1200A9;
    return authz.failAt != Check;
}

STAND_IN(AuthzFreeResourceManager, (AUTHZ_RESOURCE_MANAGER_HANDLE)) {
    --authz.open;
    return TRUE;
}

STAND_IN(AuthzFreeContext, (AUTHZ_CLIENT_CONTEXT_HANDLE)) {
    --authz.open;
    return TRUE;
}

TEST(FileAccess, AsksForAllThatOneSidMayDoAndNamesAFailingStep) {
    const wchar_t *file = L"C:\\windows\\system32\\kernel32.dll";
    EXPECT_EQ(0x1200A9u, Registry::GetFileAccess(file, 11)); // S-1-5-11: authenticated users
    EXPECT_EQ(1u, authz.managerFlags);                       // AUTHZ_RM_FLAG_NO_AUDIT
    EXPECT_EQ(11u, authz.subAuthority);
    EXPECT_EQ(0x2000000u, authz.desired); // MAXIMUM_ALLOWED
    EXPECT_EQ(0, authz.open);

    const struct {
        Step step;
        const wchar_t *file, *name;
    } failures[] = {{None, L"C:\\no such file", L"GetNamedSecurityInfoW"},
                    {Manager, file, L"AuthzInitializeResourceManager"},
                    {Context, file, L"AuthzInitializeContextFromSid"},
                    {Check, file, L"AuthzAccessCheck"}};
    for (const auto &failure : failures) {
        authz.failAt = failure.step;
        std::wstring message;
        try {
            Registry::GetFileAccess(failure.file, 11);
        } catch (const RegistryException &error) {
            message = error.message();
        }
        EXPECT_EQ(std::wstring(L"Error in ") + failure.name + L" while getting file access", message);
        EXPECT_EQ(0, authz.open);
    }
}
