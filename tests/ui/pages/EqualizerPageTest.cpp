#include "ui/pages/EqualizerPage.h"

#include "device/EqCurves.h"
#include "support/BoxAnswerer.h"
#include "ui/pages/PageTest.h"

#include <cstring>
#include <gmock/gmock.h>
#include <memory>
#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using Gains = std::vector<int>;

constexpr char kWrite[] = "setDeviceProperty(3)";

class EqualizerPageTest : public PageTest {
protected:
    EqualizerPageTest() { recorder.updatesImage = true; }

    void start(bool on) {
        device.sound.equalizerOn = on;
        device.info.sound = device.sound;
        effects = std::make_unique<ExclusiveEffects>(context(), rotationTimer, nullptr);
        page = std::make_unique<EqualizerPage>(context(), *effects, path.toStdWString(), nullptr);
    }

    QSlider *slider(int band) const {
        return window.findChild<QSlider *>(QString("verticalSlider_%1").arg(9 + band));
    }
    QString label(int band) const {
        return window.findChild<QLabel *>(QString("jhq_lab_%1").arg(9 + band))->text();
    }
    QPushButton *preset(int i) const { return window.findChild<QPushButton *>(QString("btn_jhq%1").arg(i)); }

    void setAll(int gain) const {
        for (int band = 1; band <= 10; ++band)
            slider(band)->setValue(gain + 20);
    }

    // On the sliders, beside them and, when there was a write, on the device.
    void expectGains(const Gains &gains) const {
        EXPECT_EQ(Gains(device.extension.gain, device.extension.gain + 10), gains);
        EXPECT_EQ(Gains(recorder.extension.gain, recorder.extension.gain + 10), gains);
        for (int band = 1; band <= 10; ++band) {
            const int gain = gains[static_cast<size_t>(band - 1)];
            EXPECT_EQ(slider(band)->value(), gain + 20) << band;
            EXPECT_EQ(label(band), (gain > 0 ? "+" : "") + QString::number(gain)) << band;
        }
    }

    template<typename Act>
    std::vector<std::string> callsOf(Act act) {
        recorder.calls.clear();
        act();
        return recorder.calls;
    }

    void saveAs(const QString &name) const {
        form.comboBox->setEditText(name);
        form.pushButton_25->click();
    }

    // What the box emits when the user picks an item.
    void choose(const QString &name) const {
        QMetaObject::invokeMethod(form.comboBox, "activated", Q_ARG(QString, name));
    }

    QByteArray fileBytes() const {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QByteArray storeBytes() const {
        return {reinterpret_cast<const char *>(&device.curves), int(sizeof device.curves)};
    }
    QStringList names() const {
        QStringList list;
        for (int i = 0; i < form.comboBox->count(); ++i)
            list << form.comboBox->itemText(i);
        return list;
    }

    QTemporaryDir folder;
    const QString path = folder.path() + "/eqs.bin";
    QTimer rotationTimer;
    std::unique_ptr<ExclusiveEffects> effects;
    std::unique_ptr<EqualizerPage> page;
};

} // namespace

TEST_F(EqualizerPageTest, ShowsTheBlockAndTheStoreAndSendsNothing) {
    const int8_t stored[10] = {-20, 20, 0, 1, -1, 5, 127, -128, 19, -19};
    std::memcpy(device.extension.gain, stored, sizeof stored);
    for (const char16_t *name : {u"a", u"\uFEFFb", u"业\r\n"})
        EqCurves::save(device.curves, name, {}, [](const EqCurveStore &) {});
    device.curves.current = 1;
    start(true);
    EXPECT_EQ(recorder.writes[3], 0);
    EXPECT_EQ(slider(7)->value(), 40);
    EXPECT_EQ(slider(8)->value(), 0);
    EXPECT_EQ(label(3) + label(4) + label(5), "0+1-1");
    EXPECT_EQ(names(), (QStringList{"a", QString(QChar(0xFEFF)) + "b", "业\r\n"}));
    EXPECT_EQ(form.comboBox->currentIndex(), 1);
    // The two texts with Kangxi radicals, by code point.
    EXPECT_EQ(preset(9)->text(), QString::fromUtf8("\xE2\xBE\x84臻流\xE2\xBE\x8F"));
    EXPECT_EQ(preset(10)->text().at(0).unicode(), 0x2F08);
}

