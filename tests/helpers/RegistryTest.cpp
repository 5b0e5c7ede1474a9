#include "helpers/Registry.h"
#include "helpers/RegistryKey.h"
#include "helpers/SystemMessage.h"

#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <sddl.h>

namespace {

using namespace Registry;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

const std::wstring kRoot = L"HKEY_CURRENT_USER\\Software\\QorSoundKit Test";

class RegistryTest : public testing::Test {
protected:
    RegistryTest() {
        RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\QorSoundKit Test");
        CreateKey(kRoot);
    }
};

// Past the layer under test, as another program would.
void setRaw(const wchar_t *name, DWORD type, const std::vector<uint8_t> &bytes) {
    RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\QorSoundKit Test", name, type, bytes.data(),
                    static_cast<DWORD>(bytes.size()));
}

DWORD sizeOf(const wchar_t *name) {
    DWORD size = 0;
    RegQueryValueExW(openKey(kRoot, KEY_QUERY_VALUE).get(), name, nullptr, nullptr, nullptr, &size);
    return size;
}

// Of the exception; empty when there is none.
std::wstring messageOf(const std::function<void()> &operation) {
    try {
        operation();
    } catch (const RegistryException &error) {
        return error.message();
    }
    return {};
}

TEST_F(RegistryTest, ValuesOfEveryTypeComeBack) {
    const std::vector<uint8_t> bytes{0x00, 0x1A, 0xFF};
    const std::vector<std::wstring> list{L"a", L"bc"};
    WriteDwordValue(kRoot, L"number", 0xFFFFFFFFu);
    WriteStringValue(kRoot, L"text", L"音效 Kit");
    WriteBinaryValue(kRoot, L"bytes", bytes.data(), bytes.size());
    WriteBinaryValue(kRoot, L"none", nullptr, 0);
    WriteMultiStringValue(kRoot, L"list", list);
    WriteMultiStringValue(kRoot, L"single", std::wstring(L"one"));

    EXPECT_EQ(0xFFFFFFFFu, ReadDwordValue(kRoot, L"number"));
    EXPECT_EQ(L"音效 Kit", ReadStringValue(kRoot, L"text"));
    EXPECT_EQ(14u, sizeOf(L"text")) << "with its terminator";
    EXPECT_EQ(bytes, ReadBinaryValue(kRoot, L"bytes"));
    std::vector<uint8_t> into(9, 9);
    ReadBinaryValue(kRoot, L"none", into);
    EXPECT_TRUE(into.empty());
    EXPECT_EQ(list, ReadMultiStringValue(kRoot, L"list"));
    EXPECT_EQ(12u, sizeOf(L"list")) << "three terminators";
    EXPECT_EQ(std::vector<std::wstring>{L"one"}, ReadMultiStringValue(kRoot, L"single"));
    EXPECT_EQ(10u, sizeOf(L"single"));
}

TEST_F(RegistryTest, TextStoredByOthers) {
    const std::vector<uint8_t> large(80000, 'x');
    const struct {
        std::vector<uint8_t> bytes;
        std::wstring text;
    } cases[] = {{{'a', 0, 'b', 0}, L"ab"},
                 {{'a', 0, 'b', 0, 0, 0}, L"ab"},
                 {{'a', 0, 'b'}, L"a"},
                 {{'a', 0, 0, 0, 'b', 0, 0, 0}, std::wstring(L"a\0b", 3)},
                 {{}, L""},
                 {large, std::wstring(40000, L'\x7878')}};
    for (const auto &c : cases) {
        setRaw(L"text", REG_SZ, c.bytes);
        EXPECT_EQ(c.text, ReadStringValue(kRoot, L"text")) << c.bytes.size() << " bytes";
    }
    setRaw(L"list", REG_MULTI_SZ, {'a', 0, 0, 0, 'b', 0}); // no end at all
    EXPECT_EQ((std::vector<std::wstring>{L"a", L"b"}), ReadMultiStringValue(kRoot, L"list"));
    setRaw(L"number", REG_DWORD, {7, 1});
    EXPECT_EQ(0x107u, ReadDwordValue(kRoot, L"number"));
}

TEST_F(RegistryTest, KeysAreFoundByAnyCase) {
    CreateKey(kRoot + L"\\one\\two");
    CreateKey(kRoot + L"\\three");
    EXPECT_TRUE(KeyExists(L"hkey_current_user\\software\\QorSoundKit TEST\\one\\two"));
    EXPECT_TRUE(KeyExists(L"HKEY_CURRENT_USER\\"));
    EXPECT_FALSE(KeyExists(kRoot + L"\\missing"));
    EXPECT_EQ((std::vector<std::wstring>{L"one", L"three"}), EnumerateSubKeys(kRoot));
}

