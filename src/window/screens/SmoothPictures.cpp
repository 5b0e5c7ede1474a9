#include "window/screens/SmoothPictures.h"

#include <algorithm>
#include <QApplication>
#include <QEvent>
#include <QPushButton>
#include <QScreen>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace {

const char kDrawnHere[] = "pictureDrawnSmoothly"; // property of a widget whose background is drawn here

bool showsPixelByPixel(const QScreen *screen) {
    return screen->devicePixelRatio() == 1 || screen->devicePixelRatio() == 2;
}

// Opens a protected member function of the button.
struct ButtonOption : QPushButton {
    static void init(const QPushButton &button, QStyleOptionButton &option) {
        (button.*&ButtonOption::initStyleOption)(&option);
    }
};

// What the button's own paint event does, but smoothly.
void drawButton(QPushButton &button) {
    QStyleOptionButton option;
    ButtonOption::init(button, option);
    QStylePainter painter(&button);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawControl(QStyle::CE_PushButton, option);
}

// What Qt draws in front of the paint event of a widget with a styled background.
void drawBackground(QWidget &widget) {
    QStyleOption option;
    option.initFrom(&widget);
    QStylePainter painter(&widget);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPrimitive(QStyle::PE_Widget, option);
}

// The style sheet asks Qt for a styled background each time it is applied.
void takeOverBackground(QWidget &widget) {
    if (!widget.testAttribute(Qt::WA_StyledBackground))
        return;
    widget.setAttribute(Qt::WA_StyledBackground, false);
    widget.setProperty(kDrawnHere, true);
}

} // namespace

void SmoothPictures::installWhereNeeded() {
    const QList<QScreen *> screens = QGuiApplication::screens();
    if (!std::all_of(screens.begin(), screens.end(), &showsPixelByPixel))
        qApp->installEventFilter(new SmoothPictures(qApp));
}

bool SmoothPictures::eventFilter(QObject *watched, QEvent *event) {
    if (!watched->isWidgetType())
        return false;
    auto &widget = static_cast<QWidget &>(*watched);
    if (event->type() == QEvent::Show || event->type() == QEvent::StyleChange) {
        takeOverBackground(widget);
    } else if (event->type() == QEvent::Paint) {
        if (auto *button = qobject_cast<QPushButton *>(watched)) {
            drawButton(*button);
            return true;
        }
        if (widget.property(kDrawnHere).toBool())
            drawBackground(widget);
    }
    return false;
}