TEST_F(EqualizerPageTest, WhileOffOnlySlidersSend) {
    start(true);
    saveAs("kept");
    form.pushButton_6->click();
    recorder.onWrite = [this] { device.info.sound.room = 3; }; // the device's own image holds after a write
    for (int band = 1; band <= 10; ++band)
        EXPECT_THAT(callsOf([&] { slider(band)->setValue(31 - band); }), ElementsAre(kWrite));
    recorder.onWrite = nullptr;
    EXPECT_EQ(device.sound.room, 3);

    const QByteArray store = storeBytes(), file = fileBytes();
    EXPECT_THAT(callsOf([this] {
                    for (QPushButton *button :
                         {preset(0), form.pushButton_26, form.pushButton_25, form.pushButton_24})
                        emit button->clicked();
                    choose("kept");
                    choose("unknown");
                    form.comboBox->setEditText("other");
                    emit form.pushButton_25->clicked();
                }),
                IsEmpty());
    EXPECT_EQ(storeBytes(), store);
    EXPECT_EQ(fileBytes(), file);
    EXPECT_EQ(names(), QStringList("kept"));
    expectGains({10, 9, 8, 7, 6, 5, 4, 3, 2, 1});
}

TEST_F(EqualizerPageTest, PresetIsMarkedShownAndSentOnceAndResetGoesBackToIt) {
    start(true);
    const auto expectOneWrite = [this](QPushButton *button, const Gains &expected) {
        setAll(-13);
        EXPECT_THAT(callsOf([&] { button->click(); }), ElementsAre(kWrite));
        expectGains(expected);
    };
    expectOneWrite(form.pushButton_26, Gains(10, 0)); // no preset yet
    expectOneWrite(preset(5), {11, 8, 4, 5, -3, 3, 8, -5, 3, 6});
    EXPECT_EQ(form.jhq_lab_20->text(), "使命召唤");
    expectOneWrite(preset(9), {5, 6, 3, -2, -1, -1, 2, 4, 5, 3});
    for (int i = 0; i < 12; ++i)
        EXPECT_EQ(preset(i)->styleSheet(),
                  i == 9 ? "background: rgba(110,110,110,1);" : "background: rgba(0,0,0,1);")
            << i;
    expectOneWrite(form.pushButton_26, {5, 6, 3, -2, -1, -1, 2, 4, 5, 3});
}

TEST_F(EqualizerPageTest, CurvesAreSavedChosenAndDeleted) {
    start(true);
    for (const char *name : {"一号", "b", "B"}) {
        setAll(names().size());
        saveAs(name);
    }
    EXPECT_EQ(names(), (QStringList{"一号", "b", "B"}));
    const QByteArray file = fileBytes();
    QByteArray counted = file;
    counted[0] = 3; // the last curve is on the disk, but not yet counted there
    EXPECT_EQ(storeBytes(), counted);

    // Choosing sends each changed band through its slider; the file stays as it is.
    slider(4)->setValue(21);
    const auto calls = callsOf([this] { choose("b"); });
    EXPECT_THAT(calls, SizeIs(9));
    EXPECT_THAT(calls, Each(std::string(kWrite)));
    expectGains(Gains(10, 1));
    EXPECT_EQ(device.curves.current, 1);
    EXPECT_EQ(fileBytes(), file);

    form.comboBox->setCurrentText("b");
    for (const char *shown : {"B", "一号", ""}) {
        form.pushButton_24->click();
        EXPECT_EQ(form.comboBox->currentText(), shown);
        EXPECT_EQ(fileBytes(), storeBytes());
    }
    EXPECT_EQ(fileBytes(), QByteArray(748, 0));
}

TEST_F(EqualizerPageTest, FullStoreAndUnknownNameAreToldInABox) {
    start(true);
    for (int i = 0; i < 10; ++i)
        saveAs(QString::number(i));
    const QByteArray store = storeBytes();
    {
        BoxAnswerer answerer(0);
        saveAs("eleven");
        EXPECT_EQ(answerer.box().text, L"too many EQ info to save");
    }
    {
        BoxAnswerer answerer(0);
        choose("eleven");
        EXPECT_EQ(answerer.box().text, L"not found");
    }
    EXPECT_EQ(storeBytes(), store);
    setAll(-20);
    saveAs("3"); // replaced, not refused
    EXPECT_THAT(device.curves.curve[3].gain, Each(-20));
    EXPECT_EQ(names().size(), 10);
}

// Typing a name must neither complete to another, nor add an item, nor load a curve over the gains to be
// saved.
TEST_F(EqualizerPageTest, TypedNamesStayWhatTheyAre) {
    start(true);
    window.show();
    form.stackedWidget->setCurrentIndex(2);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    saveAs("Alpha");
    setAll(10);

    QLineEdit &edit = *form.comboBox->lineEdit();
    const auto type = [&edit](const QString &text) {
        edit.setFocus();
        edit.selectAll();
        QTest::keyClicks(&edit, text);
        QTest::keyClick(&edit, Qt::Key_Return);
        return edit.text();
    };
    EXPECT_EQ(type("al"), "al");
    EXPECT_EQ(names(), QStringList("Alpha"));
    EXPECT_EQ(type(QString(40, 'x')), QString(31, 'x'));
    form.comboBox->setCurrentIndex(-1);
    edit.setText("Alpha");
    form.pushButton_26->setFocus();
    form.pushButton_25->click();
    EXPECT_THAT(device.curves.curve[0].gain, Each(10));
}
