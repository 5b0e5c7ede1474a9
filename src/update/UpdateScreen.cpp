#include "update/UpdateScreen.h"

#include <QLabel>
#include <QProgressBar>

UpdateScreen::UpdateScreen(QLabel *status, QProgressBar *progress, const InterfaceLanguage &language,
                           QObject *guiObject)
    : guiObject_(guiObject), language_(&language), status_(status), progress_(progress) {}

UpdateScreen::~UpdateScreen() = default;

void UpdateScreen::detach() {
    const std::lock_guard<std::mutex> lock(mutex_);
    guiObject_ = nullptr;
    language_ = nullptr;
}

void UpdateScreen::queueInGui(std::function<void()> action) {
    // The lock keeps the receiver alive until the change stands in its queue, from which its destruction
    // removes it.
    const std::lock_guard<std::mutex> lock(mutex_);
    if (guiObject_)
        QMetaObject::invokeMethod(guiObject_, std::move(action), Qt::QueuedConnection);
}

void UpdateScreen::queueStatus(const BilingualText &text) {
    queueInGui([label = status_, shown = QString::fromWCharArray(text.in(isEnglish()))] {
        if (label)
            label->setText(shown);
    });
}

void UpdateScreen::queueProgress(int32_t percent) {
    queueInGui([bar = progress_, percent] {
        if (bar)
            bar->setValue(percent);
    });
}

bool UpdateScreen::isAttached() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return guiObject_ != nullptr;
}

bool UpdateScreen::isEnglish() const {
    const std::lock_guard<std::mutex> lock(mutex_);
    return language_ && language_->isEnglish();
}
