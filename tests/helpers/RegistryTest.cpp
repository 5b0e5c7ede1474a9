#include "helpers/Registry.h"
#include "helpers/RegistryKey.h"
#include "helpers/SystemMessage.h"

#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <thread>

namespace {

const std::wstring kRoot = L"HKEY_CURRENT_USER\\Software\\QorSoundKit Test";

void setRaw(const wchar_t *name, DWORD type, const std::vector<uint8_t> &bytes) {
    const UniqueRegistryKey key = Registry::openKey(kRoot, KEY_SET_VALUE);
    ASSERT_EQ(ERROR_SUCCESS,
              RegSetValueExW(key.get(), name, 0, type, bytes.data(), static_cast<DWORD>(bytes.size())));
}

std::wstring messageOf(const std::function<void()> &operation) {
    try {
        operation();
    } catch (const RegistryException &error) {
        return error.message();
    }
    return L"(no exception)";
}

class RegistryTest : public testing::Test {
protected:
    void SetUp() override {
        RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\QorSoundKit Test");
        Registry::CreateKey(kRoot);
    }
};

TEST_F(RegistryTest, ValuesOfEveryTypeComeBack) {
    Registry::WriteDwordValue(kRoot, L"number", 0xFFFFFFFFu);
    Registry::WriteStringValue(kRoot, L"text", L"音效 Kit");
    Registry::WriteStringValue(kRoot, L"empty", L"");
    Registry::WriteBinaryValue(kRoot, L"bytes", "\x00\x1A\xFF", 3);
    Registry::WriteBinaryValue(kRoot, L"none", nullptr, 0);
    Registry::WriteMultiStringValue(kRoot, L"list", std::vector<std::wstring>{L"a", L"bc"});
    Registry::WriteMultiStringValue(kRoot, L"single", std::wstring(L"one"));

    EXPECT_EQ(0xFFFFFFFFu, Registry::ReadDwordValue(kRoot, L"number"));
    EXPECT_EQ(L"音效 Kit", Registry::ReadStringValue(kRoot, L"text"));
    EXPECT_EQ(L"", Registry::ReadStringValue(kRoot, L"empty"));
    std::vector<uint8_t> bytes{9, 9, 9, 9};
    Registry::ReadBinaryValue(kRoot, L"bytes", bytes);
    EXPECT_EQ((std::vector<uint8_t>{0x00, 0x1A, 0xFF}), bytes);
    EXPECT_TRUE(Registry::ReadBinaryValue(kRoot, L"none").empty());
    EXPECT_EQ((std::vector<std::wstring>{L"a", L"bc"}), Registry::ReadMultiStringValue(kRoot, L"list"));
    EXPECT_EQ((std::vector<std::wstring>{L"one"}), Registry::ReadMultiStringValue(kRoot, L"single"));
    EXPECT_EQ(7u, Registry::QueryKeyInfo(kRoot).valueCount);
}

TEST_F(RegistryTest, StoredSizesAreThoseOfTheTypes) {
    Registry::WriteStringValue(kRoot, L"text", L"abc");
    Registry::WriteMultiStringValue(kRoot, L"single", std::wstring(L"abc"));
    const UniqueRegistryKey key = Registry::openKey(kRoot, KEY_QUERY_VALUE);
    DWORD size = 0;
    RegQueryValueExW(key.get(), L"text", nullptr, nullptr, nullptr, &size);
    EXPECT_EQ(8u, size); // with its terminator
    RegQueryValueExW(key.get(), L"single", nullptr, nullptr, nullptr, &size);
    EXPECT_EQ(10u, size); // its terminator and the closing empty string
}

TEST_F(RegistryTest, TextStoredByOthers) {
    setRaw(L"unterminated", REG_SZ, {'a', 0, 'b', 0});
    setRaw(L"terminated", REG_SZ, {'a', 0, 'b', 0, 0, 0});
    setRaw(L"odd", REG_SZ, {'a', 0, 'b'});
    setRaw(L"inner", REG_SZ, {'a', 0, 0, 0, 'b', 0, 0, 0});
    setRaw(L"list", REG_MULTI_SZ, {'a', 0, 0, 0, 'b', 0}); // no end at all
    EXPECT_EQ(L"ab", Registry::ReadStringValue(kRoot, L"unterminated"));
    EXPECT_EQ(L"ab", Registry::ReadStringValue(kRoot, L"terminated"));
    EXPECT_EQ(L"a", Registry::ReadStringValue(kRoot, L"odd"));
    EXPECT_EQ(std::wstring(L"a\0b", 3), Registry::ReadStringValue(kRoot, L"inner"));
    EXPECT_EQ((std::vector<std::wstring>{L"a", L"b"}), Registry::ReadMultiStringValue(kRoot, L"list"));
}

TEST_F(RegistryTest, LargeValueIsReadWhole) {
    const std::wstring text(40000, L'x');
    Registry::WriteStringValue(kRoot, L"large", text);
    EXPECT_EQ(text, Registry::ReadStringValue(kRoot, L"large"));
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
}

TEST_F(RegistryTest, KeysAreThoseOfThe64BitView) {
    const wchar_t *path = L"HKEY_LOCAL_MACHINE\\SOFTWARE\\QorSoundKit View";
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
    ASSERT_FALSE(notFound.empty());
    ASSERT_NE(L'\n', notFound.back());
    ASSERT_NE(L'\r', notFound.back());

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
        {[&] { WriteDwordValue(missing, L"v", 1); },
         L"Error while opening registry key " + missing + L": " + notFound},
        {[] { ReadDwordValue(kRoot, L"v"); },
         L"Error while reading registry value " + kRoot + L"\\v: " + notFound},
        {[] { ReadStringValue(kRoot, L"number"); }, L"Registry value " + kRoot + L"\\number has wrong type"},
        {[] { ReadBinaryValue(kRoot, L"number"); }, L"Registry value " + kRoot + L"\\number has wrong type"},
        {[] { DeleteValue(kRoot, L"v"); },
         L"Error while deleting registry value " + kRoot + L"\\v: " + notFound},
        {[&] { DeleteKey(missing); }, L"Error while deleting registry key " + missing + L": " + notFound},
        {[] { DeleteKey(kRoot + L"\\parent"); },
         L"Error while deleting registry key " + kRoot + L"\\parent: " + denied},
        {[] { ExportKeyToFile(kRoot, L"C:\\no such folder\\out.reg"); },
         L"Error while opening file C:\\no such folder\\out.reg for writing"},
        {[&] { EnsureWritable(missing); }, L"Error while opening registry key " + missing + L": " + notFound},
    };
    for (const auto &c : cases)
        EXPECT_EQ(c.message, messageOf(c.operation));
    const std::wstring tooLong = kRoot + L"\\" + std::wstring(300, L'x');
    EXPECT_EQ(0u, messageOf([&] {
                      CreateKey(tooLong);
                  }).find(L"Error while creating registry key " + tooLong + L": "));
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
    const wchar_t *path = L"C:\\windows\\temp\\export.reg";
    Registry::ExportKeyToFile(kRoot, path);

