// The microphone page: input level with mute, and the monitoring of the microphone in the headset. Its
// settings are bytes 8..15, 24, 25 and 27 of the system block; the input level also goes to Windows.
#pragma once

#include "pages/PageContext.h"

#include <QObject>

class MicrophonePage : public QObject {
    Q_OBJECT

public:
    explicit MicrophonePage(PageContext context);

    // Shows both levels again after the form's texts were set anew; writes nothing.
    void retranslated();

private:
    void setUpControls();
    void connectControls();

    void changeLevel(int level);
    void toggleMute();
    void changeMonitoringLevel(int level);
    void toggleMonitoring();
    void toggleDriver();

    // After a change of the monitoring switch: picture, helper process, block.
    void applyMonitoring();
    void sendEndpointLevel();
    void showMute();
    void showMonitoring();
    void showDriver();

    PageContext context_;
};
