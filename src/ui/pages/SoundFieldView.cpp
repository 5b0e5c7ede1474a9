#include "ui/pages/SoundFieldView.h"

#include "helpers/MessageBoxes.h"
#include "ui/pages/SoundFieldGeometry.h"

#include <QPainter>

namespace {

constexpr int kSpeakerSize = 40;    // edge of a speaker's picture
constexpr double kLabelOffset = 12; // from a speaker's place to the sides of its upright label
constexpr int kLabelPixels = 11;

QPixmap load(const QString &path) {
    QPixmap picture(path);
    if (picture.isNull())
        ShowMessage(QStringLiteral("picture NULL"), nullptr, MB_OK);
    return picture;
}

QPixmap scaled(const QPixmap &picture, int edge, qreal ratio) {
    if (picture.isNull())
        return {};
    const int pixels = qRound(edge * ratio);
    QPixmap result = picture.scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    result.setDevicePixelRatio(ratio);
    return result;
}

QPointF topLeftCentred(const QPixmap &picture) {
    return QPointF(-picture.width(), -picture.height()) / (2 * picture.devicePixelRatio());
}

QFont labelFont() {
    QFont font(QStringLiteral("Microsoft YaHei"));
    font.setPixelSize(kLabelPixels);
    font.setBold(true);
    return font;
}

} // namespace

SoundFieldView::SoundFieldView(Speakers speakers, QWidget *parent)
    : QWidget(parent), speakers_(std::move(speakers)),
      discPicture_(load(QStringLiteral(":/page4/png/圆.png"))),
      speakerPicture_(load(QStringLiteral(":/page4/png/D__0.png"))) {
    setObjectName(QStringLiteral("soundFieldView"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFont(labelFont());
    resize(parent->size());
    show();
}

void SoundFieldView::setAngle(float degrees) {
    if (degrees == angle_)
        return;
    angle_ = degrees;
    update();
}

// Scaling smoothly is dear, turning is not: it is done once per size and screen.
void SoundFieldView::scalePictures() {
    const qreal ratio = devicePixelRatioF();
    if (ratio == scaledFor_ && size() == scaledSize_)
        return;
    disc_ = scaled(discPicture_, qMin(width(), height()), ratio);
    speaker_ = scaled(speakerPicture_, kSpeakerSize, ratio);
    scaledFor_ = ratio;
    scaledSize_ = size();
}

void SoundFieldView::paintEvent(QPaintEvent *) {
    scalePictures();
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.translate(width() / 2, height() / 2);
    painter.drawPixmap(topLeftCentred(disc_), disc_);
    painter.setPen(Qt::white);
    for (const Speaker &speaker : speakers_)
        drawSpeaker(painter, speaker);
}

void SoundFieldView::drawSpeaker(QPainter &painter, const Speaker &speaker) {
    const float degrees = angle_ + speaker.baseAngle;
    const SoundField::PointF point = SoundField::onCircle(degrees, SoundField::kSpeakerRadius);
    const QPointF place(point.x, point.y);
    painter.save();
    painter.translate(place);
    painter.rotate(-static_cast<double>(degrees)); // the painter turns clockwise
    painter.drawPixmap(topLeftCentred(speaker_), speaker_);
    painter.restore();
    const QPointF offset(kLabelOffset, kLabelOffset);
    painter.drawText(QRectF(place - offset, place + offset), Qt::AlignCenter, speaker.label);
}
