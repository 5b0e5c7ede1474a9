#include "ui/pages/ButtonHighlight.h"

#include "ui/pages/StyleSheetText.h"

namespace ButtonHighlight {

QString cssColour(uint32_t colour) {
    return QStringLiteral("rgba(%1,%2,%3,1)")
        .arg(colour & 0xFF)
        .arg((colour >> 8) & 0xFF)
        .arg((colour >> 16) & 0xFF);
}

void mark(const QVector<QWidget *> &group, const QWidget *selected, uint32_t selectedColour,
          uint32_t otherColour) {
    for (QWidget *button : group)
        StyleSheetText::setProperty(*button, QStringLiteral("background"),
                                    cssColour(button == selected ? selectedColour : otherColour));
}

} // namespace ButtonHighlight
