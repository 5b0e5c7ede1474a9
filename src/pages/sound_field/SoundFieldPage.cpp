#include "pages/sound_field/SoundFieldPage.h"

#include "helpers/LogHelper.h"
#include "pages/ButtonHighlight.h"
#include "pages/FindControl.h"
#include "pages/sound_field/SoundFieldGeometry.h"
#include "pages/sound_field/SoundFieldView.h"
#include "ui_demoClass.h"

namespace {

// The eight speakers in the order of their bytes in the block.
struct SpeakerNames {
    const char *slider;
    const char *value;
    const char *marker;
    const char *label;
    float angle; // degrees, counter-clockwise from the right: where a 7.1 set stands around the listener
};

constexpr std::array<SpeakerNames, sizeof(SoundBlock::speakerLevel)> kSpeakers{{
    {"page4_L", "L_V", "page4_Label_L", "L", 120},
    {"page4_R", "R_V", "page4_Label_R", "R", 60},
    {"page4_LS", "LS_V", "page4_Label_LS", "LS", 180},
    {"page4_RS", "RS_V", "page4_Label_RS", "RS", 0},
    {"page4_LB", "LB_V", "page4_Label_LB", "LB", 235},
    {"page4_RB", "RB_V", "page4_Label_RB", "RB", 305},
    {"page4_c", "C_V", "page4_Label_C", "C", 90},
    {"page4_w", "W_V", "page4_Label_W", "W", 270},
}};

// A marker at the lowest level, 1.5 times as far out, just stays inside the picture.
constexpr double kReferenceRadius = 104;

constexpr int kFieldButtons = 5;
constexpr uint32_t kPressedColour = 0x6E6E6E;
constexpr uint32_t kOtherColour = 0x1A1A1A;

QPoint centreOf(const QRect &area) {
    return {area.x() + area.width() / 2, area.y() + area.height() / 2};
}

QPushButton &fieldButton(const QWidget &window, int number) {
    return findControl<QPushButton>(window, QStringLiteral("Page4_P_%1").arg(number));
}

SoundFieldView::Speakers drawnSpeakers() {
    SoundFieldView::Speakers speakers;
    for (size_t i = 0; i < speakers.size(); ++i)
        speakers[i] = {QString::fromLatin1(kSpeakers[i].label), kSpeakers[i].angle};
    return speakers;
}

} // namespace

SoundFieldPage::SoundFieldPage(PageContext context, ExclusiveEffects &effects, QTimer &rotationTimer)
    : context_(context), effects_(effects), rotation_(rotationTimer) {
    const Ui::demoClass &form = context_.form;
    auto *view = new SoundFieldView(drawnSpeakers(), form.round);
    form.round->setStyleSheet(QStringLiteral("background: none;")); // the drawing brings its own disc
    connect(&rotation_, &FieldRotation::turned, view, &SoundFieldView::setAngle);
    findSpeakers();
    effects_.attach(Effect::SoundField, *form.pushButton_14, form.label_152, {form.Page4_P, form.frame_2});
    connect(&effects_, &ExclusiveEffects::changed, this, &SoundFieldPage::followAngleMode);
    connect(&context_.device, &DeviceState::soundReplaced, this, &SoundFieldPage::showStored);
    showStored();
    connectLevels();
    connectFieldButtons();
    followAngleMode();
}

void SoundFieldPage::findSpeakers() {
    const FlagScope filling(context_.volume.volumeUpdating);
    const QPoint centre = centreOf(context_.form.round->geometry());
    for (size_t i = 0; i < speakers_.size(); ++i) {
        const SpeakerNames &names = kSpeakers[i];
        const SoundField::PointF offset = SoundField::onCircle(names.angle, kReferenceRadius);
        speakers_[i] = {&findControl<QSlider>(context_.window, QLatin1String(names.slider)),
                        &findControl<QLabel>(context_.window, QLatin1String(names.value)),
                        &findControl<QLabel>(context_.window, QLatin1String(names.marker)),
                        centre + QPoint(qRound(offset.x), qRound(offset.y))};
        speakers_[i].slider->setRange(SoundField::kMinLevel, SoundField::kMaxLevel);
    }
    context_.form.horizontalSlider_14->setRange(SoundField::kMinLevel, SoundField::kMaxLevel);
}

void SoundFieldPage::connectLevels() {
    const Ui::demoClass &form = context_.form;
    for (size_t i = 0; i < speakers_.size(); ++i)
        connect(speakers_[i].slider, &QSlider::valueChanged, this,
                [this, i](int level) { moveSpeaker(i, level); });
    connect(form.horizontalSlider_14, &QSlider::valueChanged, this, &SoundFieldPage::moveMaster);
    connect(form.Page4_P_6, &QPushButton::clicked, this, [this] { stepLevels(-1); });
    connect(form.Page4_P_7, &QPushButton::clicked, this, [this] { stepLevels(1); });
}

