#include "pages/status/BatteryStatus.h"

#include "device/DeviceApi.h"
#include "helpers/LogHelper.h"
#include "pages/StyleSheetText.h"
#include "ui_demoClass.h"

BatteryStatus::BatteryStatus(PageContext context, QTimer &timer) : context_(context), timer_(timer) {
    connect(&timer_, &QTimer::timeout, this, &BatteryStatus::refreshBatteryStatus);
}

void BatteryStatus::refreshBatteryStatus() {
    DeviceApi::HidReport reply{};
    const int32_t result = DeviceApi::transferReport(context_.device.usbIds, makeBatteryRequest(), &reply);
    // Counted from the end of the exchange, so that a receiver that answers slowly still leaves the window
    // its time.
    if (timer_.isActive())
        timer_.start();
    if (result <= 0)
        return;
    QOR_TRACE(L"0x%.4x", static_cast<unsigned>(result));

    const BatteryView view = describeBattery(reply);
    Ui::demoClass &form = context_.form;
    StyleSheetText::setBackgroundImage(*form.label_227, QString::fromStdString(view.usbImage));
    StyleSheetText::setBackgroundImage(*form.label_228, QString::fromStdString(view.batteryImage));
    form.label_240->setText(QString::fromStdString(view.percentage));
    if (const auto percent = lowBattery_.hear(reply))
        emit ranLow(*percent);
}
