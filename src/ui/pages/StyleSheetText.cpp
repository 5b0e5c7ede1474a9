#include "ui/pages/StyleSheetText.h"

#include <QRegularExpression>

namespace StyleSheetText {

void replace(QWidget &widget, const QString &from, const QString &to) {
    QString text = widget.styleSheet();
    text.replace(from, to);
    if (text != widget.styleSheet())
        widget.setStyleSheet(text);
}

namespace {

void exchange(QWidget &widget, bool on, const char *onText, const char *offText) {
    const QString shown = QString::fromLatin1(on ? onText : offText);
    const QString hidden = QString::fromLatin1(on ? offText : onText);
    replace(widget, hidden, shown);
}

} // namespace

void showSwitch(QWidget &button, bool on) {
    exchange(button, on, "btn_open.png", "btn_close.png");
}

void showCaption(QWidget &caption, bool on) {
    exchange(caption, on, "color: #FFFFFF;", "color: #444645;");
}

void showMarked(QWidget &button, bool marked) {
    exchange(button, marked, "border: 1px solid #ef0303;", "border: none;");
}

void setBackgroundImage(QWidget &widget, const QString &resourcePath) {
    static const QRegularExpression url(QStringLiteral("background-image:\\s*url\\([^)]*\\);"));
    const QString wanted = QStringLiteral("background-image: url(:%1);").arg(resourcePath);
    QString text = widget.styleSheet();
    if (text.contains(url))
        text.replace(url, wanted);
    else
        text += wanted;
    if (text != widget.styleSheet())
        widget.setStyleSheet(text);
}

} // namespace StyleSheetText
