#include "hid/DeviceEventListener.h"

#include "helpers/LogHelper.h"
#include "hid/HidDevice.h"
#include "hid/KeyEvent.h"
#include "hid/SupportedDevices.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace {

constexpr uint32_t kReadTimeoutMs = 10;
constexpr std::chrono::milliseconds kPauseAfterReport{100};

// What the thread may touch of the window, for as long as there is one.
class SwitchLink {
public:
    SwitchLink(const volatile uint8_t *switchByte, QAbstractButton *button)
        : switchByte_(switchByte), button_(button) {}

    // Emits the click; the switch's state before it, or none when the window is gone.
    std::optional<uint8_t> click() {
        const std::lock_guard<std::mutex> lock(mutex_);
        if (!button_)
            return {};
        const uint8_t before = *switchByte_;
        emit button_->clicked(false);
        return before;
    }

    void cut() {
        const std::lock_guard<std::mutex> lock(mutex_);
        button_ = nullptr;
    }

private:
    std::mutex mutex_;
    const volatile uint8_t *const switchByte_;
    QAbstractButton *button_;
};

// Held by the thread as well, which may outlive this one at the end of the process.
std::shared_ptr<SwitchLink> &currentLink() {
    static std::shared_ptr<SwitchLink> link;
    return link;
}

// The report ID of the first supported device that could be opened, or that of the last row tried.
uint8_t openSupportedDevice(HidDevice &device) {
    uint32_t vendorId = 0;
    uint32_t productId = 0;
    uint16_t interfaceNumber = 0;
    uint16_t reportId = 0;
    for (uint32_t row = 0; row < supportedDeviceCount(); ++row) {
        supportedDevice(row, &vendorId, &productId, &interfaceNumber, &reportId);
        if (device.open(vendorId, productId, interfaceNumber, reportId))
            break;
    }
    return static_cast<uint8_t>(reportId);
}

void handleReport(HidDevice &device, uint8_t reportId, std::vector<uint8_t> &report, SwitchLink &link) {
    if (!KeyEvent::isButtonPress(report.data()))
        return;
    if (const std::optional<uint8_t> before = link.click()) {
        KeyEvent::writeAnswer(report.data(), *before);
        device.write(report.data(), reportId, 0);
    }
}

[[noreturn]] void listen(SwitchLink &link) {
    HidDevice device;
    const uint8_t reportId = openSupportedDevice(device);
    const int32_t wholeReport = device.isOpen() ? device.inputReportLength() : 0;
    const int32_t largestReport = std::max(device.inputReportLength(), device.outputReportLength());
    std::vector<uint8_t> report(std::max(KeyEvent::kReportSize, static_cast<size_t>(largestReport)));
    for (;;) {
        const auto nextPoll = std::chrono::steady_clock::now() + std::chrono::milliseconds(kReadTimeoutMs);
        if (static_cast<int32_t>(device.read(report.data(), reportId, kReadTimeoutMs)) < wholeReport) {
            // Nothing to add after a time-out; an unplugged device fails at once and must not burn a core.
            std::this_thread::sleep_until(nextPoll);
            continue;
        }
        handleReport(device, reportId, report, link);
        std::this_thread::sleep_for(kPauseAfterReport);
    }
}

void threadProcedure(const std::shared_ptr<SwitchLink> &link) {
    try {
        listen(*link);
    } catch (const std::exception &error) {
        QOR_LOG(L"device event listener ended: %S", error.what());
    }
}

} // namespace

void startDeviceEventListener(const volatile uint8_t *switchByte, QAbstractButton *button) {
    detachDeviceEventListener();
    auto link = std::make_shared<SwitchLink>(switchByte, button);
    currentLink() = link;
    try {
        std::thread(&threadProcedure, std::move(link)).detach();
    } catch (const std::exception &error) {
        QOR_LOG(L"device event listener did not start: %S", error.what());
    }
}

void detachDeviceEventListener() {
    if (const std::shared_ptr<SwitchLink> link = std::exchange(currentLink(), nullptr))
        link->cut();
}
