// Connection and battery of the headset in the status strip, asked from the receiver at every tick of a
// timer.
#pragma once

#include "pages/PageContext.h"
#include "pages/status/BatteryReport.h"

#include <QObject>
#include <QTimer>

class BatteryStatus : public QObject {
    Q_OBJECT

public:
    // timer: the caller's, who gives it its interval, starts it and asks for the first reading.
    BatteryStatus(PageContext context, QTimer &timer);

    // Blocks for one exchange of reports. A failed one leaves what is shown.
    void refreshBatteryStatus();

signals:
    // The battery has fallen to 20 % or to 10 %; again only after it was charged.
    void ranLow(int percent);

private:
    PageContext context_;
    QTimer &timer_;
    LowBatteryWatch lowBattery_;
};
