#include "pages/StyleSheetText.h"

#include "pages/ShownState.h"

#include <QHash>
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

// One declaration of the property with its value. Kept compiled: compiling takes a hundred times as long as a
// search in the short texts here, and mute buttons are shown anew with every notification from Windows.
const QRegularExpression &declarationOf(const QString &property) {
    static QHash<QString, QRegularExpression> declarations; // widgets, hence GUI thread only
    QRegularExpression &declaration = declarations[property];
    if (declaration.pattern().isEmpty()) {
        declaration.setPattern(QStringLiteral("(?<![-\\w])%1:[^;}]*;?").arg(property));
        declaration.optimize();
    }
    return declaration;
}

} // namespace

void showSwitch(QAbstractButton &button, bool on) {
    exchange(button, on, "btn_open.png", "btn_close.png");
    ShownState::show(button, on);
}

void showCaption(QWidget &caption, bool on) {
    exchange(caption, on, "color: #FFFFFF;", "color: #444645;");
}

void showMarked(QAbstractButton &button, bool marked) {
    exchange(button, marked, "border: 1px solid #ef0303;", "border: none;");
    ShownState::show(button, marked);
}

void showMuted(QAbstractButton &button, bool muted) {
    setBackgroundImage(button, muted ? QStringLiteral("/right/png/silent-volumeHigh.png")
                                     : QStringLiteral("/left/png/y1.png"));
    ShownState::show(button, muted);
}

void setProperty(QWidget &widget, const QString &property, const QString &value) {
    const QRegularExpression &declaration = declarationOf(property);
    const QString wanted = QStringLiteral("%1: %2;").arg(property, value);
    QString text = widget.styleSheet();
    if (text.contains(declaration))
        text.replace(declaration, wanted);
    else
        text += wanted;
    if (text != widget.styleSheet())
        widget.setStyleSheet(text);
}

void setBackgroundImage(QWidget &widget, const QString &resourcePath) {
    setProperty(widget, QStringLiteral("background-image"), QStringLiteral("url(:%1)").arg(resourcePath));
}

} // namespace StyleSheetText
