// The firmware part of the upgrade page on a small window of its own.
#include "hid/FirmwarePage.h"
#include "support/DeviceRecorder.h"

#include <functional>
#include <gmock/gmock.h>
#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <windows.h>

namespace {

using testing::ElementsAre;

// The page's widgets on a window without the rest of the panel.
struct Panel {
    QWidget window;
    QLineEdit path{&window};
    QPushButton browse{&window};
    QPushButton dongle{&window};
    QPushButton earphone{&window};
    QLabel status{QStringLiteral("before"), &window};
    QProgressBar progress{&window};
    FirmwarePage page{window, {&path, &browse, &dongle, &earphone, &status, &progress}};
};

class FirmwarePageTest : public testing::Test {
protected:
    void SetUp() override { recorder.reset(); }

    DeviceRecorder &recorder = DeviceRecorder::instance();
    Panel panel;
};

TEST_F(FirmwarePageTest, AStartDisablesBothButtonsAndEndsTheDeviceMonitor) {
    for (QPushButton Panel::*const button : {&Panel::dongle, &Panel::earphone}) {
        recorder.reset();
        Panel started;
        started.path.setText(QStringLiteral("no such file"));
        const DWORD start = GetTickCount();
        (started.*button).click();
        const DWORD end = GetTickCount();
        EXPECT_FALSE(started.dongle.isEnabled() || started.earphone.isEnabled());
        EXPECT_TRUE(started.page.upgradeInProgress());
        ASSERT_THAT(recorder.calls, ElementsAre("_kill_task(devmonitor.exe)"));
        EXPECT_GE(recorder.callTimes[0] - start, 80u) << "no pause before"; // the clock has steps of 16 ms
        EXPECT_GE(end - recorder.callTimes[0], 80u) << "no pause after";
        (started.*button).click(); // disabled: nothing more happens
        EXPECT_EQ(recorder.calls.size(), 1u);
        EXPECT_EQ(started.status.text(), QStringLiteral("before"));
    }
}

TEST_F(FirmwarePageTest, StagesAreShownThroughTheEventLoop) {
    const struct {
        uint32_t stage;
        int32_t value;
        const char *status;
        int progress;
    } steps[] = {
        {0, 50, "start progressing", 0}, {1, 50, "openning OTA device", 0},
        {2, 50, "Entering OTA mode", 0}, {3, 50, "writing flash...", 0},
        {4, 37, "writing flash...", 37}, {5, 50, "waiting END status...", 37},
        {6, 50, "write flash END ", 37}, {7, 50, "", 37},
        {0, 50, "start progressing", 0},
    };
    for (const auto &step : steps) {
        const QString statusBefore = panel.status.text();
        const int progressBefore = panel.progress.value();
        EXPECT_EQ(reportUpgradeStage(*panel.page.link(), step.value, step.stage), 0u);
        EXPECT_EQ(panel.status.text(), statusBefore) << "must be queued";
        EXPECT_EQ(panel.progress.value(), progressBefore);
        QCoreApplication::processEvents();
        EXPECT_EQ(panel.status.text(), QString::fromLatin1(step.status)) << step.stage;
        EXPECT_EQ(panel.progress.value(), step.progress) << step.stage;
    }
}

TEST_F(FirmwarePageTest, BrowsingPutsTheChosenFileIntoThePath) {
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("固件.bin"));
    QFile(file).open(QIODevice::WriteOnly);
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); // Qt's own can be looked into
    const auto browse = [this](const std::function<void(QFileDialog &)> &answer) {
        QTimer::singleShot(200, &panel.window, [this, answer] {
            auto *dialog = panel.window.findChild<QFileDialog *>();
            ASSERT_NE(dialog, nullptr) << "no dialog, or not one of the window's";
            EXPECT_EQ(dialog->windowTitle(), QStringLiteral("select file to save setting"));
            EXPECT_EQ(dialog->directory().path(), QDir::currentPath());
            EXPECT_EQ(dialog->nameFilters().join(QStringLiteral(";;")),
                      QStringLiteral("binary file(*.bin);;all file(*.*)"));
            answer(*dialog);
        });
        panel.browse.click();
        return panel.path.text();
    };
    EXPECT_EQ(browse([&](QFileDialog &dialog) {
                  dialog.selectFile(file);
                  QMetaObject::invokeMethod(&dialog, "accept");
              }),
              file);
    EXPECT_EQ(browse([](QFileDialog &dialog) { dialog.reject(); }), QString())
        << "cancelling empties the field";
}

} // namespace
