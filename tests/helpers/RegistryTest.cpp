#include "helpers/Registry.h"
#include "helpers/RegistryKey.h"
#include "helpers/SystemMessage.h"

#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>

namespace {

const std::wstring kRoot = L"HKEY_CURRENT_USER\\Software\\QorSoundKit Test";

class RegistryTest : public testing::Test {
protected:
    void SetUp() override {
        RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\QorSoundKit Test");
        Registry::CreateKey(kRoot);
    }
};

TEST_F(RegistryTest, ValuesOfEveryTypeComeBack) {
    const std::wstring large(40000, L'x');
    Registry::WriteDwordValue(kRoot, L"number", 0xFFFFFFFFu);
    Registry::WriteStringValue(kRoot, L"text", L"音效 Kit");
    Registry::WriteStringValue(kRoot, L"empty", L"");
    Registry::WriteStringValue(kRoot, L"large", large);
    Registry::WriteBinaryValue(kRoot, L"bytes", "\x00\x1A\xFF", 3);
    Registry::WriteBinaryValue(kRoot, L"none", nullptr, 0);
    Registry::WriteMultiStringValue(kRoot, L"list", std::vector<std::wstring>{L"a", L"bc"});
    Registry::WriteMultiStringValue(kRoot, L"single", std::wstring(L"one"));

    EXPECT_EQ(0xFFFFFFFFu, Registry::ReadDwordValue(kRoot, L"number"));
    EXPECT_EQ(L"音效 Kit", Registry::ReadStringValue(kRoot, L"text"));
    EXPECT_EQ(L"", Registry::ReadStringValue(kRoot, L"empty"));
    EXPECT_EQ(large, Registry::ReadStringValue(kRoot, L"large"));
    std::vector<uint8_t> bytes{9, 9, 9, 9};
    Registry::ReadBinaryValue(kRoot, L"bytes", bytes);
    EXPECT_EQ((std::vector<uint8_t>{0x00, 0x1A, 0xFF}), bytes);
    EXPECT_TRUE(Registry::ReadBinaryValue(kRoot, L"none").empty());
    EXPECT_EQ((std::vector<std::wstring>{L"a", L"bc"}), Registry::ReadMultiStringValue(kRoot, L"list"));
    EXPECT_EQ((std::vector<std::wstring>{L"one"}), Registry::ReadMultiStringValue(kRoot, L"single"));
    EXPECT_EQ(8u, Registry::QueryKeyInfo(kRoot).valueCount);
}

TEST_F(RegistryTest, TextStoredByOthers) {
    const struct {
        std::vector<uint8_t> bytes;
        std::wstring text;
    } cases[] = {
        {{'a', 0, 'b', 0}, L"ab"}, // not terminated
        {{'a', 0, 'b', 0, 0, 0}, L"ab"},
        {{'a', 0, 'b'}, L"a"},
        {{'a', 0, 0, 0, 'b', 0, 0, 0}, std::wstring(L"a\0b", 3)},
    };
    const UniqueRegistryKey key = Registry::openKey(kRoot, KEY_SET_VALUE);
    for (const auto &c : cases) {
        RegSetValueExW(key.get(), L"text", 0, REG_SZ, c.bytes.data(), static_cast<DWORD>(c.bytes.size()));
        EXPECT_EQ(c.text, Registry::ReadStringValue(kRoot, L"text")) << c.bytes.size();
    }
}

TEST_F(RegistryTest, PathsAndRoots) {
    EXPECT_TRUE(Registry::KeyExists(L"hkey_current_user\\Software\\QorSoundKit Test"));
    EXPECT_TRUE(Registry::KeyExists(L"HKEY_CURRENT_USER\\"));
    EXPECT_FALSE(Registry::KeyExists(kRoot + L"\\missing"));
    EXPECT_FALSE(Registry::ValueExists(kRoot, L"missing"));
    Registry::CreateKey(kRoot + L"\\one\\two");
    Registry::CreateKey(kRoot + L"\\three");
    EXPECT_EQ((std::vector<std::wstring>{L"one", L"three"}), Registry::EnumerateSubKeys(kRoot));
    Registry::DeleteKey(kRoot + L"\\three");
    EXPECT_EQ(1u, Registry::QueryKeyInfo(kRoot).subKeyCount);

    const wchar_t *path = L"HKEY_LOCAL_MACHINE\\SOFTWARE\\QorSoundKit View"; // of the 64-bit view
    Registry::CreateKey(path);
    HKEY other = nullptr;
    EXPECT_EQ(ERROR_FILE_NOT_FOUND, RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\QorSoundKit View", 0,
                                                  KEY_READ | KEY_WOW64_32KEY, &other));
    Registry::DeleteKey(path);
    EXPECT_FALSE(Registry::KeyExists(path));
}

