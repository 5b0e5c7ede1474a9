#include "pages/equalizer/EqCurveView.h"

#include "pages/equalizer/EqCurveLine.h"

#include <QPainter>
#include <QPainterPath>
#include <QSlider>

namespace {

constexpr double kHandleSize = 16; // of a slider's handle in panel.qss
constexpr double kLineWidth = 2;
constexpr int kStrongFill = 150; // of 255, at the ends of the scale
constexpr int kWeakFill = 28;    // at the zero line

struct Colours {
    QColor line, fill;
};

Colours coloursFor(bool enabled) {
    if (enabled)
        return {QColor(0x5c, 0xb8, 0xb2), QColor(0x3f, 0x9f, 0x99)};
    return {QColor(0x4a, 0x65, 0x62), QColor(0x33, 0x3d, 0x3c)};
}

QPainterPath lineThrough(const QVector<QPointF> &points) {
    std::vector<double> heights;
    for (const QPointF &point : points)
        heights.push_back(point.y());
    QPainterPath path(points.first());
    int next = 1;
    for (const EqCurveLine::Segment &segment : EqCurveLine::through(heights)) {
        const double left = points[next - 1].x(), third = (points[next].x() - left) / 3;
        path.cubicTo(left + third, segment.control1, left + 2 * third, segment.control2, left + 3 * third,
                     segment.end);
        ++next;
    }
    return path;
}

QBrush fillBetween(double top, double zero, double bottom, QColor colour) {
    QLinearGradient gradient(0, top, 0, bottom);
    const auto at = [&](double y, int alpha) {
        colour.setAlpha(alpha);
        gradient.setColorAt((y - top) / (bottom - top), colour);
    };
    at(top, kStrongFill);
    at(zero, kWeakFill);
    at(bottom, kStrongFill);
    return gradient;
}

} // namespace

EqCurveView::EqCurveView(QVector<QSlider *> sliders)
    : QWidget(sliders.first()->parentWidget()), sliders_(std::move(sliders)) {
    setObjectName(QStringLiteral("eqCurveView"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setGeometry(sliders_.first()->geometry() | sliders_.last()->geometry());
    lower();
    for (const QSlider *slider : qAsConst(sliders_))
        connect(slider, &QSlider::valueChanged, this, QOverload<>::of(&QWidget::update));
}

double EqCurveView::heightOf(const QSlider &slider, double value) const {
    const double share = (slider.maximum() - value) / (slider.maximum() - slider.minimum());
    return kHandleSize / 2 + share * (height() - kHandleSize);
}

QPointF EqCurveView::handleOf(const QSlider &slider) const {
    return {slider.x() - x() + slider.width() / 2.0, heightOf(slider, slider.value())};
}

void EqCurveView::paintEvent(QPaintEvent *) {
    QVector<QPointF> points;
    for (const QSlider *slider : qAsConst(sliders_))
        points.push_back(handleOf(*slider));
    const QSlider &any = *sliders_.first();
    const double zero = heightOf(any, (any.minimum() + any.maximum()) / 2.0);
    const QPainterPath line = lineThrough(points);
    QPainterPath area = line;
    area.lineTo(points.last().x(), zero);
    area.lineTo(points.first().x(), zero);

    const Colours colours = coloursFor(isEnabled());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(
        area, fillBetween(heightOf(any, any.maximum()), zero, heightOf(any, any.minimum()), colours.fill));
    painter.strokePath(line, QPen(colours.line, kLineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}
