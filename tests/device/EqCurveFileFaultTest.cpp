// Saving while WriteFileBytes stops in the middle: full disk, told or not, or the end of the process.
#include "device/EqCurveFile.h"
#include "helpers/LogHelper.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <optional>

static std::optional<int> writeResult; // none: the process ends
static int logLines;

void LogWrite(const char *, uint32_t, const char *, bool, const wchar_t *, ...) {
    ++logLines;
}

int WriteFileBytes(const wchar_t *path, const void *bytes, size_t byteCount) {
    std::ofstream(std::filesystem::path(path), std::ios::binary)
        .write(static_cast<const char *>(bytes), static_cast<std::streamsize>(byteCount / 2));
    return writeResult.value();
}

void ReadFileBytes(const wchar_t *, void *, size_t) {}

TEST(EqCurveFileFault, OldCurvesSurviveASaveThatStopsInTheMiddle) {
    const std::filesystem::path file = L"C:\\windows\\temp\\faults.bin";
    const std::string old(sizeof(EqCurveStore), 'o');
    for (const std::optional<int> each : {std::optional(EOF), std::optional(0), std::optional<int>()}) {
        std::ofstream(file, std::ios::binary) << old;
        writeResult = each;
        logLines = 0;
        try {
            EqCurveFile::save(file.wstring(), EqCurveStore{});
            EXPECT_EQ(logLines, 1);
        } catch (const std::bad_optional_access &) {
        }
        std::ifstream left(file, std::ios::binary);
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(left), {}), old);
    }
}
