#include "hid/DeviceEventListener.h"

#include "helpers/LogHelper.h"
#include "hid/HidDevice.h"
#include "hid/KeyEvent.h"
#include "hid/SupportedDevices.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

// What the thread and the window share, held by both.
class DeviceEventListener::Link {
public:
    Link(const std::atomic<uint8_t> &switchState, QAbstractButton &button)
        : switchState_(switchState), button_(&button) {}

    // Emits the click; the switch's state before it, or none when the window is gone.
    std::optional<uint8_t> click() {
        const std::lock_guard<std::mutex> lock(mutex_);
        if (!button_)
            return {};
        const uint8_t before = switchState_;
        emit button_->clicked(false);
        return before;
    }

    void cut() {
        const std::lock_guard<std::mutex> lock(mutex_);
        button_ = nullptr;
    }

    // Set by Windows' messages, taken by the thread.
    std::atomic<bool> devicesChanged{false};

private:
    std::mutex mutex_;
    const std::atomic<uint8_t> &switchState_; // valid while there is a button
    QAbstractButton *button_;
};

namespace {

constexpr uint32_t kReadTimeoutMs = 10;
constexpr std::chrono::milliseconds kPauseAfterReport{100};

// The receiver that the thread listens to, or none.
class Receiver {
public:
    // Opens the first device of the table that is present.
    void open() {
        uint32_t vendorId = 0;
        uint32_t productId = 0;
        uint16_t interfaceNumber = 0;
        uint16_t reportId = 0;
        for (uint32_t row = 0; row < supportedDeviceCount() && !device_.isOpen(); ++row) {
            supportedDevice(row, &vendorId, &productId, &interfaceNumber, &reportId);
            device_.open(vendorId, productId, interfaceNumber, reportId);
        }
        if (!device_.isOpen())
            return;
        reportId_ = static_cast<uint8_t>(reportId);
        const int32_t largest = std::max(device_.inputReportLength(), device_.outputReportLength());
        report_.assign(std::max(KeyEvent::kReportSize, static_cast<size_t>(largest)), 0);
        QOR_TRACE(L"opened receiver %04X:%04X, interface %d, report %d", vendorId, productId, interfaceNumber,
                  reportId);
    }

    void openAgainIfGone() {
        if (device_.isConnected())
            return;
        device_.close();
        open();
    }

    bool isOpen() const { return device_.isOpen(); }

    bool read() {
        return static_cast<int32_t>(device_.read(report_.data(), reportId_, kReadTimeoutMs)) >=
               device_.inputReportLength();
    }

    bool isKeyEvent() const { return KeyEvent::isButtonPress(report_.data()); }

    void answer(uint8_t switchState) {
        KeyEvent::writeAnswer(report_.data(), switchState);
        device_.write(report_.data(), reportId_, 0);
    }

private:
    HidDevice device_;
    uint8_t reportId_ = 0;
    std::vector<uint8_t> report_;
};

} // namespace

[[noreturn]] void DeviceEventListener::listen(Link &link) {
    Receiver receiver;
    receiver.open();
    for (;;) {
        if (link.devicesChanged.exchange(false))
            receiver.openAgainIfGone();
        const auto nextPoll = std::chrono::steady_clock::now() + std::chrono::milliseconds(kReadTimeoutMs);
        if (receiver.isOpen() && !receiver.read()) {
            // Nothing to add after a time-out; an unplugged device fails at once and must not burn a core.
            std::this_thread::sleep_until(nextPoll);
            continue;
        }
        if (receiver.isOpen() && receiver.isKeyEvent()) {
            if (const std::optional<uint8_t> before = link.click())
                receiver.answer(*before);
        }
        std::this_thread::sleep_for(kPauseAfterReport); // without a receiver, too
    }
}

void DeviceEventListener::threadProcedure(const std::shared_ptr<Link> &link) {
    try {
        listen(*link);
    } catch (const std::exception &error) {
        QOR_LOG(L"device event listener ended: %S", error.what());
    }
}

DeviceEventListener::DeviceEventListener(const std::atomic<uint8_t> &switchState, QAbstractButton &button)
    : link_(std::make_shared<Link>(switchState, button)) {
    try {
        std::thread(&threadProcedure, link_).detach();
    } catch (const std::exception &error) {
        QOR_LOG(L"device event listener did not start: %S", error.what());
    }
}

DeviceEventListener::~DeviceEventListener() {
    link_->cut();
}

void DeviceEventListener::devicesChanged() {
    link_->devicesChanged = true;
}
