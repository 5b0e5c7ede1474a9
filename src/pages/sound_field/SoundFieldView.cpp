#include "pages/sound_field/SoundFieldView.h"

#include "helpers/MessageBoxes.h"
#include "pages/sound_field/SoundFieldGeometry.h"

#include <QFile>
#include <QPainter>

namespace {

constexpr int kSpeakerSize = 40;    // edge of a speaker's picture
constexpr double kLabelOffset = 12; // from a speaker's place to the sides of its upright label
constexpr int kLabelPixels = 11;

QString discPath() {
    return QStringLiteral(":/page4/png/圆.png");
}

QString speakerPath() {
    return QStringLiteral(":/page4/png/D__0.png");
}

void reportMissing(const QString &path) {
    if (QPixmap(path).isNull())
        ShowMessage(QStringLiteral("picture NULL"), nullptr, MB_OK);
}

// Of the picture and its rendering at twice the size, the one that need not be enlarged.
QPixmap sharpPicture(const QString &path, qreal ratio) {
    QString doublePath = path;
    doublePath.replace(QLatin1String(".png"), QLatin1String("@2x.png"));
    return QPixmap(ratio > 1 && QFile::exists(doublePath) ? doublePath : path);
}

QPixmap scaledPicture(const QString &path, int edge, qreal ratio) {
    QPixmap picture = sharpPicture(path, ratio);
    if (picture.isNull())
        return {};
    const int pixels = qRound(edge * ratio);
    if (picture.size() != QSize(pixels, pixels))
        picture = picture.scaled(pixels, pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    picture.setDevicePixelRatio(ratio);
    return picture;
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
    : QWidget(parent), speakers_(std::move(speakers)) {
    reportMissing(discPath());
    reportMissing(speakerPath());
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

// Loading and scaling are dear, turning is not: they are done once per size and screen.
void SoundFieldView::scalePictures() {
    const qreal ratio = devicePixelRatioF();
    if (ratio == scaledFor_ && size() == scaledSize_)
        return;
    disc_ = scaledPicture(discPath(), qMin(width(), height()), ratio);
    speaker_ = scaledPicture(speakerPath(), kSpeakerSize, ratio);
    scaledFor_ = ratio;
    scaledSize_ = size();
}

void SoundFieldView::paintEvent(QPaintEvent *) {
    scalePictures();
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.translate(QPoint(width() / 2, height() / 2)); // whole pixels keep the pictures sharp
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