TEST_F(RegistryTest, EveryFailureHasItsMessage) {
    Registry::WriteDwordValue(kRoot, L"number", 1);
    Registry::CreateKey(kRoot + L"\\parent\\child");
    const std::wstring missing = kRoot + L"\\missing";
    const std::wstring notFound = SystemMessage(ERROR_FILE_NOT_FOUND);
    const std::wstring denied = SystemMessage(ERROR_ACCESS_DENIED);
    ASSERT_TRUE(!notFound.empty() && notFound.back() != L'\n' && notFound.back() != L'\r');

    using namespace Registry;
    const struct {
        std::function<void()> operation;
        std::wstring message;
    } cases[] = {
        {[] { KeyExists(L""); }, L"Key  has invalid format"},
        {[] { KeyExists(L"HKEY_CURRENT_USER"); }, L"Key HKEY_CURRENT_USER has invalid format"},
        {[] { KeyExists(L"HKLM\\SOFTWARE\\QorSoundKit"); }, L"Unknown root key HKLM"},
        {[&] { ValueExists(missing, L"v"); },
         L"Error while opening registry key " + missing + L": " + notFound},
        {[] { ReadDwordValue(kRoot, L"v"); },
         L"Error while reading registry value " + kRoot + L"\\v: " + notFound},
        {[] { ReadStringValue(kRoot, L"number"); }, L"Registry value " + kRoot + L"\\number has wrong type"},
        {[] { DeleteValue(kRoot, L"v"); },
         L"Error while deleting registry value " + kRoot + L"\\v: " + notFound},
        {[&] { DeleteKey(missing); }, L"Error while deleting registry key " + missing + L": " + notFound},
        {[] { DeleteKey(kRoot + L"\\parent"); },
         L"Error while deleting registry key " + kRoot + L"\\parent: " + denied},
        {[] { ExportKeyToFile(kRoot, L"C:\\no such folder\\out.reg"); },
         L"Error while opening file C:\\no such folder\\out.reg for writing"},
        {[&] { EnsureWritable(missing); }, L"Error while opening registry key " + missing + L": " + notFound},
        {[] { GetFileAccess(L"C:\\no such file", 11); },
         L"Error in GetNamedSecurityInfoW while getting file access"},
    };
    for (const auto &c : cases) {
        std::wstring message = L"(no exception)";
        try {
            c.operation();
        } catch (const RegistryException &error) {
            message = error.message();
        }
        EXPECT_EQ(c.message, message);
    }
}

TEST_F(RegistryTest, AdministratorsGetFullAccess) {
    Registry::EnsureWritable(kRoot);
    const UniqueRegistryKey key = Registry::openKey(kRoot, READ_CONTROL);
    DWORD size = 4096;
    std::vector<uint8_t> descriptor(size);
    ASSERT_EQ(ERROR_SUCCESS,
              RegGetKeySecurity(key.get(), DACL_SECURITY_INFORMATION, descriptor.data(), &size));
    BOOL present = FALSE, defaulted = FALSE;
    ACL *acl = nullptr;
    ASSERT_TRUE(GetSecurityDescriptorDacl(descriptor.data(), &present, &acl, &defaulted));
    bool found = false;
    for (DWORD i = 0; i < acl->AceCount; ++i) {
        ACCESS_ALLOWED_ACE *ace = nullptr;
        GetAce(acl, i, reinterpret_cast<void **>(&ace));
        const bool administrators = IsWellKnownSid(&ace->SidStart, WinBuiltinAdministratorsSid);
        found |= administrators && ace->Mask == KEY_ALL_ACCESS &&
                 ace->Header.AceFlags == (CONTAINER_INHERIT_ACE | OBJECT_INHERIT_ACE);
    }
    EXPECT_TRUE(found);
    EXPECT_NO_THROW(Registry::TakeOwnership(kRoot));
}

TEST_F(RegistryTest, ExportHoldsEveryValue) {
    Registry::WriteDwordValue(kRoot, L"number", 26);
    Registry::WriteStringValue(kRoot, L"pa\\th", L"C:\\\"x\"");
    Registry::WriteBinaryValue(kRoot, L"bytes", "\x01\xAB", 2);
    Registry::CreateKey(kRoot + L"\\child");
    Registry::ExportKeyToFile(kRoot, L"C:\\windows\\temp\\export.reg");

    std::ifstream file("C:\\windows\\temp\\export.reg", std::ios::binary);
    std::string bytes(std::istreambuf_iterator<char>(file), {});
    const std::wstring text(reinterpret_cast<const wchar_t *>(bytes.data()), bytes.size() / 2);
    EXPECT_EQ(0u, text.find(L"\xFEFFWindows Registry Editor Version 5.00\r\n"));
    for (const wchar_t *part :
         {L"\"number\"=dword:0000001a\r\n", L"\"pa\\\\th\"=\"C:\\\\\\\"x\\\"\"\r\n",
          L"\"bytes\"=hex:01,ab\r\n", L"[HKEY_CURRENT_USER\\Software\\QorSoundKit Test\\child]"})
        EXPECT_NE(std::wstring::npos, text.find(part)) << std::string(part, part + wcslen(part));
}

} // namespace
