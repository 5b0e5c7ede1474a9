#include "window/language/Translation.h"

#include "device/DeviceApi.h"
#include "resources/MainForm.h"
#include "ui_demoClass.h"
#include "window/language/TranslationFile.h"

#include <QCoreApplication>
#include <QFile>

namespace {

bool isSound(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = file.readAll();
    return isSoundTranslationFile(bytes.constData(), static_cast<size_t>(bytes.size()));
}

// name: a file in the program's folder of translations.
void install(QTranslator &translator, const QString &name) {
    const QString path = QCoreApplication::applicationDirPath() + QStringLiteral("/translations/") + name;
    if (isSound(path) && translator.load(path))
        QCoreApplication::installTranslator(&translator);
}

} // namespace

Translation::Translation(QMainWindow &mainWindow, PageContext context)
    : mainWindow_(mainWindow), context_(context) {}

void Translation::LoadTranslation() {
    const FlagScope filling(context_.volume.volumeUpdating);
    const int8_t language = context_.language.code;
    if (language >= 0) {
        loadTexts(language);
        retranslateMainForm(context_.form, mainWindow_);
    }
    DeviceApi::pollVolume();
    emit retranslated();
}

void Translation::loadTexts(int8_t language) {
    if (!translator_)
        translator_ = new QTranslator(&mainWindow_);
    // Uninstalled first: a failed load gives the source texts and not those of the language before.
    QCoreApplication::removeTranslator(translator_);
    QCoreApplication::removeTranslator(&toolkitTranslator_);
    install(*translator_, language == 0 ? QStringLiteral("ts_zh.qm") : QStringLiteral("ts_en.qm"));
    if (language == 0)
        install(toolkitTranslator_, QStringLiteral("qtbase_zh_CN.qm"));
}
