#include "helpers/Registry.h"
#include "helpers/RegistryKey.h"
#include "helpers/SystemMessage.h"

#include <functional>
#include <gmock/gmock.h>
#include <sddl.h>

using namespace Registry;
using testing::HasSubstr;

static const std::wstring kRoot = L"HKEY_CURRENT_USER\\Software\\QorSoundKit Test";

class RegistryTest : public testing::Test {
protected:
    RegistryTest() {
        RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\QorSoundKit Test");
        CreateKey(kRoot);
    }
};

TEST_F(RegistryTest, ValuesOfEveryTypeComeBack) {
    const std::vector<uint8_t> bytes{0x00, 0x1A, 0xFF};
    const std::vector<std::wstring> list{L"a", L"bc"};
    WriteDwordValue(kRoot, L"number", 0xFFFFFFFFu);
    WriteStringValue(kRoot, L"text", L"音效 Kit");
    WriteBinaryValue(kRoot, L"bytes", bytes.data(), bytes.size());
    WriteMultiStringValue(kRoot, L"list", list);
    EXPECT_EQ(ReadDwordValue(kRoot, L"number"), 0xFFFFFFFFu);
    EXPECT_EQ(ReadStringValue(kRoot, L"text"), L"音效 Kit");
    EXPECT_EQ(ReadBinaryValue(kRoot, L"bytes"), bytes);
    EXPECT_EQ(ReadMultiStringValue(kRoot, L"list"), list);
    for (const auto &[name, expected] : {std::pair(L"text", 14u), std::pair(L"list", 12u)}) {
        DWORD size = 0;
        RegQueryValueExW(openKey(kRoot, KEY_QUERY_VALUE).get(), name, nullptr, nullptr, nullptr, &size);
        EXPECT_EQ(size, expected) << "with every terminator";
    }
}

TEST_F(RegistryTest, TextStoredByOthers) {
    const std::pair<std::vector<uint8_t>, std::wstring> cases[] = {
        {{'a', 0, 'b', 0}, L"ab"},
        {{'a', 0, 'b'}, L"a"},
        {{'a', 0, 0, 0, 'b', 0, 0, 0}, std::wstring(L"a\0b", 3)},
        {{}, L""},
        {std::vector<uint8_t>(80000, 'x'), std::wstring(40000, L'\x7878')},
    };
    for (const auto &[bytes, text] : cases) {
        RegSetKeyValueW(HKEY_CURRENT_USER, L"Software\\QorSoundKit Test", L"text", REG_SZ, bytes.data(),
                        static_cast<DWORD>(bytes.size()));
        EXPECT_EQ(ReadStringValue(kRoot, L"text"), text) << bytes.size() << " bytes";
    }
}

TEST_F(RegistryTest, FailuresHaveTheirMessage) {
    WriteDwordValue(kRoot, L"number", 1);
    const std::wstring missing = kRoot + L"\\missing";
    const std::pair<std::function<void()>, std::wstring> cases[] = {
        {[] { KeyExists(L"HKEY_CURRENT_USER"); }, L"Key HKEY_CURRENT_USER has invalid format"},
        {[] { KeyExists(L"HKLM\\SOFTWARE"); }, L"Unknown root key HKLM"},
        {[] { ReadStringValue(kRoot, L"number"); }, L"Registry value " + kRoot + L"\\number has wrong type"},
        {[&] { WriteDwordValue(missing, L"v", 1); },
         L"Error while opening registry key " + missing + L": " + SystemMessage(ERROR_FILE_NOT_FOUND)},
        {[] { ExportKeyToFile(kRoot, L"C:\\no such folder\\out.reg"); },
         L"Error while opening file C:\\no such folder\\out.reg for writing"},
    };
    for (const auto &[operation, message] : cases) {
        try {
            operation();
            ADD_FAILURE() << "nothing thrown";
        } catch (const RegistryException &error) {
            EXPECT_EQ(error.message(), message);
        }
    }
}

TEST_F(RegistryTest, AdministratorsGetFullAccessBesideOthers) {
    UniqueLocalMemory old, text;
    ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:(A;;KR;;;WD)(A;;KR;;;BA)", SDDL_REVISION_1,
                                                         old.put(), nullptr);
    const UniqueRegistryKey key = openKey(kRoot, WRITE_DAC | READ_CONTROL);
    RegSetKeySecurity(key.get(), DACL_SECURITY_INFORMATION, old.get());
    EnsureWritable(kRoot);
    std::vector<uint8_t> changed(4096);
    DWORD size = 4096;
    RegGetKeySecurity(key.get(), DACL_SECURITY_INFORMATION, changed.data(), &size);
    ConvertSecurityDescriptorToStringSecurityDescriptorW(changed.data(), SDDL_REVISION_1,
                                                         DACL_SECURITY_INFORMATION,
                                                         reinterpret_cast<wchar_t **>(text.put()), nullptr);
    EXPECT_THAT(static_cast<wchar_t *>(text.get()),
                testing::AllOf(HasSubstr(L"(A;;KR;;;WD)"), HasSubstr(L"(A;OICI;KA;;;BA)"),
                               testing::Not(HasSubstr(L"(A;;KR;;;BA)"))));
}