TEST_F(RegistryTest, EveryFailureHasItsMessage) {
    WriteDwordValue(kRoot, L"number", 1);
    CreateKey(kRoot + L"\\parent\\child");
    const std::wstring missing = kRoot + L"\\missing";
    const std::wstring tooLong = kRoot + L"\\" + std::wstring(300, L'x');
    const std::wstring notOpened = L"Error while opening registry key " + missing + L": ";
    const std::wstring value = kRoot + L"\\v: ";
    const struct {
        std::function<void()> operation;
        std::wstring message;
        DWORD error; // whose text ends the message
    } cases[] = {
        {[] { KeyExists(L""); }, L"Key  has invalid format", 0},
        {[] { KeyExists(L"HKEY_CURRENT_USER"); }, L"Key HKEY_CURRENT_USER has invalid format", 0},
        {[] { KeyExists(L"HKLM\\SOFTWARE\\QorSoundKit"); }, L"Unknown root key HKLM", 0},
        {[] { ReadStringValue(kRoot, L"number"); }, L"Registry value " + kRoot + L"\\number has wrong type",
         0},
        {[&] { ValueExists(missing, L"v"); }, notOpened, ERROR_FILE_NOT_FOUND},
        {[&] { WriteDwordValue(missing, L"v", 1); }, notOpened, ERROR_FILE_NOT_FOUND},
        {[] { ReadDwordValue(kRoot, L"v"); }, L"Error while reading registry value " + value,
         ERROR_FILE_NOT_FOUND},
        {[] { DeleteValue(kRoot, L"v"); }, L"Error while deleting registry value " + value,
         ERROR_FILE_NOT_FOUND},
        {[&] { CreateKey(tooLong); }, L"Error while creating registry key " + tooLong + L": ",
         ERROR_INVALID_PARAMETER},
        {[] { DeleteKey(kRoot + L"\\parent"); },
         L"Error while deleting registry key " + kRoot + L"\\parent: ", ERROR_ACCESS_DENIED},
        {[] { ExportKeyToFile(kRoot, L"C:\\no such folder\\out.reg"); },
         L"Error while opening file C:\\no such folder\\out.reg for writing", 0},
    };
    for (const auto &c : cases) {
        const std::wstring message = messageOf(c.operation);
        EXPECT_EQ(c.message + (c.error ? SystemMessage(c.error) : L""), message);
        EXPECT_EQ(std::wstring::npos, message.find_first_of(L"\r\n"));
    }
}

// As SDDL.
std::wstring dacl() {
    std::vector<uint8_t> descriptor(4096);
    DWORD size = 4096;
    RegGetKeySecurity(openKey(kRoot, READ_CONTROL).get(), DACL_SECURITY_INFORMATION, descriptor.data(),
                      &size);
    UniqueLocalMemory text;
    ConvertSecurityDescriptorToStringSecurityDescriptorW(descriptor.data(), SDDL_REVISION_1,
                                                         DACL_SECURITY_INFORMATION,
                                                         reinterpret_cast<wchar_t **>(text.put()), nullptr);
    return static_cast<wchar_t *>(text.get());
}

void setDacl(ACL *acl) {
    SECURITY_DESCRIPTOR descriptor;
    InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
    SetSecurityDescriptorDacl(&descriptor, TRUE, acl, FALSE);
    RegSetKeySecurity(openKey(kRoot, WRITE_DAC).get(), DACL_SECURITY_INFORMATION, &descriptor);
}

TEST_F(RegistryTest, AdministratorsGetFullAccessBesideOthers) {
    UniqueLocalMemory old;
    ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:(A;;KR;;;WD)(A;;KR;;;BA)", SDDL_REVISION_1,
                                                         old.put(), nullptr);
    BOOL flag = FALSE;
    ACL *acl = nullptr;
    GetSecurityDescriptorDacl(old.get(), &flag, &acl, &flag);
    setDacl(acl);
    EnsureWritable(kRoot);
    EXPECT_THAT(dacl(), AllOf(HasSubstr(L"(A;;KR;;;WD)"), HasSubstr(L"(A;OICI;KA;;;BA)")));
    EXPECT_THAT(dacl(), Not(HasSubstr(L"(A;;KR;;;BA)")));

    setDacl(nullptr); // everybody may do everything
    const std::wstring unlimited = dacl();
    EnsureWritable(kRoot);
    EXPECT_EQ(dacl(), unlimited);
}

// The last, since the privilege is gone for good.
TEST_F(RegistryTest, OwnershipIsTakenWithThePrivilegeOnly) {
    EXPECT_EQ(messageOf([] { TakeOwnership(kRoot); }), L"");
    UniqueHandle token;
    OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES, token.put());
    TOKEN_PRIVILEGES removed{1, {{{}, SE_PRIVILEGE_REMOVED}}};
    LookupPrivilegeValueW(nullptr, L"SeTakeOwnershipPrivilege", &removed.Privileges[0].Luid);
    AdjustTokenPrivileges(token.get(), FALSE, &removed, 0, nullptr, nullptr);
    EXPECT_EQ(messageOf([] { TakeOwnership(kRoot); }),
              L"Error in AdjustTokenPrivileges while taking ownership");
}

} // namespace
