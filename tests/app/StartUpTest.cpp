#include "app/StartUp.h"
#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "support/BoxAnswerer.h"
#include "support/DeviceRecorder.h"

#include <gtest/gtest.h>

namespace {

using Calls = std::vector<std::string>;

class StartUpTest : public testing::Test {
protected:
    void SetUp() override {
        recorder.reset();
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\QorSoundKit");
        Registry::CreateKey(ProductSettings::kProductKey);
    }

    DeviceRecorder &recorder = DeviceRecorder::instance();
};

TEST_F(StartUpTest, ElevationDecidesTheExitCode) {
    EXPECT_EQ(std::nullopt, StartUp::ensureElevated());
    recorder.elevated = 0;
    recorder.restartResult = 7;
    EXPECT_EQ(1, StartUp::ensureElevated());
    recorder.restartResult = 0;
    EXPECT_EQ(-1, StartUp::ensureElevated());
    EXPECT_EQ((Calls{"_IsRunningAsAdmin()", "_IsRunningAsAdmin()", "_RestartAsAdmin()", "_IsRunningAsAdmin()",
                     "_RestartAsAdmin()"}),
              recorder.calls);
}

TEST_F(StartUpTest, RunningInstanceIsAskedToEnd) {
    StartUp::takeOverFromRunningInstance();
    EXPECT_EQ((Calls{"_IsAlreadyRun(Global\\{45A8C662-65D7-4679-801E-604A2DF76732})"}), recorder.calls);
    EXPECT_FALSE(Registry::ValueExists(ProductSettings::kProductKey, L"exitCmd"));

    recorder.alreadyRuns = 1;
    const DWORD before = GetTickCount();
    StartUp::takeOverFromRunningInstance();
    EXPECT_GE(GetTickCount() - before, 980u);
    EXPECT_EQ(1u, Registry::ReadDwordValue(ProductSettings::kProductKey, L"exitCmd"));

    Registry::DeleteKey(ProductSettings::kProductKey);
    StartUp::takeOverFromRunningInstance(); // nowhere to ask: goes on
}

TEST_F(StartUpTest, WithoutDeviceTheRequestIsWithdrawnAfterTheMessage) {
    EXPECT_EQ(std::nullopt, StartUp::requireDevice());
    for (const int count : {0, -1}) {
        recorder.deviceCount = count;
        Registry::WriteDwordValue(ProductSettings::kProductKey, L"exitCmd", 1);
        BoxAnswerer answer(0);
        EXPECT_EQ(0, StartUp::requireDevice());
        EXPECT_EQ(L"温馨提示", answer.box().title);
        EXPECT_EQ(L"Can't connect to device", answer.box().text); // the test's locale is not 2052
        EXPECT_EQ(0u, Registry::ReadDwordValue(ProductSettings::kProductKey, L"exitCmd"));
    }
    Registry::DeleteValue(ProductSettings::kProductKey, L"exitCmd");
    BoxAnswerer answer(0);
    EXPECT_EQ(0, StartUp::requireDevice());
    EXPECT_TRUE(answer.box().seen);
    EXPECT_FALSE(Registry::ValueExists(ProductSettings::kProductKey, L"exitCmd"));
}

} // namespace
