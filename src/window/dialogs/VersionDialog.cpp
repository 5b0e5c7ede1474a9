#include "window/dialogs/VersionDialog.h"

#include "window/dialogs/EmbeddedDialog.h"
#include "window/dialogs/MakerActions.h"

#include "ui_about.h"

#include <QCoreApplication>
#include <QUrl>

namespace {

QString versionLine(const InterfaceLanguage &language) {
    // The English line does not depend on the translation file.
    const QString line = language.isEnglish() ? QStringLiteral("Current version V%1.%2.%3")
                                              : QCoreApplication::translate("demo", "当前版本 V%1.%2.%3");
    return line.arg(QOR_VERSION_MAJOR).arg(QOR_VERSION_MINOR).arg(QOR_VERSION_PATCH);
}

QString siteLink() {
    const QUrl site = makerWebSite();
    return QStringLiteral("<a href=\"%1\" style=\"color: #7fc4c0;\">%2</a>")
        .arg(site.toString(), site.host());
}

} // namespace

void ShowVersionDialog(QWidget &mainWindow, const InterfaceLanguage &language, DialogState &state) {
    if (state.anyOpen())
        return;

    EmbeddedDialog embedded(mainWindow, state.versionOpen);
    QDialog *dialog = embedded.dialog();
    Ui::Dialog form;
    form.setupUi(dialog);
    embedded.makeFrameless();
    form.label->hide();
    form.label_2->hide();
    form.label_3->setText(versionLine(language));
    form.label_4->setText(siteLink());
    QObject::connect(form.label_4, &QLabel::linkActivated, dialog, [] { OpenMakerWebSite(); });
    QObject::connect(form.pushButton, &QPushButton::clicked, dialog, [dialog] { dialog->close(); });
    embedded.run();
}
