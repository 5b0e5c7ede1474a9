#include "simulator/ProcessTest.h"

#include "helpers/WinHandles.h"
#include "simulator/SimulatorLibrary.h"

#include <filesystem>
#include <gmock/gmock.h>

using testing::HasSubstr;

namespace {

constexpr wchar_t kMutexName[] = L"Global\\{C2B5E0A1-0D7E-4E5C-9F1B-6E1D2A7C4B10}";

std::wstring ownPath() {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return path;
}

class ProcessTest : public SimulatorTest {
protected:
    ~ProcessTest() override {
        library_.killTask(L"normal.exe");
        library_.killTask(L"helper copy.exe");
    }

    SimulatorLibrary library_;
};

// Exit code of the test program, or a copy of it, as a second process.
DWORD runSecondProcess(const std::wstring &program, const wchar_t *option, const std::wstring &argument) {
    std::wstring commandLine = L"\"" + program + L"\" " + option + L" " + argument;
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION created{};
    DWORD exitCode = 999;
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &created))
        return exitCode;
    const UniqueHandle process(created.hProcess), thread(created.hThread);
    if (WaitForSingleObject(process.get(), 20000) == WAIT_OBJECT_0)
        GetExitCodeProcess(process.get(), &exitCode);
    return exitCode;
}

DWORD claimInAnotherProcess(const std::wstring &name) {
    return runSecondProcess(ownPath(), kClaimOption, name);
}

TEST_F(ProcessTest, HelperIsStartedFoundAndStopped) {
    EXPECT_EQ(library_.isTaskRunning(L"normal.exe"), 0);
    EXPECT_EQ(library_.startTask(L"normal.exe", L"", 0, nullptr), 1);
    EXPECT_EQ(library_.isTaskRunning(L"normal.exe"), 1);
    EXPECT_EQ(library_.isTaskRunning(L"NORMAL.EXE"), 1) << "names without regard to case";
    EXPECT_EQ(library_.isTaskRunning(L"norm"), 0) << "whole names only";
    EXPECT_EQ(library_.startTask(L"normal.exe", nullptr, 0, L""), 1);
    EXPECT_EQ(library_.isTaskRunning(L"normal.exe"), 2);
    EXPECT_EQ(library_.killTask(L"Normal.exe"), 2);
    EXPECT_EQ(library_.isTaskRunning(L"normal.exe"), 0) << "gone when the call returns";
    EXPECT_EQ(library_.killTask(L"normal.exe"), 0);
}

TEST_F(ProcessTest, TheGivenFolderComesFirst) {
    const std::wstring folder = folder_ + L"\\文件 夹";
    std::filesystem::create_directory(folder);
    std::filesystem::copy_file(std::filesystem::path(ownPath()).parent_path() / L"normal.exe",
                               folder + L"\\helper copy.exe");
    EXPECT_EQ(library_.startTask(L"helper copy.exe", nullptr, 5, nullptr), 0) << "not beside the executable";
    EXPECT_EQ(library_.startTask(L"helper copy.exe", L"/quiet", 5, folder.c_str()), 1);
    EXPECT_THAT(lastLine(), HasSubstr("文件 夹\") -> 1"));
    EXPECT_EQ(library_.isTaskRunning(L"helper copy.exe"), 1);
    EXPECT_EQ(library_.killTask(L"helper copy.exe"), 1);
    EXPECT_EQ(library_.startTask(L"normal.exe", nullptr, 0, folder.c_str()), 1)
        << "then beside the executable";
}

TEST_F(ProcessTest, BadTasksAreRefused) {
    writeFile(folder_ + L"\\broken.exe", "not a program");
    EXPECT_EQ(library_.startTask(L"broken.exe", nullptr, 0, folder_.c_str()), 0);
    EXPECT_EQ(library_.startTask(L"missing.exe", nullptr, 0, nullptr), 0);
    EXPECT_EQ(lastLine(), "_start_task(\"missing.exe\", null, 0, null) -> 0 (no such file)");
    for (const wchar_t *name : {static_cast<const wchar_t *>(nullptr), L""}) {
        EXPECT_EQ(library_.startTask(name, nullptr, 0, nullptr), 0);
        EXPECT_EQ(library_.isTaskRunning(name), 0);
        EXPECT_EQ(library_.killTask(name), 0);
    }
}

TEST_F(ProcessTest, NeverEndsTheCaller) {
    const auto own = std::filesystem::path(ownPath());
    EXPECT_EQ(library_.isTaskRunning(own.filename().c_str()), 1);
    std::filesystem::copy_file(own, folder_ + L"\\self.exe");
    std::filesystem::copy_file(own.parent_path() / L"qor_ecd_api.dll", folder_ + L"\\qor_ecd_api.dll");
    EXPECT_EQ(runSecondProcess(folder_ + L"\\self.exe", kStopOption, L"self.exe"),
              static_cast<DWORD>(kStillRunning));
}

TEST_F(ProcessTest, InstanceNameIsHeldUntilTheProcessEnds) {
    EXPECT_EQ(claimInAnotherProcess(kMutexName), 0u);
    EXPECT_EQ(claimInAnotherProcess(kMutexName), 0u) << "the first holder has ended";
    EXPECT_EQ(library_.isAlreadyRun(kMutexName), 0);
    EXPECT_EQ(claimInAnotherProcess(kMutexName), 1u);
    { const SimulatorLibrary reloaded; }
    EXPECT_EQ(claimInAnotherProcess(kMutexName), 1u) << "the name belongs to the process, not to one loading";
    EXPECT_EQ(library_.isAlreadyRun(nullptr), 0);
}

TEST_F(ProcessTest, ElevationCanBeForced) {
    const int32_t real = library_.isRunningAsAdmin();
    EXPECT_EQ(real, 1) << "tests run as administrator";
    setKnob(L"ForceElevated", 0);
    EXPECT_EQ(library_.isRunningAsAdmin(), 0);
    setKnob(L"ForceElevated", 1);
    EXPECT_EQ(library_.isRunningAsAdmin(), 1);
    setKnob(L"RestartResult", 0);
    EXPECT_EQ(library_.restartAsAdmin(), 0);
    setKnob(L"RestartResult", 1);
    EXPECT_EQ(library_.restartAsAdmin(), 1);
    EXPECT_EQ(library_.isTaskRunning(std::filesystem::path(ownPath()).filename().c_str()), 1)
        << "nothing was started";
}

} // namespace
