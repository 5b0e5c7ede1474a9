// The firmware part of the upgrade page on a small window of its own.
#include "hid/FirmwarePage.h"
#include "support/DeviceRecorder.h"

#include <gmock/gmock.h>
#include <QCoreApplication>
#include <QPushButton>

class FirmwarePageTest : public testing::Test {
protected:
    QWidget window;
    QLineEdit path{QStringLiteral("no such file"), &window};
    QPushButton browse{&window}, dongle{&window}, earphone{&window};
    QLabel status{&window};
    QProgressBar progress{&window};
    FirmwarePage page{window, {&path, &browse, &dongle, &earphone, &status, &progress}};
};

TEST_F(FirmwarePageTest, AStartDisablesBothButtonsAndEndsTheDeviceMonitor) {
    dongle.click();
    EXPECT_TRUE(page.upgradeInProgress() && !dongle.isEnabled() && !earphone.isEnabled());
    EXPECT_THAT(DeviceRecorder::instance().calls, testing::ElementsAre("_kill_task(devmonitor.exe)"));
}

TEST_F(FirmwarePageTest, StagesAreShownThroughTheEventLoop) {
    const struct {
        uint32_t stage;
        const char *status;
        int progress; // 50 is reported
    } steps[] = {
        {0, "start progressing", 0}, {1, "openning OTA device", 0},
        {2, "Entering OTA mode", 0}, {3, "writing flash...", 0},
        {4, "writing flash...", 50}, {5, "waiting END status...", 50},
        {6, "write flash END ", 50}, {7, "", 50},
        {0, "start progressing", 0},
    };
    for (const auto &step : steps) {
        const QString before = status.text();
        reportUpgradeStage(*page.link(), 50, step.stage);
        EXPECT_EQ(status.text(), before) << "must be queued";
        QCoreApplication::processEvents();
        EXPECT_EQ(status.text(), QString::fromLatin1(step.status)) << step.stage;
        EXPECT_EQ(progress.value(), step.progress) << step.stage;
    }
}
