#include "AuthzFake.h"
#include "helpers/Registry.h"

#include <gtest/gtest.h>

namespace {

const wchar_t kFile[] = L"C:\\windows\\system32\\kernel32.dll";

TEST(FileAccess, AsksForTheGrantedMaskOfOneSid) {
    authzFake = {};
    EXPECT_EQ(0x1200A9u, Registry::GetFileAccess(kFile, 11)); // S-1-5-11: authenticated users
    EXPECT_EQ(1u, authzFake.managerFlags);                    // AUTHZ_RM_FLAG_NO_AUDIT
    EXPECT_EQ(11u, authzFake.subAuthority);
    EXPECT_EQ(0x2000000u, authzFake.desired); // MAXIMUM_ALLOWED
    EXPECT_EQ(0, authzFake.open);
}

TEST(FileAccess, EveryFailingStepIsNamedAndLeavesNothingOpen) {
    const struct {
        AuthzFake::Step step;
        const wchar_t *file;
        const wchar_t *name;
    } cases[] = {
        {AuthzFake::None, L"C:\\no such file", L"GetNamedSecurityInfoW"},
        {AuthzFake::Manager, kFile, L"AuthzInitializeResourceManager"},
        {AuthzFake::Context, kFile, L"AuthzInitializeContextFromSid"},
        {AuthzFake::Check, kFile, L"AuthzAccessCheck"},
    };
    for (const auto &c : cases) {
        authzFake = {};
        authzFake.failAt = c.step;
        std::wstring message;
        try {
            Registry::GetFileAccess(c.file, 11);
        } catch (const RegistryException &error) {
            message = error.message();
        }
        EXPECT_EQ(std::wstring(L"Error in ") + c.name + L" while getting file access", message);
        EXPECT_EQ(0, authzFake.open);
    }
}

} // namespace
