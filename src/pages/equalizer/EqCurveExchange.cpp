#include "pages/equalizer/EqCurveExchange.h"

#include "helpers/MessageBoxes.h"
#include "ui_demoClass.h"

#include <optional>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QRegularExpression>
#include <QSaveFile>

namespace {

constexpr qint64 kMaxFileSize = 1 << 20; // bytes; other programs write a few thousand

std::optional<QByteArray> readFile(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > kMaxFileSize)
        return std::nullopt;
    return file.read(kMaxFileSize);
}

bool writeFile(const QString &path, const std::string &text) {
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) &&
           file.write(text.data(), static_cast<qint64>(text.size())) >= 0 && file.commit();
}

void tell(const QString &text, const QString &path) {
    ShowMessage(text.arg(QFileInfo(path).fileName()), nullptr, MB_OK | MB_ICONWARNING);
}

// A curve's name as a file's, which Windows lets hold fewer characters.
QString fileNameFor(QString curve) {
    curve.replace(QRegularExpression(QStringLiteral("[<>:\"/\\\\|?*\\x00-\\x1f]")), QStringLiteral("_"));
    return curve.trimmed().isEmpty() ? QStringLiteral("EQ.txt") : curve + QStringLiteral(".txt");
}

} // namespace

EqCurveExchange::EqCurveExchange(PageContext context, ExclusiveEffects &effects)
    : context_(context), effects_(effects), menu_(new QMenu(context.form.btn_curve_file)),
      drop_(context.window) {
    connect(context_.form.btn_curve_file, &QPushButton::clicked, this, &EqCurveExchange::showMenu);
    // Queued: the box of a bad file must not hold up the program that the file comes from.
    connect(&drop_, &FileDrop::dropped, this, &EqCurveExchange::importDropped, Qt::QueuedConnection);
}

void EqCurveExchange::showMenu() {
    QPushButton *button = context_.form.btn_curve_file;
    menu_->clear(); // the language may be another by now
    menu_->addAction(tr("导入EQ曲线…"), this, &EqCurveExchange::chooseImport);
    menu_->addAction(tr("导出EQ曲线…"), this, &EqCurveExchange::chooseExport);
    menu_->popup(button->mapToGlobal(QPoint(0, button->height() + 6)));
}

void EqCurveExchange::chooseImport() {
    const QString path = QFileDialog::getOpenFileName(&context_.window, tr("导入EQ曲线"), QString(),
                                                      tr("EQ曲线") + QStringLiteral(" (*.txt);;") +
                                                          tr("所有文件") + QStringLiteral(" (*)"));
    if (!path.isEmpty())
        importFile(path);
}

void EqCurveExchange::chooseExport() {
    const QString path = QFileDialog::getSaveFileName(&context_.window, tr("导出EQ曲线"),
                                                      fileNameFor(context_.form.comboBox->currentText()),
                                                      tr("EQ曲线") + QStringLiteral(" (*.txt)"));
    if (!path.isEmpty() && !writeFile(path, EqCurveText::graphicEq(context_.device.extension)))
        tell(tr("无法写入“%1”。"), path);
}

void EqCurveExchange::importDropped(const QString &path, QPoint position) {
    const QWidget &page = *context_.form.page_3;
    if (page.isVisible() && page.rect().contains(page.mapFrom(&context_.window, position)))
        importFile(path);
}

// The headset's own button may have switched the equalizer off while the user chose a file.
void EqCurveExchange::importFile(const QString &path) {
    if (!effects_.isOn(Effect::Equalizer))
        return;
    const std::optional<QByteArray> text = readFile(path);
    if (!text)
        return tell(tr("无法导入“%1”：文件无法读取，或大于 1 MB。"), path);
    const EqCurveText::Parsed parsed =
        EqCurveText::parse({text->constData(), static_cast<size_t>(text->size())});
    if (parsed.gains)
        emit imported(*parsed.gains, QFileInfo(path).completeBaseName());
    else if (parsed.badLine > 0)
        tell(tr("无法导入“%2”：第 %1 行有误。").arg(parsed.badLine), path);
    else
        tell(tr("无法导入“%1”：文件中没有均衡器曲线（GraphicEQ 或 Filter 行）。"), path);
}
