#include "update/UpdateInfo.h"

#include <gtest/gtest.h>

namespace {

TEST(UpdateInfo, EntryCountsWhereverItStands) {
    const struct {
        std::string bytes;
        bool listed;
    } rows[] = {
        {"old\r\nsetup.exe:crc=0xffffffff\r\nsetup.exe:crc=0x0012abcd\r\n", true},
        {"\xE4\xB8\xAD\xFFxxsetup.exe:crc=0x0012abcdef", true},
        {"", false},
        {"setup.exe:crc=0x0012ABCD", false},
        {"setup.exe:crc=0x12abcd", false},
        {"setup.exe:crc=0x0012abc", false},
        {std::string("\0setup.exe:crc=0x0012abcd", 25), false}, // the text ends at the NUL
    };
    for (const auto &row : rows)
        EXPECT_EQ(listsInstaller(updateInformationText(row.bytes.data(), row.bytes.size()), 0x0012ABCD),
                  row.listed)
            << row.bytes;
    EXPECT_EQ(updateInformationText(nullptr, 0), L"");
}

} // namespace
