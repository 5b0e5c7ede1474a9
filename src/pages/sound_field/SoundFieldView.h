// The drawing of the sound field: a disc with the eight speakers around it, turned as a whole. It fills the
// widget that it is put into and lets the mouse through. A turn costs one repaint, and none while the page is
// hidden.
#pragma once

#include <array>
#include <QPixmap>
#include <QWidget>

class SoundFieldView : public QWidget {
    Q_OBJECT

public:
    struct Speaker {
        QString label;
        float baseAngle; // degrees, counter-clockwise from the right, of the field at rest
    };
    using Speakers = std::array<Speaker, 8>;

    // A picture that cannot be loaded is reported in a message box, here and not at every turn.
    SoundFieldView(Speakers speakers, QWidget *parent);

    void setAngle(float degrees);
    float angle() const { return angle_; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void drawSpeaker(QPainter &painter, const Speaker &speaker);
    void scalePictures();

    Speakers speakers_;
    float angle_ = 0;
    QPixmap disc_; // scaled for scaledFor_ and scaledSize_
    QPixmap speaker_;
    qreal scaledFor_ = 0; // device pixels per pixel
    QSize scaledSize_;
};
