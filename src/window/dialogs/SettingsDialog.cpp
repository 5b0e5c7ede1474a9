#include "window/dialogs/SettingsDialog.h"

#include "helpers/ProductSettings.h"
#include "window/dialogs/EmbeddedDialog.h"
#include "window/language/LanguageChoice.h"

#include "ui_dlgsetting.h"

#include <QStyledItemDelegate>

SettingsDialog::SettingsDialog(QWidget &mainWindow, InterfaceLanguage &language, DialogState &state,
                               Translation &translation)
    : mainWindow_(mainWindow), language_(language), state_(state), translation_(translation) {}

void SettingsDialog::OpenSettingsDialog() {
    if (state_.anyOpen())
        return;

    EmbeddedDialog embedded(mainWindow_, state_.settingsOpen);
    QDialog *dialog = embedded.dialog();
    Ui::dlgsetting form;
    form.setupUi(dialog);
    embedded.makeFrameless();
    fill(form);
    QObject::connect(form.pushButton, &QPushButton::clicked, dialog, [dialog] { dialog->close(); });
    QObject::connect(form.pushButton_2, &QPushButton::clicked, dialog, [this, &form, dialog] {
        SaveSettings(form);
        dialog->close();
    });
    embedded.run();
}

void SettingsDialog::fill(Ui::dlgsetting &form) const {
    form.comboBox->setItemDelegate(new QStyledItemDelegate(form.comboBox)); // rows follow the style sheet
    form.comboBox->setCurrentIndex(language_.code);
    form.checkBox->setChecked(hidesToTray());
    form.checkBox_2->setChecked(ProductSettings::readDword(ProductSettings::kStartTipShown).value_or(0) == 0);
    form.checkBox_2->hide(); // not offered, but saved all the same
    form.pushButton_2->setDefault(true);
}

void SettingsDialog::SaveSettings(const Ui::dlgsetting &form) {
    const bool tray = form.checkBox->isChecked();
    if (ProductSettings::writeDword(ProductSettings::kTrayIconShown, tray ? 1 : 0))
        unsavedTrayChoice_.reset();
    else
        unsavedTrayChoice_ = tray;
    ProductSettings::writeDword(ProductSettings::kStartTipShown, form.checkBox_2->isChecked() ? 0 : 1);
    const auto language = static_cast<int8_t>(form.comboBox->currentIndex());
    language_.code = language;
    storeLanguage(language);
    translation_.LoadTranslation();
    mainWindow_.setWindowTitle(QString::fromStdWString(ProductSettings::productDisplayName()));
}

bool SettingsDialog::hidesToTray() const {
    return unsavedTrayChoice_.value_or(
        ProductSettings::readDword(ProductSettings::kTrayIconShown).value_or(1) != 0);
}
