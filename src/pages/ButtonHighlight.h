// Marks one button of a group by the "background" of the buttons' own style sheets, and as checked.
#pragma once

#include <cstdint>
#include <QString>
#include <QVector>
#include <QWidget>

namespace ButtonHighlight {

// "rgba(r,g,b,1)" of a colour 0xBBGGRR.
QString cssColour(uint32_t colour);

void mark(const QVector<QWidget *> &group, const QWidget *selected, uint32_t selectedColour,
          uint32_t otherColour);

} // namespace ButtonHighlight
