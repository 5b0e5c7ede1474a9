// Smooth pictures at scales such as 115 % or 150 %. A style sheet's pictures are there at 1x and 2x only; for
// a scale in between, Qt 5 takes the 2x form but leaves out pixels of it, which breaks thin lines and small
// digits (QRenderRule::drawBackgroundImage in qstylesheetstyle.cpp, which paints without
// SmoothPixmapTransform).
#pragma once

#include <QObject>

class SmoothPictures : public QObject {
public:
    // Does nothing where every screen shows the pictures pixel by pixel.
    static void installWhereNeeded();

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    using QObject::QObject;
};
