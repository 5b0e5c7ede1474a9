#include "ui/Translation.h"

#include "device/DeviceApi.h"

#include "ui_demoClass.h"

#include <QCoreApplication>

Translation::Translation(QMainWindow &mainWindow, PageContext context)
    : mainWindow_(mainWindow), context_(context) {}

void Translation::addRefill(std::function<void()> refill) {
    refills_.push_back(std::move(refill));
}

void Translation::LoadTranslation() {
    const FlagScope filling(context_.volume.volumeUpdating);
    const int8_t language = context_.language.code;
    if (language >= 0) {
        loadTexts(language);
        context_.form.retranslateUi(&mainWindow_);
    }
    DeviceApi::pollVolume();
    for (const std::function<void()> &refill : refills_)
        refill();
}

bool Translation::loadTexts(int8_t language) {
    if (!translator_)
        translator_ = new QTranslator(&mainWindow_);
    const QString file = language == 0 ? QStringLiteral("ts_zh.qm") : QStringLiteral("ts_en.qm");
    // A translator that was installed before and now fails to load is left empty, which translates nothing.
    return translator_->load(QCoreApplication::applicationDirPath() + QStringLiteral("/translations/") +
                             file) &&
           QCoreApplication::installTranslator(translator_);
}
