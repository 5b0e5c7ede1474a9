// The microphone page: settings of the system block, Windows' level and the helper process.
#include "ui/pages/MicrophonePage.h"
#include "ui/pages/PageTest.h"

#include <functional>
#include <limits>

namespace {

using Calls = std::vector<std::string>;

constexpr char kRunning[] = "_is_task_running(normal.exe)";
constexpr char kStart[] = "_start_task(normal.exe, \"\", 0, null)";
constexpr char kKill[] = "_kill_task(normal.exe)";
constexpr char kWrite[] = "setDeviceProperty(1)";

using MicrophonePageTest = PageTest;

TEST_F(MicrophonePageTest, ControlsSendInOrder) {
    SystemHead &head = device.system.head;
    head.micLevel = std::numeric_limits<int32_t>::min(); // beyond the slider: shown and sent as stored
    head.monitorLevel = 25;
    head.monitoringOn = 1;
    const MicrophonePage page(context());
    EXPECT_EQ(takeCalls(), (Calls{"_SetVolum(-2147483648, 1, 0)", kRunning, kStart}));
    EXPECT_EQ(form.label_15->text(), "-2147483648");

    const auto move = [](QSlider *slider, int value) { return [=] { slider->setValue(value); }; };
    const auto click = [](QPushButton *button) { return [=] { button->click(); }; };
    // The library is taken at its word about the helper, even where it still counts a stopped one as running.
    const struct {
        std::function<void()> act;
        int32_t running;
        Calls calls;
        int level, muted, monitorLevel, monitoring;
    } steps[] = {
        {move(form.verticalSlider, 100), 1, {"_SetVolum(100, 1, 0)", kWrite}, 100, 0, 25, 1},
        {move(form.verticalSlider, 0), 1, {"_SetVolum(0, 1, 0)", kWrite}, 0, 1, 25, 1},
        {move(form.verticalSlider, 40), 1, {"_SetVolum(40, 1, 0)", kWrite}, 40, 0, 25, 1},
        {click(form.pushButton_15), 1, {"_SetVolum(0, 1, 0)", kWrite}, 40, 1, 25, 1},
        {click(form.pushButton_15), 1, {"_SetVolum(40, 1, 0)", kWrite}, 40, 0, 25, 1},
        {move(form.verticalSlider_2, 0), 1, {kKill, kWrite}, 40, 0, 0, 0},
        {move(form.verticalSlider_2, 5), 1, {kRunning, kWrite}, 40, 0, 5, 1},
        {click(form.pushButton_16), 1, {kKill, kWrite}, 40, 0, 5, 0},
        {click(form.btn_uninstall_mic), 0, {kRunning, kStart, kWrite}, 40, 0, 5, 1},
    };
    for (const auto &step : steps) {
        SCOPED_TRACE(&step - steps);
        recorder.taskRunning = step.running;
        step.act();
        EXPECT_EQ(takeCalls(), step.calls);
        const SystemHead &sent = recorder.system.head;
        EXPECT_EQ(int{sent.micLevel}, step.level);
        EXPECT_EQ(sent.micMuted, step.muted);
        EXPECT_EQ(int{sent.monitorLevel}, step.monitorLevel);
        EXPECT_EQ(sent.monitoringOn, step.monitoring);
        EXPECT_EQ(shows(form.pushButton_15, "silent-volumeHigh.png"), step.muted);
        EXPECT_EQ(shows(form.pushButton_16, "silent-volumeHigh.png"), !step.monitoring);
    }
}

} // namespace
