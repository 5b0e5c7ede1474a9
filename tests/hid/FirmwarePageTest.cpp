// The firmware part of the upgrade page on a small window of its own.
#include "hid/FirmwarePage.h"
#include "support/DeviceRecorder.h"

#include <gmock/gmock.h>
#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <utility>
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

TEST(FirmwarePage, AStartDisablesBothButtonsAndEndsTheDeviceMonitor) {
    for (QPushButton Panel::*const button : {&Panel::dongle, &Panel::earphone}) {
        DeviceRecorder &recorder = DeviceRecorder::instance();
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

TEST(FirmwarePage, StagesAreShownThroughTheEventLoop) {
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
    Panel panel;
    const auto shown = [&] { return std::pair(panel.status.text(), panel.progress.value()); };
    for (const auto &step : steps) {
        const auto before = shown();
        EXPECT_EQ(reportUpgradeStage(*panel.page.link(), step.value, step.stage), 0u);
        EXPECT_EQ(shown(), before) << "must be queued";
        QCoreApplication::processEvents();
        EXPECT_EQ(shown(), std::pair(QString::fromLatin1(step.status), step.progress)) << step.stage;
    }
}

TEST(FirmwarePage, BrowsingPutsTheChosenFileIntoThePath) {
    const QTemporaryDir folder;
    const QString chosen = folder.filePath(QStringLiteral("固件.bin"));
    QFile(chosen).open(QIODevice::WriteOnly);
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); // Qt's own can be looked into
    Panel panel;
    for (const QString &file : {chosen, QString()}) { // cancelling empties the field
        QTimer::singleShot(0, &panel.window, [&] {
            auto *dialog = panel.window.findChild<QFileDialog *>();
            ASSERT_NE(dialog, nullptr) << "no dialog, or not one of the window's";
            EXPECT_EQ(dialog->windowTitle(), QStringLiteral("select file to save setting"));
            EXPECT_EQ(dialog->directory().path(), QDir::currentPath());
            EXPECT_EQ(dialog->nameFilters().join(QStringLiteral(";;")),
                      QStringLiteral("binary file(*.bin);;all file(*.*)"));
            dialog->selectFile(file);
            QMetaObject::invokeMethod(dialog, file.isEmpty() ? "reject" : "accept");
        });
        panel.browse.click();
        EXPECT_EQ(panel.path.text(), file);
    }
}

} // namespace
