// The firmware part of the upgrade page: choosing an image file and starting the upgrade of the receiver
// ("Dongle") or of the headset ("EARPHONE"). GUI thread only, except reportUpgradeStage.
#pragma once

#include <cstdint>
#include <memory>
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
    FirmwarePage(QWidget &window, const FirmwareWidgets &widgets);
    ~FirmwarePage() override;

    // True from the start of the first upgrade until the program ends.
    bool upgradeInProgress() const { return upgradeInProgress_; }

    void browseFirmwareFile();
    // Without a path they show a message box and change nothing. Otherwise both upgrade buttons stay disabled
    // from now on, the device monitor is ended (some 200 ms) and the upgrade's worker thread is started.
    void upgradeEarphone();
    void upgradeDongle();

    // What a worker holds of the page, which may be gone before the worker ends.
    class Link;
    const std::shared_ptr<Link> &link() const { return link_; }

private:
    using Worker = unsigned long(__stdcall *)(void *);
    void startUpgrade(const QString &missingPathText, Worker worker);

    QWidget &window_;
    const FirmwareWidgets widgets_;
    const std::shared_ptr<Link> link_;
    bool upgradeInProgress_ = false;
};

// Shows an upgrade's stage (UpgradeStage.h) on the page, if that still is there; for workers, from any
// thread. Reports of one thread are shown in their order. Returns 0.
uint32_t reportUpgradeStage(FirmwarePage::Link &page, int32_t value, uint32_t stage);
