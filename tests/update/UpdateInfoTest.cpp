#include "update/UpdateInfo.h"

#include "update/DownloadProgress.h"

#include <gtest/gtest.h>

namespace {

TEST(UpdateInfo, EntryCountsWhereverItStands) {
    const struct {
        std::string bytes;
        bool listed;
    } rows[] = {
        {"old\r\nsetup.exe:crc=0xffffffff\r\nsetup.exe:crc=0x0012abcd\r\n", true},
        {"xxsetup.exe:crc=0x0012abcdef", true},
        {std::string(1 << 20, 'x') + "setup.exe:crc=0x0012abcd", true},
        {"\xE4\xB8\xAD\xFF setup.exe:crc=0x0012abcd", true},
        {"", false},
        {"setup.exe:crc=0x0012ABCD", false},
        {"setup.exe:crc=0x12abcd", false},
        {"setup.exe:crc=0x0012abc", false},
        {std::string("\0setup.exe:crc=0x0012abcd", 25), false}, // the text ends at the NUL
        {std::string("setup.exe:crc=0x0012abcd\0rest", 29), true},
    };
    for (const auto &row : rows)
        EXPECT_EQ(listsInstaller(updateInformationText(row.bytes.data(), row.bytes.size()), 0x0012ABCD),
                  row.listed)
            << row.bytes.substr(0, 60);
    EXPECT_EQ(updateInformationText(nullptr, 0), L"");
}

TEST(DownloadProgress, ShowsEachReport) {
    const std::wstring failed = L"Download Failed", running = L"Downloading,please DON'T leaves this page...",
                       done = L"Download Success";
    const struct {
        uint32_t stage;
        int32_t value;
        std::wstring text;
        std::optional<int32_t> bar;
    } rows[] = {
        {1, -1, failed, {}}, {10, -1, failed, {}}, {2, -1, failed, {}},    {2, -42, failed, {}},
        {2, 0, running, 0},  {2, 99, running, 99}, {2, 100, done, 100},    {2, 150, running, 150},
        {1, 0, running, {}}, {5, 7, running, {}},  {10, 100, running, {}},
    };
    for (const auto &row : rows) {
        const ProgressDisplay display = progressDisplay(row.stage, row.value);
        EXPECT_EQ(display.text.english, row.text) << row.stage << " " << row.value;
        EXPECT_EQ(display.bar, row.bar) << row.stage << " " << row.value;
    }
}

} // namespace
