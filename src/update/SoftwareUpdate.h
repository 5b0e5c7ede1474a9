// Looks for an installer on the update server that is not the installed one, and has it downloaded and
// started. Versions are recognised by the installer file's CRC. Lives in the GUI thread.
#pragma once

#include "update/ServerConfig.h"
#include "update/UpdateScreen.h"

#include <memory>
#include <QObject>
#include <string>

class QAbstractButton;
class QPushButton;

// Where the update shows itself; other code may use the same widgets.
struct UpdateWidgets {
    QLabel *status;
    QProgressBar *progress;
    QPushButton *check;
};

enum class CheckResult : int32_t {
    NewVersion = 1,
    NoConfiguration = -1, // missing or damaged
    NoPackageCopy = -3,   // of the installed version
    NoInformation = -4,   // from the server
    EmptyInformation = -5,
    IsCurrent = -6,
};

class SoftwareUpdate : public QObject {
    Q_OBJECT

public:
    // Connects the check button. language must outlive this object.
    SoftwareUpdate(const UpdateWidgets &widgets, const InterfaceLanguage &language,
                   QObject *parent = nullptr);
    ~SoftwareUpdate() override; // a running download goes on without a screen and starts nothing

    // The check at start-up: shows the outcome, and for a new version emits updateButton's clicked first.
    void checkAtStart(QAbstractButton *updateButton);

    // Asks the server; blocks meanwhile, 8 s at most. The result is logged.
    CheckResult checkForUpdate();

    // Shows the status in the present language. A negative one leaves all texts as they are.
    void retranslated();

    // Checks, and starts the download of a new version. The check button is disabled until both are over.
    void onCheckUpdateClicked();

private:
    CheckResult askServer();
    void showStatus(const BilingualText &text);

    UpdateWidgets widgets_;
    const InterfaceLanguage &language_;
    std::shared_ptr<UpdateScreen> screen_; // shared with download threads
    ServerConfig config_;                  // of the last check
    std::wstring updateInformation_;       // of the last check
};
