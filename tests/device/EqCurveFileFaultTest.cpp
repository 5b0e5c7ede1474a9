// Saving while writing fails: WriteFileBytes is replaced by one that stops in the middle.
#include "device/EqCurveFile.h"
#include "helpers/LogHelper.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <windows.h>

namespace fs = std::filesystem;

namespace {

enum class Fault { FullDisk, FullDiskUnnoticed, ProcessEnds };
Fault fault;
struct ProcessEnd {};
int logLines;

} // namespace

void LogWrite(const char *, uint32_t, const char *, bool isTrace, const wchar_t *, ...) {
    logLines += !isTrace;
}

int WriteFileBytes(const wchar_t *path, const void *bytes, size_t byteCount) {
    std::ofstream(fs::path(path), std::ios::binary)
        .write(static_cast<const char *>(bytes), static_cast<std::streamsize>(byteCount / 2));
    if (fault == Fault::ProcessEnds)
        throw ProcessEnd();
    return fault == Fault::FullDisk ? EOF : 0;
}

void ReadFileBytes(const wchar_t *, void *, size_t) {}

TEST(EqCurveFileFault, OldCurvesSurviveASaveThatStopsInTheMiddle) {
    const fs::path folder =
        fs::temp_directory_path() / (L"eq_faults_" + std::to_wstring(GetCurrentProcessId()));
    const fs::path file = folder / L"eqs.bin";
    const std::string old(748, 'o');
    for (const Fault each : {Fault::FullDisk, Fault::FullDiskUnnoticed, Fault::ProcessEnds}) {
        SCOPED_TRACE(static_cast<int>(each));
        fs::create_directories(folder);
        std::ofstream(file, std::ios::binary) << old;
        fault = each;
        logLines = 0;
        try {
            EqCurveFile::save(file.wstring(), EqCurveStore{});
            EXPECT_EQ(logLines, 1);
            EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);
        } catch (const ProcessEnd &) {
        }
        std::ifstream in(file, std::ios::binary);
        EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), old);
        in.close();
        fs::remove_all(folder);
    }
}
