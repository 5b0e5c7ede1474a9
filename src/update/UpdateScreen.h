// The way from the download thread to the window: what it shows becomes a queued change of the widgets in the
// GUI thread. The window may be closed at any time; from then on everything asked of the screen is dropped.
#pragma once

#include "helpers/InterfaceLanguage.h"
#include "update/UpdateTexts.h"

#include <cstdint>
#include <functional>
#include <mutex>
#include <QPointer>

class QLabel;
class QObject;
class QProgressBar;

class UpdateScreen {
public:
    // Made in the GUI thread. guiObject, which lives there, receives the queued changes until detach.
    UpdateScreen(QLabel *status, QProgressBar *progress, const InterfaceLanguage &language,
                 QObject *guiObject);
    ~UpdateScreen();

    // GUI thread: no queued change is started after this.
    void detach();

    // The rest is for any thread.
    void queueStatus(const BilingualText &text);
    void queueProgress(int32_t percent);
    void queueInGui(std::function<void()> action);

    bool isAttached() const;
    bool isEnglish() const; // the interface language of the moment

private:
    mutable std::mutex mutex_;
    QObject *guiObject_;                // null once detached
    const InterfaceLanguage *language_; // null once detached
    QPointer<QLabel> status_;           // looked at in the GUI thread only
    QPointer<QProgressBar> progress_;
};
