// What a window shows to be read, and whether it can be.
#pragma once

#include <QString>
#include <QStringList>
#include <QWidget>

namespace ShownTexts {

// One line per text of the window and everything in it, shown or not: "object.property: text". Labels,
// buttons, list entries, tool tips, titles and the names for screen readers.
QStringList all(const QWidget &window);

// One line per visible text that its control is too small for, measured in the control's font.
QStringList clipped(const QWidget &window);

} // namespace ShownTexts
