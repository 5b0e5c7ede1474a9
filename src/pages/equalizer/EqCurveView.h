// The equalizer's curve: a smooth line through the handles of its sliders, filled softly to the zero line. It
// lies behind the sliders, is drawn anew when one of them moves, and lets the mouse through. GUI thread.
#pragma once

#include <QVector>
#include <QWidget>

class QSlider;

class EqCurveView : public QWidget {
    Q_OBJECT

public:
    // Evenly spaced vertical sliders of one size and parent, which becomes the parent of the view, too.
    explicit EqCurveView(QVector<QSlider *> sliders);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    // Centre of the slider's handle in this widget.
    QPointF handleOf(const QSlider &slider) const;
    double heightOf(const QSlider &slider, double value) const;

    QVector<QSlider *> sliders_;
};
