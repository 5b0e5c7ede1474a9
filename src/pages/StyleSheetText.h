// On/off states are shown by exchanging a text inside a widget's own style sheet, exactly and
// case-sensitively.
#pragma once

#include <QAbstractButton>
#include <QString>
#include <QWidget>

namespace StyleSheetText {

// Replaces every occurrence of `from` by `to` in the widget's own style sheet.
void replace(QWidget &widget, const QString &from, const QString &to);

// Switch buttons: "btn_open.png" and checked when on, "btn_close.png" and unchecked when off.
void showSwitch(QAbstractButton &button, bool on);

// Captions: "color: #FFFFFF;" when on, "color: #444645;" when off.
void showCaption(QWidget &caption, bool on);

// Choice buttons: "border: 1px solid #ef0303;" and checked when marked, "border: none;" when not.
void showMarked(QAbstractButton &button, bool marked);

// Mute buttons: a loudspeaker, or a crossed out one and checked when muted.
void showMuted(QAbstractButton &button, bool muted);

// Gives a property of the widget's own style sheet a new value wherever it stands there, or adds it at the
// end.
void setProperty(QWidget &widget, const QString &property, const QString &value);

// Sets the widget's background image (a resource path without ":"), replacing the url(...) of its own style
// sheet.
void setBackgroundImage(QWidget &widget, const QString &resourcePath);

} // namespace StyleSheetText
