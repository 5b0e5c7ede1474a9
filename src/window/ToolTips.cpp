#include "window/ToolTips.h"

#include <QApplication>
#include <QHelpEvent>
#include <QToolTip>

ToolTips::ToolTips(QWidget &styled) : styled_(styled) {
    QToolTip::setFont(QFont(QStringLiteral("Arial"), 9, QFont::Bold, false));
    qApp->installEventFilter(this);
}

bool ToolTips::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() != QEvent::ToolTip || !watched->isWidgetType())
        return false;
    const QString text = static_cast<QWidget *>(watched)->toolTip();
    if (text.isEmpty())
        return false;
    // Qt would fill a tip that is still shown anew, without the sheet's padding.
    for (QWidget *window : QApplication::topLevelWidgets())
        if (window->inherits("QTipLabel"))
            window->hide();
    QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), text, &styled_);
    return true;
}
