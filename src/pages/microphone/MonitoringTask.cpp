#include "pages/microphone/MonitoringTask.h"

#include "device/DeviceApi.h"

namespace MonitoringTask {

namespace {
constexpr wchar_t kFileName[] = L"normal.exe";
} // namespace

void ensureRunning() {
    if (!DeviceApi::isTaskRunning(kFileName))
        DeviceApi::startTask(kFileName, L"", DeviceApi::ShowCommand::Hidden, nullptr);
}

void follow(bool wanted) {
    if (wanted)
        ensureRunning();
    else
        DeviceApi::killTask(kFileName);
}

} // namespace MonitoringTask
