// Link-time stand-ins for the Authz functions, which are stubs in Wine: they define both the function and its
// import pointer, so that nothing of the import library is taken. Each can be made to fail.
#include "AuthzFake.h"

#include <authz.h>

AuthzFake authzFake;

#define FAKE(name, arguments)                                                                                \
    extern "C" BOOL WINAPI fake_##name arguments __asm__(#name);                                             \
    extern "C" {                                                                                             \
    void *fakeImport_##name __asm__("__imp_" #name) = reinterpret_cast<void *>(&fake_##name);                \
    }                                                                                                        \
    extern "C" BOOL WINAPI fake_##name arguments

namespace {

int manager;
int context;

} // namespace

FAKE(AuthzInitializeResourceManager,
     (DWORD flags, PFN_AUTHZ_DYNAMIC_ACCESS_CHECK, PFN_AUTHZ_COMPUTE_DYNAMIC_GROUPS,
      PFN_AUTHZ_FREE_DYNAMIC_GROUPS, PCWSTR, PAUTHZ_RESOURCE_MANAGER_HANDLE handle)) {
    authzFake.managerFlags = flags;
    *handle = reinterpret_cast<AUTHZ_RESOURCE_MANAGER_HANDLE>(&manager);
    ++authzFake.open;
    return authzFake.failAt != AuthzFake::Manager || (--authzFake.open, *handle = nullptr, FALSE);
}

FAKE(AuthzFreeResourceManager, (AUTHZ_RESOURCE_MANAGER_HANDLE)) {
    --authzFake.open;
    return TRUE;
}

FAKE(AuthzInitializeContextFromSid, (DWORD, PSID sid, AUTHZ_RESOURCE_MANAGER_HANDLE, PLARGE_INTEGER, LUID,
                                     PVOID, PAUTHZ_CLIENT_CONTEXT_HANDLE handle)) {
    authzFake.subAuthority = *GetSidSubAuthority(sid, 0);
    if (authzFake.failAt == AuthzFake::Context)
        return FALSE;
    *handle = reinterpret_cast<AUTHZ_CLIENT_CONTEXT_HANDLE>(&context);
    ++authzFake.open;
    return TRUE;
}

FAKE(AuthzFreeContext, (AUTHZ_CLIENT_CONTEXT_HANDLE)) {
    --authzFake.open;
    return TRUE;
}

FAKE(AuthzAccessCheck, (DWORD, AUTHZ_CLIENT_CONTEXT_HANDLE, PAUTHZ_ACCESS_REQUEST request,
                        AUTHZ_AUDIT_EVENT_HANDLE, PSECURITY_DESCRIPTOR, PSECURITY_DESCRIPTOR *, DWORD,
                        PAUTHZ_ACCESS_REPLY reply, PAUTHZ_ACCESS_CHECK_RESULTS_HANDLE)) {
    authzFake.desired = request->DesiredAccess;
    reply->GrantedAccessMask[0] = 0x1200A9;
    return authzFake.failAt != AuthzFake::Check;
}