void SoundFieldPage::connectFieldButtons() {
    const auto connectButton = [this](int number, auto action) {
        connect(&fieldButton(context_.window, number), &QPushButton::clicked, this, [this, number, action] {
            if (!effects_.isOn(Effect::SoundField))
                return;
            markFieldButton(number);
            action();
        });
    };
    connectButton(1, [this] { setAngleMode(AngleMode::Clockwise); });
    connectButton(2, [this] { setAngleMode(AngleMode::Anticlockwise); });
    connectButton(3, [this] { setAngleMode(AngleMode::Held); });
    connectButton(4, [this] { centre(); });
    connectButton(5, [this] { restoreDefaults(); });
}

void SoundFieldPage::retranslated() {
    placeMarkers();
}

void SoundFieldPage::showStored() {
    showLevels();
    showMaster(context_.device.sound.speakerLevel[0]);
    placeMarkers();
    const int mode = context_.device.sound.fieldAngleMode;
    markFieldButton(mode <= static_cast<int>(AngleMode::Centred) ? mode : 0);
}

// The speakers' own sliders send even while the sound field is off.
void SoundFieldPage::moveSpeaker(size_t speaker, int level) {
    if (context_.volume.volumeUpdating)
        return;
    context_.device.sound.speakerLevel[speaker] = static_cast<int8_t>(level);
    context_.device.saveType2Block();
    placeMarker(speakers_[speaker]);
}

void SoundFieldPage::moveMaster(int level) {
    if (context_.volume.volumeUpdating || !effects_.isOn(Effect::SoundField))
        return;
    setAllLevels(level);
    context_.device.saveType2Block();
    placeMarkers();
}

void SoundFieldPage::stepLevels(int step) {
    if (!effects_.isOn(Effect::SoundField))
        return;
    for (int8_t &level : context_.device.sound.speakerLevel)
        level = SoundField::stepLevel(level, step);
    showLevels();
    context_.device.saveType2Block();
    placeMarkers();
    showMaster(context_.device.sound.speakerLevel[0]);
}

void SoundFieldPage::setAngleMode(AngleMode mode) {
    context_.device.sound.fieldAngleMode = static_cast<uint8_t>(mode);
    followAngleMode();
    context_.device.saveType2Block();
}

void SoundFieldPage::centre() {
    rotation_.centre();
    setAngleMode(AngleMode::Centred);
}

void SoundFieldPage::restoreDefaults() {
    setAllLevels(0);
    showMaster(0);
    placeMarkers();
    centre();
}

void SoundFieldPage::followAngleMode() {
    if (const int step = ExclusiveGroup::rotationStep(context_.device.sound))
        rotation_.start(step);
    else
        rotation_.hold();
}

void SoundFieldPage::setAllLevels(int level) {
    auto &levels = context_.device.sound.speakerLevel;
    std::fill(std::begin(levels), std::end(levels), static_cast<int8_t>(level));
    showLevels();
}

void SoundFieldPage::showLevels() {
    const FlagScope filling(context_.volume.volumeUpdating);
    for (size_t i = 0; i < speakers_.size(); ++i)
        speakers_[i].slider->setValue(context_.device.sound.speakerLevel[i]);
}

void SoundFieldPage::showMaster(int level) {
    const FlagScope filling(context_.volume.volumeUpdating);
    context_.form.horizontalSlider_14->setValue(level);
}

void SoundFieldPage::placeMarker(const Speaker &speaker) {
    const QPoint centre = centreOf(context_.form.round->geometry());
    const QSlider &slider = *speaker.slider;
    const int level = slider.value();
    const SoundField::Point place = SoundField::markerPosition(
        {centre.x(), centre.y()}, {speaker.reference.x(), speaker.reference.y()},
        {speaker.marker->width(), speaker.marker->height()}, level, slider.minimum(), slider.maximum());
    speaker.marker->move(place.x, place.y);
    speaker.value->setText(QString::number(level) + QStringLiteral("db"));
    QOR_TRACE(L"%d", level);
}

void SoundFieldPage::placeMarkers() {
    for (const Speaker &speaker : speakers_)
        placeMarker(speaker);
}

// None of them for a number that no button has.
void SoundFieldPage::markFieldButton(int number) {
    QVector<QWidget *> buttons;
    for (int each = 1; each <= kFieldButtons; ++each)
        buttons.push_back(&fieldButton(context_.window, each));
    ButtonHighlight::mark(buttons, buttons.value(number - 1), kPressedColour, kOtherColour);
}
