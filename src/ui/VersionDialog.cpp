#include "ui/VersionDialog.h"

#include "ui/EmbeddedDialog.h"

#include "ui_about.h"

#include <QCoreApplication>

namespace {

QString versionLine(const InterfaceLanguage &language) {
    // The English line does not depend on the translation file.
    const QString line = language.isEnglish() ? QStringLiteral("Current version V%1.%2.%3")
                                              : QCoreApplication::translate("demo", "当前版本 V%1.%2.%3");
    return line.arg(QOR_VERSION_MAJOR).arg(QOR_VERSION_MINOR).arg(QOR_VERSION_PATCH);
}

} // namespace

void ShowVersionDialog(QWidget &mainWindow, const InterfaceLanguage &language, DialogState &state) {
    if (state.anyOpen())
        return;
    state.versionOpen = true;

    EmbeddedDialog embedded(mainWindow);
    QDialog *dialog = embedded.dialog();
    Ui::Dialog form;
    form.setupUi(dialog);
    embedded.makeFrameless();
    form.label->hide();
    form.label_2->hide();
    form.label_3->setText(versionLine(language));
    QObject::connect(form.pushButton, &QPushButton::clicked, dialog, [dialog, &state] {
        state.versionOpen = false;
        dialog->close();
    });
    embedded.run();
    state.versionOpen = false; // the Escape key closes the dialog without the button
}
