// Times the pages on the whole form, with the recorder in place of the device library: one step of a slider,
// from setValue to the end of its handler (a block write is within), and one redraw of the sound field and of
// the equalizer's curve. Prints rows of bench/run's table.
#include "pages/equalizer/EqCurveView.h"
#include "pages/equalizer/EqualizerPage.h"
#include "pages/sound_field/SoundFieldPage.h"
#include "pages/sound_field/SoundFieldView.h"
#include "resources/MainForm.h"
#include "Row.h"
#include "support/DeviceRecorder.h"
#include "ui_demoClass.h"

#include <chrono>
#include <QApplication>
#include <QMainWindow>
#include <QPainter>
#include <QTimer>

namespace {

// Microseconds of each of `count` calls of step(0), step(1) and so on.
template<typename Step>
std::vector<double> timesOf(int count, Step step) {
    std::vector<double> times;
    for (int i = 0; i < count; ++i) {
        const auto start = std::chrono::steady_clock::now();
        step(i);
        const std::chrono::duration<double, std::micro> time = std::chrono::steady_clock::now() - start;
        times.push_back(time.count());
    }
    return times;
}

void printSliderStep(const std::string &what, QSlider &slider) {
    DeviceRecorder &recorder = DeviceRecorder::instance();
    const int steps = slider.maximum() - slider.minimum() + 1;
    recorder.calls.clear();
    const auto times = timesOf(4000, [&](int i) { slider.setValue(slider.minimum() + i % steps); });
    const auto writes = static_cast<double>(recorder.calls.size()); // a step calls nothing else
    std::vector<double> sorted = times;
    std::sort(sorted.begin(), sorted.end());
    printRow(what, median(times), " us", 100,
             "p99 " + figure(sorted[sorted.size() * 99 / 100], "us") + ", " +
                 figure(writes / static_cast<double>(times.size()), "writes each"));
}

// Drawn onto an image, which leaves the display out. change(i) comes before redraw i.
template<typename Change>
void printRedraw(const std::string &what, QWidget &view, double goalMs, Change change) {
    const qreal scale = view.devicePixelRatioF();
    QImage image(view.size() * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::black);
    QPainter painter(&image);
    const auto times = timesOf(400, [&](int i) {
        change(i);
        view.render(&painter, QPoint(), QRegion(), QWidget::RenderFlags());
    });
    printRow(what + ", " + std::to_string(qRound(100 * scale)) + " %", median(times) / 1000, " ms", goalMs,
             "worst " + figure(*std::max_element(times.begin(), times.end()) / 1000, "ms"));
}

void showPageOf(QStackedWidget &pages, QWidget &control) {
    for (int page = 0; page < pages.count(); ++page) {
        if (pages.widget(page)->isAncestorOf(&control))
            pages.setCurrentIndex(page);
    }
    QCoreApplication::processEvents();
}

} // namespace

int main(int argc, char *argv[]) {
    QApplication application(argc, argv);
    QApplication::setFont(QFont(QStringLiteral("Microsoft YaHei")));
    QMainWindow window;
    Ui::demoClass form;
    setUpMainForm(form, window);

    DeviceRecorder::instance().updatesImage = true;
    DeviceState device;
    device.sound.equalizerOn = 1;
    device.info.sound = device.sound;
    VolumeFlags volume;
    InterfaceLanguage language;
    const PageContext context{window, form, device, volume, language};
    QTimer rotation;
    ExclusiveEffects effects(context);
    const EqualizerPage equalizer(context, effects, std::wstring());
    const SoundFieldPage soundField(context, effects, rotation);
    window.show();

    const bool scaled = window.devicePixelRatioF() > 1; // only the redraw depends on it
    if (!scaled) {
        showPageOf(*form.stackedWidget, *form.verticalSlider_15);
        printSliderStep("Slider step, equalizer", *form.verticalSlider_15);
    }
    printRedraw("Equalizer curve's redraw", *window.findChild<EqCurveView *>(), scaled ? 3 : 1, [&](int i) {
        const int preset = i % EqPresets::kCount;
        window.findChild<QPushButton *>(QStringLiteral("btn_jhq%1").arg(preset))->click();
    });
    effects.toggle(Effect::SoundField);
    showPageOf(*form.stackedWidget, *form.page4_L);
    if (!scaled)
        printSliderStep("Slider step, sound field", *form.page4_L);
    auto &field = *window.findChild<SoundFieldView *>();
    printRedraw("Sound-field redraw", field, scaled ? 5 : 2, [&](int) { field.setAngle(field.angle() + 1); });
    return 0;
}
