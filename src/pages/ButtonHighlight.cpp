#include "pages/ButtonHighlight.h"

#include "pages/ShownState.h"
#include "pages/StyleSheetText.h"

#include <QAbstractButton>

namespace ButtonHighlight {

QString cssColour(uint32_t colour) {
    return QStringLiteral("rgba(%1,%2,%3,1)")
        .arg(colour & 0xFF)
        .arg((colour >> 8) & 0xFF)
        .arg((colour >> 16) & 0xFF);
}

void mark(const QVector<QWidget *> &group, const QWidget *selected, uint32_t selectedColour,
          uint32_t otherColour) {
    for (QWidget *widget : group) {
        StyleSheetText::setProperty(*widget, QStringLiteral("background"),
                                    cssColour(widget == selected ? selectedColour : otherColour));
        if (auto *button = qobject_cast<QAbstractButton *>(widget))
            ShownState::show(*button, button == selected);
    }
}

} // namespace ButtonHighlight
