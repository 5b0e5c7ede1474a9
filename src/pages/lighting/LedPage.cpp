#include "pages/lighting/LedPage.h"

#include "device/DeviceApi.h"
#include "helpers/LogHelper.h"
#include "pages/lighting/ColourEntry.h"
#include "pages/StyleSheetText.h"
#include "ui_demoClass.h"

#include <algorithm>
#include <array>
#include <QCursor>
#include <QImage>
#include <QMouseEvent>

namespace {

std::array<QPushButton *, kFixedColours.size()> colourButtons(const Ui::demoClass &form) {
    return {form.pushButton_35, form.pushButton_36, form.pushButton_37, form.pushButton_38,
            form.pushButton_39, form.pushButton_40, form.pushButton_43};
}

// Red, green, blue.
std::array<QLineEdit *, 3> colourFields(const Ui::demoClass &form) {
    return {form.lineEdit, form.lineEdit_2, form.lineEdit_3};
}

std::u16string textOf(const QLineEdit &field) {
    return field.text().toStdU16String();
}

} // namespace

LedPage::LedPage(PageContext context) : context_(context) {
    Ui::demoClass &form = context_.form;
    form.horizontalSlider_18->setRange(0, 100);
    showPanel();
    paintSwatch(checkedFields());
    connectControls();
}

void LedPage::connectControls() {
    Ui::demoClass &form = context_.form;
    for (const QPushButton *button : colourButtons(form))
        connect(button, &QPushButton::clicked, this, [this, button] { pickFixedColour(button); });
    for (const QLineEdit *field : colourFields(form)) {
        connect(field, &QLineEdit::textChanged, this, &LedPage::checkEntry);
        connect(field, &QLineEdit::editingFinished, this, &LedPage::checkEntry);
    }
    form.pushButton_palette->installEventFilter(this);
    connect(form.pushButton_palette, &QPushButton::clicked, this, &LedPage::paletteClicked);
    connect(form.pushButton_9, &QPushButton::clicked, this, &LedPage::sendLedReport);
    connect(form.pushButton_34, &QPushButton::clicked, this, &LedPage::togglePanel);
}

void LedPage::sendLedReport() {
    const Ui::demoClass &form = context_.form;
    const LedSettings settings{form.comboBox_3->currentIndex(), form.horizontalSlider_18->value(),
                               readDecimal(textOf(*form.lineEdit)), readDecimal(textOf(*form.lineEdit_2)),
                               readDecimal(textOf(*form.lineEdit_3))};
    form.lineEdit_5->setText(QString::fromStdString(describeLedReport(settings)));
    DeviceApi::transferReport(context_.device.usbIds, makeLedReport(settings), nullptr);
}

void LedPage::pickFixedColour(const QObject *button) {
    const auto buttons = colourButtons(context_.form);
    const auto found = std::find(buttons.begin(), buttons.end(), button);
    if (found != buttons.end())
        takeColour(kFixedColours[static_cast<size_t>(found - buttons.begin())]);
}

void LedPage::pickPaletteColour(int x, int y) {
    QOR_TRACE(L"x=%d,y=%d", x, y);
    const QImage image(QStringLiteral(":/page4/png/pallete.png"));
    const QWidget &palette = *context_.form.label_color_pat;
    if (image.isNull() || !palette.rect().contains(x, y))
        return;
    const QRgb colour =
        image.pixel(x * image.width() / palette.width(), y * image.height() / palette.height());
    takeColour({static_cast<uint8_t>(qRed(colour)), static_cast<uint8_t>(qGreen(colour)),
                static_cast<uint8_t>(qBlue(colour))});
}

// A click does not say where it happened, so the mouse event just before it is remembered.
bool LedPage::eventFilter(QObject *watched, QEvent *event) {
    const QPushButton *palette = context_.form.pushButton_palette;
    if (watched == palette && event->type() == QEvent::MouseButtonRelease) {
        const auto *release = static_cast<QMouseEvent *>(event);
        const bool isClick = release->button() == Qt::LeftButton && palette->isDown();
        if (isClick && palette->rect().contains(release->pos()))
            paletteRelease_ = release->pos();
    }
    return QObject::eventFilter(watched, event);
}

void LedPage::paletteClicked() {
    const QWidget &button = *context_.form.pushButton_palette;
    const QPoint onButton = paletteRelease_ ? *paletteRelease_ : button.mapFromGlobal(QCursor::pos());
    paletteRelease_.reset();
    const QWidget &window = context_.window;
    const QPoint point = context_.form.label_color_pat->mapFrom(&window, button.mapTo(&window, onButton));
    pickPaletteColour(point.x(), point.y());
}

// Both textChanged and editingFinished of the three fields come here.
void LedPage::checkEntry() {
    if (context_.volume.volumeUpdating)
        return;
    paintSwatch(checkedFields());
    emit context_.form.pushButton_9->clicked();
}

LedColour LedPage::checkedFields() {
    const FlagScope filling(context_.volume.volumeUpdating);
    const auto check = [](QLineEdit &field) {
        const ColourEntry entry = checkColourEntry(textOf(field));
        if (entry.rewrite)
            field.setText(QString::number(entry.value));
        return static_cast<uint8_t>(entry.value);
    };
    const Ui::demoClass &form = context_.form;
    return {check(*form.lineEdit), check(*form.lineEdit_2), check(*form.lineEdit_3)};
}

void LedPage::takeColour(const LedColour &colour) {
    {
        const FlagScope filling(context_.volume.volumeUpdating);
        const Ui::demoClass &form = context_.form;
        form.lineEdit->setText(QString::number(colour.red));
        form.lineEdit_2->setText(QString::number(colour.green));
        form.lineEdit_3->setText(QString::number(colour.blue));
    }
    paintSwatch(colour);
    emit context_.form.pushButton_9->clicked();
}

void LedPage::paintSwatch(const LedColour &colour) {
    StyleSheetText::setProperty(
        *context_.form.label_color_pat_2, QStringLiteral("background-color"),
        QStringLiteral("rgb(%1, %2, %3)").arg(colour.red).arg(colour.green).arg(colour.blue));
}

// The switch is the panel's own: the headset knows no such setting, its light is switched by the mode.
void LedPage::togglePanel() {
    panelOn_ = !panelOn_;
    showPanel();
}

void LedPage::showPanel() {
    const Ui::demoClass &form = context_.form;
    StyleSheetText::showSwitch(*form.pushButton_34, panelOn_);
    for (QWidget *part : form.widget_44->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        if (part != form.pushButton_34 && part != form.label_225)
            part->setEnabled(panelOn_);
}
