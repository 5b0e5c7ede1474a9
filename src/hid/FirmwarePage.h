// The firmware part of the upgrade page: choosing an image file and starting the upgrade of the receiver
// ("Dongle") or of the headset ("EARPHONE"). GUI thread only, except reportUpgradeStage.
#pragma once

#include <cstdint>
#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QObject>
#include <QProgressBar>

struct FirmwareWidgets {
    QLineEdit *path;
    QAbstractButton *browse;
    QAbstractButton *upgradeDongle;
    QAbstractButton *upgradeEarphone;
    QLabel *status;         // shared with the software update
    QProgressBar *progress; // likewise
};

class FirmwarePage : public QObject {
    Q_OBJECT

public:
    // window: parent of the file dialog.
    FirmwarePage(QWidget *window, const FirmwareWidgets &widgets, QObject *parent);

    // True from the start of the first upgrade until the program ends.
    bool upgradeInProgress() const { return upgradeInProgress_; }

    void browseFirmwareFile();
    // Without a path they show a message box and change nothing. Otherwise both upgrade buttons stay disabled
    // from now on, the device monitor is ended (some 200 ms) and the upgrade's worker thread is started.
    void upgradeEarphone();
    void upgradeDongle();

private:
    friend uint32_t reportUpgradeStage(FirmwarePage &page, int32_t value, uint32_t stage);

    using Worker = unsigned long(__stdcall *)(void *);
    void startUpgrade(const QString &missingPathText, Worker worker);

    QWidget *const window_;
    const FirmwareWidgets widgets_;
    bool upgradeInProgress_ = false;
};

// Shows an upgrade's stage (UpgradeStage.h) on the page; for workers, from any thread. Reports of one thread
// are shown in their order. Returns 0.
uint32_t reportUpgradeStage(FirmwarePage &page, int32_t value, uint32_t stage);
