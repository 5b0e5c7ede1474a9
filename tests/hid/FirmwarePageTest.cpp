// The firmware part of the upgrade page on a small window of its own.
#include "hid/FirmwarePage.h"
#include "support/BoxAnswerer.h"
#include "support/DeviceRecorder.h"

#include <gmock/gmock.h>
#include <QDir>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <thread>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The page's widgets on a window without the rest of the panel.
struct Panel {
    QWidget window;
    QLineEdit path{&window};
    QPushButton browse{&window};
    QPushButton dongle{&window};
    QPushButton earphone{&window};
    QLabel status{QStringLiteral("before"), &window};
    QProgressBar progress{&window};
    FirmwarePage page{&window, {&path, &browse, &dongle, &earphone, &status, &progress}, nullptr};
};

class FirmwarePageTest : public testing::Test {
protected:
    void SetUp() override { recorder.reset(); }

    DeviceRecorder &recorder = DeviceRecorder::instance();
    Panel panel;
    QLabel &status = panel.status;
    QProgressBar &progress = panel.progress;
};

TEST_F(FirmwarePageTest, WithoutAPathThereIsOnlyAMessage) {
    const struct {
        QPushButton &button;
        const wchar_t *text;
    } cases[] = {
        {panel.earphone, L"Please select a EARPHONE binary file to update"},
        {panel.dongle, L"Please select a DONGLE binary file to update"},
    };
    for (const auto &c : cases) {
        BoxAnswerer answerer(0);
        c.button.click();
        EXPECT_TRUE(answerer.box().seen);
        EXPECT_EQ(answerer.box().text, c.text);
        EXPECT_EQ(answerer.box().title, L"Error") << "the system's default caption";
        EXPECT_EQ(answerer.box().buttons.size(), 1u);
        EXPECT_EQ(answerer.box().owner, nullptr);
        EXPECT_TRUE(panel.dongle.isEnabled() && panel.earphone.isEnabled());
        EXPECT_FALSE(panel.page.upgradeInProgress());
        EXPECT_THAT(recorder.calls, IsEmpty());
    }
}

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
        {0, 50, "start progressing", 0},
        {1, 50, "openning OTA device", 0},
        {2, 50, "Entering OTA mode", 0},
        {3, 50, "writing flash...", 0},
        {4, 37, "writing flash...", 37},
        {4, 99, "writing flash...", 99},
        {5, 50, "waiting END status...", 99},
        {6, 50, "write flash END ", 99},
        {7, 50, "", 99},
        {0, 50, "start progressing", 0},
        {0xFFFFFFFF, 50, "", 0},
    };
    for (const auto &step : steps) {
        const QString before = status.text();
        const int progressBefore = progress.value();
        EXPECT_EQ(reportUpgradeStage(panel.page, step.value, step.stage), 0u);
        EXPECT_EQ(status.text(), before) << "must be queued";
        EXPECT_EQ(progress.value(), progressBefore);
        QCoreApplication::processEvents();
        EXPECT_EQ(status.text(), QString::fromLatin1(step.status)) << step.stage;
        EXPECT_EQ(progress.value(), step.progress) << step.stage;
    }
}

TEST_F(FirmwarePageTest, ReportsOfFourThreadsArriveWholeAndInTheirOrder) {
    constexpr int kThreads = 4;
    constexpr int kReports = 500;
    progress.setRange(0, kThreads * kReports);
    std::vector<std::vector<int>> seen(kThreads);
    QObject::connect(&progress, &QProgressBar::valueChanged, &panel.window, [&](int value) {
        seen[static_cast<size_t>(value / kReports)].push_back(value % kReports);
    });
    std::vector<std::thread> workers;
    for (int thread = 0; thread < kThreads; ++thread) {
        workers.emplace_back([this, thread] {
            for (int i = 0; i < kReports; ++i)
                reportUpgradeStage(panel.page, thread * kReports + i, 4);
        });
    }
    for (std::thread &worker : workers)
        worker.join();
    QCoreApplication::processEvents();
    std::vector<int> all(kReports);
    for (int i = 0; i < kReports; ++i)
        all[static_cast<size_t>(i)] = i;
    for (const std::vector<int> &values : seen)
        EXPECT_EQ(values, all);
}

// Answers the native file dialog from a thread of its own.
class FileDialogAnswerer {
public:
    // An empty file name presses "Cancel".
    explicit FileDialogAnswerer(std::wstring fileName)
        : thread_([this, name = std::move(fileName)] { answer(name); }) {}
    ~FileDialogAnswerer() { join(); }
    std::wstring caption() {
        join();
        return caption_;
    }

private:
    void join() {
        if (thread_.joinable())
            thread_.join();
    }

    void answer(const std::wstring &fileName) {
        HWND dialog = nullptr;
        for (int i = 0; i < 500 && !dialog; ++i) {
            Sleep(20);
            dialog = FindWindowW(L"#32770", nullptr);
        }
        if (!dialog)
            return;
        Sleep(500); // the dialog fills its lists first
        wchar_t text[256] = L"";
        GetWindowTextW(dialog, text, 256);
        caption_ = text;
        if (!fileName.empty()) {
            EnumChildWindows(dialog, &typeInto, reinterpret_cast<LPARAM>(fileName.c_str()));
            Sleep(100);
        }
        PostMessageW(dialog, WM_COMMAND, fileName.empty() ? IDCANCEL : IDOK, 0);
    }

    static BOOL CALLBACK typeInto(HWND child, LPARAM fileName) {
        wchar_t name[64] = L"";
        GetClassNameW(child, name, 64);
        if (_wcsicmp(name, L"Edit") != 0 || !IsWindowVisible(child))
            return TRUE;
        SendMessageW(child, WM_SETTEXT, 0, fileName);
        return FALSE;
    }

    std::wstring caption_;
    std::thread thread_;
};

TEST_F(FirmwarePageTest, BrowsingPutsTheChosenFileIntoThePath) {
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("固件.bin"));
    QFile(file).open(QIODevice::WriteOnly);
    panel.window.show();
    {
        FileDialogAnswerer answerer(QDir::toNativeSeparators(file).toStdWString());
        panel.browse.click();
        EXPECT_EQ(answerer.caption(), L"select file to save setting");
        EXPECT_EQ(panel.path.text(), file);
    }
    FileDialogAnswerer answerer(L"");
    panel.browse.click();
    EXPECT_EQ(answerer.caption(), L"select file to save setting");
    EXPECT_EQ(panel.path.text(), QString()) << "cancelling empties the field";
}

} // namespace
