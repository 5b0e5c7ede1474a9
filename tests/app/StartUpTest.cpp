#include "app/StartUp.h"
#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "support/BoxAnswerer.h"
#include "support/DeviceRecorder.h"

#include <gtest/gtest.h>

namespace {

using ProductSettings::kProductKey;

class StartUpTest : public testing::Test {
protected:
    void SetUp() override {
        recorder.reset();
        RegDeleteTreeW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\QorSoundKit");
        Registry::CreateKey(kProductKey);
    }

    DeviceRecorder &recorder = DeviceRecorder::instance();
};

TEST_F(StartUpTest, RunningInstanceIsAskedToEndAndGivenASecond) {
    StartUp::takeOverFromRunningInstance();
    EXPECT_FALSE(Registry::ValueExists(kProductKey, L"exitCmd"));

    recorder.alreadyRuns = 1;
    const DWORD before = GetTickCount();
    StartUp::takeOverFromRunningInstance();
    EXPECT_GE(GetTickCount() - before, 980u);
    EXPECT_EQ(1u, Registry::ReadDwordValue(kProductKey, L"exitCmd"));
    EXPECT_EQ(recorder.calls,
              std::vector<std::string>(2, "_IsAlreadyRun(Global\\{45A8C662-65D7-4679-801E-604A2DF76732})"));
}

TEST_F(StartUpTest, WithoutDeviceTheRequestIsWithdrawnAfterTheMessage) {
    for (const int count : {0, -1}) {
        recorder.deviceCount = count;
        Registry::WriteDwordValue(kProductKey, L"exitCmd", 1);
        BoxAnswerer answer(0);
        EXPECT_EQ(0, StartUp::requireDevice());
        EXPECT_EQ(L"温馨提示", answer.box().title);
        EXPECT_EQ(L"Can't connect to device", answer.box().text); // the test's locale is not 2052
        EXPECT_EQ(0u, Registry::ReadDwordValue(kProductKey, L"exitCmd"));
    }
    Registry::DeleteValue(kProductKey, L"exitCmd");
    BoxAnswerer answer(0);
    EXPECT_EQ(0, StartUp::requireDevice());
    EXPECT_FALSE(Registry::ValueExists(kProductKey, L"exitCmd")) << "without a request nothing is written";
}

} // namespace
