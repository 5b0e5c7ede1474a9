#include "ui/SettingsDialog.h"

#include "helpers/ProductSettings.h"
#include "ui/EmbeddedDialog.h"
#include "ui/LanguageChoice.h"

#include "ui_dlgsetting.h"

#include <QStyledItemDelegate>

SettingsDialog::SettingsDialog(QWidget &mainWindow, InterfaceLanguage &language, DialogState &state,
                               Translation &translation)
    : mainWindow_(mainWindow), language_(language), state_(state), translation_(translation) {}

void SettingsDialog::OpenSettingsDialog() {
    if (state_.anyOpen())
        return;
    state_.settingsOpen = true;

    EmbeddedDialog embedded(mainWindow_);
    Ui::dlgsetting form;
    form.setupUi(embedded.dialog());
    embedded.makeFrameless();
    fill(form);
    QObject::connect(form.pushButton, &QPushButton::clicked, embedded.dialog(), [this] { close(); });
    QObject::connect(form.pushButton_2, &QPushButton::clicked, embedded.dialog(), [this] { SaveSettings(); });

    dialog_ = embedded.dialog();
    form_ = &form;
    embedded.run();
    dialog_ = nullptr;
    form_ = nullptr;
    state_.settingsOpen = false; // the Escape key closes the dialog without a button
}

void SettingsDialog::fill(Ui::dlgsetting &form) {
    form.comboBox->setItemDelegate(new QStyledItemDelegate(form.comboBox)); // rows follow the style sheet
    form.comboBox->setCurrentIndex(language_.code);
    form.checkBox->setChecked(hidesToTray());
    form.checkBox_2->setChecked(ProductSettings::readDword(ProductSettings::kStartTipShown).value_or(0) == 0);
    form.checkBox_2->hide(); // not offered, but saved all the same
    form.pushButton_2->setDefault(true);
}

void SettingsDialog::SaveSettings() {
    if (!form_)
        return;
    const bool tray = form_->checkBox->isChecked();
    if (ProductSettings::writeDword(ProductSettings::kTrayIconShown, tray ? 1 : 0))
        unsavedTrayChoice_.reset();
    else
        unsavedTrayChoice_ = tray;
    ProductSettings::writeDword(ProductSettings::kStartTipShown, form_->checkBox_2->isChecked() ? 0 : 1);
    const auto language = static_cast<int8_t>(form_->comboBox->currentIndex());
    language_.code = language;
    storeLanguage(language);
    translation_.LoadTranslation();
    mainWindow_.setWindowTitle(QString::fromStdWString(ProductSettings::productDisplayName()));
    close();
}

bool SettingsDialog::hidesToTray() const {
    return unsavedTrayChoice_.value_or(
        ProductSettings::readDword(ProductSettings::kTrayIconShown).value_or(1) != 0);
}

void SettingsDialog::close() {
    state_.settingsOpen = false;
    dialog_->close();
}
