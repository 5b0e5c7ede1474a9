#include "window/dialogs/StartTip.h"

#include "helpers/ProductSettings.h"
#include "window/dialogs/EmbeddedDialog.h"

#include "ui_kj.h"

void ShowStartTip(QWidget *mainWindow) {
    EmbeddedDialog embedded(*mainWindow);
    QDialog *dialog = embedded.dialog();
    Ui::kj form;
    form.setupUi(dialog);
    embedded.makeFrameless();
    QObject::connect(form.pushButton, &QPushButton::clicked, dialog, [dialog] { dialog->close(); });
    // The value is the box's state: ticked keeps the tip on, although the box's text reads the other way.
    QObject::connect(form.checkBox, &QCheckBox::stateChanged, dialog, [](int boxState) {
        ProductSettings::writeDword(ProductSettings::kStartTipShown, boxState == Qt::Checked ? 1 : 0);
    });
    embedded.run();
}