    FILE *file = _wfopen(path, L"rb");
    ASSERT_TRUE(file);
    std::wstring text(2000, L'\0');
    text.resize(std::fread(text.data(), 2, text.size(), file));
    std::fclose(file);
    EXPECT_EQ(0u, text.find(L"\xFEFFWindows Registry Editor Version 5.00\r\n"));
    for (const wchar_t *part :
         {L"\"number\"=dword:0000001a\r\n", L"\"pa\\\\th\"=\"C:\\\\\\\"x\\\"\"\r\n",
          L"\"bytes\"=hex:01,ab\r\n", L"[HKEY_CURRENT_USER\\Software\\QorSoundKit Test\\child]"})
        EXPECT_NE(std::wstring::npos, text.find(part)) << std::string(part, part + wcslen(part));
}

TEST_F(RegistryTest, SmallQueries) {
    const GUID guid = {0x45A8C662, 0x65D7, 0x4679, {0x80, 0x1E, 0x60, 0x4A, 0x2D, 0xF7, 0x67, 0x32}};
    EXPECT_EQ(L"{45A8C662-65D7-4679-801E-604A2DF76732}", Registry::GuidToString(guid));
    EXPECT_GE(Registry::GetSystemFileVersion().major, 6);
}

TEST_F(RegistryTest, ThreadsDoNotDisturbEachOther) {
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (uint32_t t = 0; t < 4; ++t) {
        threads.emplace_back([t, &wrong] {
            const std::wstring name = L"v" + std::to_wstring(t);
            for (uint32_t i = 0; i < 200; ++i) {
                Registry::WriteDwordValue(kRoot, name, t * 1000 + i);
                wrong += Registry::ReadDwordValue(kRoot, name) != t * 1000 + i;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(0, wrong);
}

} // namespace
