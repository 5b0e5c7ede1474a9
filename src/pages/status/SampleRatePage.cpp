#include "pages/status/SampleRatePage.h"

#include "pages/StyleSheetText.h"
#include "ui_demoClass.h"

SampleRatePage::SampleRatePage(PageContext context) {
    const Ui::demoClass &form = context.form;
    showWhenChecked(form.radioButton, form.widget_6, QStringLiteral("44.1KHz.png"));
    showWhenChecked(form.radioButton_2, form.widget_6, QStringLiteral("48KHz.png"));
    showWhenChecked(form.radioButton_3, form.widget_17, QStringLiteral("16KHz.png"));
    showWhenChecked(form.radioButton_4, form.widget_17, QStringLiteral("48KHz.png"));
}

void SampleRatePage::showWhenChecked(QRadioButton *button, QWidget *picture, const QString &imageName) {
    const QString image = QStringLiteral("/right/png/") + imageName;
    const auto show = [picture, image](bool checked) {
        if (checked)
            StyleSheetText::setBackgroundImage(*picture, image);
    };
    show(button->isChecked());
    connect(button, &QRadioButton::toggled, this, show);
}
