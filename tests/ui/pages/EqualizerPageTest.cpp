#include "ui/pages/EqualizerPage.h"

#include "device/EqCurveFile.h"
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

constexpr char kWrite[] = "setDeviceProperty(3)";

class EqualizerPageTest : public PageTest {
protected:
    EqualizerPageTest() { recorder.updatesImage = true; }

    void start(bool on) {
        device.sound.equalizerOn = on;
        device.info.sound = device.sound;
        recorder.info = device.info;
        path = (folder.path() + "/eqs.bin").toStdWString();
        page.reset();
        effects = std::make_unique<ExclusiveEffects>(context(), rotationTimer, nullptr);
        page = std::make_unique<EqualizerPage>(context(), *effects, path, nullptr);
        recorder.calls.clear();
    }

    QSlider *slider(int band) const {
        return window.findChild<QSlider *>(QString("verticalSlider_%1").arg(9 + band));
    }
    QString label(int band) const {
        return window.findChild<QLabel *>(QString("jhq_lab_%1").arg(9 + band))->text();
    }
    QPushButton *preset(int i) const { return window.findChild<QPushButton *>(QString("btn_jhq%1").arg(i)); }
    QComboBox &names() const { return *form.comboBox; }

    void expectShown(const std::vector<int> &gains) const {
        for (int band = 1; band <= 10; ++band) {
            const int gain = gains[static_cast<size_t>(band - 1)];
            EXPECT_EQ(slider(band)->value(), gain + 20) << band;
            EXPECT_EQ(label(band), (gain > 0 ? "+" : "") + QString::number(gain)) << band;
        }
    }

    void setAll(int sliderValue) const {
        for (int band = 1; band <= 10; ++band)
            slider(band)->setValue(sliderValue);
    }

    void saveAs(const QString &name) const {
        names().setEditText(name);
        form.pushButton_25->click();
    }

    // What the box emits when the user picks an item.
    void choose(const QString &name) const {
        QMetaObject::invokeMethod(&names(), "activated", Q_ARG(QString, name));
    }

    QByteArray fileBytes() const {
        QFile file(QString::fromStdWString(path));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QByteArray storeBytes() const {
        return {reinterpret_cast<const char *>(&device.curves), int(sizeof device.curves)};
    }
    QStringList items() const {
        QStringList list;
        for (int i = 0; i < names().count(); ++i)
            list << names().itemText(i);
        return list;
    }

    QTemporaryDir folder;
    std::wstring path;
    QTimer rotationTimer;
    std::unique_ptr<ExclusiveEffects> effects;
    std::unique_ptr<EqualizerPage> page;
};

} // namespace

TEST_F(EqualizerPageTest, SetUpShowsTheBlockAndTheStoreAndSendsNothing) {
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
    EXPECT_EQ(items(), (QStringList{"a", QString(QChar(0xFEFF)) + "b", "业\r\n"}));
    EXPECT_EQ(names().currentIndex(), 1);
    // The two texts with Kangxi radicals, by code point.
    EXPECT_EQ(preset(9)->text(), QString::fromUtf8("\xE2\xBE\x84臻流\xE2\xBE\x8F"));
    EXPECT_EQ(preset(10)->text().at(0).unicode(), 0x2F08);
}

TEST_F(EqualizerPageTest, EverySliderStepIsOneWriteAlsoWhileOff) {
    start(false);
    for (int band = 1; band <= 10; ++band) {
        recorder.calls.clear();
        slider(band)->setValue(31 - band);
        EXPECT_THAT(recorder.calls, ElementsAre(kWrite));
        EXPECT_EQ(recorder.extension.gain[band - 1], 11 - band);
    }
    expectShown({10, 9, 8, 7, 6, 5, 4, 3, 2, 1});
}

// After the write the device's own sound image holds, whatever the panel had in its block.
TEST_F(EqualizerPageTest, SoundBlockIsTakenFromTheDevicesImageAfterEachWrite) {
    start(true);
    recorder.onWrite = [this] { device.info.sound.room = 3; };
    slider(1)->setValue(33);
    EXPECT_EQ(device.sound.room, 3);
    recorder.onWrite = nullptr;
}

TEST_F(EqualizerPageTest, PresetIsMarkedShownAndSentOnceAndResetGoesBackToIt) {
    start(true);
    setAll(7);
    const auto expectOneWrite = [this](QPushButton *button, const std::vector<int> &expected) {
        recorder.calls.clear();
        button->click();
        EXPECT_THAT(recorder.calls, ElementsAre(kWrite));
        EXPECT_EQ(std::vector<int>(device.extension.gain, device.extension.gain + 10), expected);
        expectShown(expected);
    };
    expectOneWrite(form.pushButton_26, std::vector<int>(10, 0)); // no preset yet
    expectOneWrite(preset(5), {11, 8, 4, 5, -3, 3, 8, -5, 3, 6});
    EXPECT_EQ(form.jhq_lab_20->text(), "使命召唤");
    expectOneWrite(preset(9), {5, 6, 3, -2, -1, -1, 2, 4, 5, 3});
    for (int i = 0; i < 12; ++i)
        EXPECT_TRUE(preset(i)->styleSheet().contains(i == 9 ? "background: rgba(110,110,110,1);"
                                                            : "background: rgba(0,0,0,1);"))
            << i << preset(i)->styleSheet().toStdString();
    setAll(35);
    expectOneWrite(form.pushButton_26, {5, 6, 3, -2, -1, -1, 2, 4, 5, 3});
}

TEST_F(EqualizerPageTest, WhileOffOnlySlidersDoAnything) {
    start(true);
    saveAs("kept");
    form.pushButton_6->click();
    setAll(33);
    recorder.calls.clear();
    const QByteArray store = storeBytes(), file = fileBytes();
    for (QPushButton *button : {preset(0), form.pushButton_26, form.pushButton_25, form.pushButton_24})
        emit button->clicked();
    choose("kept");
    names().setEditText("other");
    emit form.pushButton_25->clicked();
    EXPECT_THAT(recorder.calls, IsEmpty());
    EXPECT_EQ(storeBytes(), store);
    EXPECT_EQ(fileBytes(), file);
    EXPECT_EQ(items(), QStringList("kept"));
    expectShown(std::vector<int>(10, 13));
}

TEST_F(EqualizerPageTest, CurvesAreSavedChosenAndDeleted) {
    start(true);
    setAll(21);
    saveAs("一号");
    QByteArray onDisk = storeBytes();
    onDisk[0] = 0; // a new curve is written before it is counted
    EXPECT_EQ(fileBytes(), onDisk);
    EXPECT_EQ(device.curves.count, 1);

    setAll(22);
    saveAs("b");
    setAll(23);
    saveAs("B");
    EXPECT_EQ(items(), (QStringList{"一号", "b", "B"}));

    // Choosing sends each changed band through its slider; the last write holds the whole curve.
    slider(4)->setValue(22);
    const QByteArray file = fileBytes();
    recorder.calls.clear();
    choose("b");
    EXPECT_THAT(recorder.calls, SizeIs(9));
    EXPECT_THAT(recorder.calls, Each(std::string(kWrite)));
    EXPECT_THAT(recorder.extension.gain, Each(2));
    EXPECT_EQ(device.curves.current, 1);
    EXPECT_EQ(fileBytes(), file);
    choose("unknown");
    EXPECT_THAT(recorder.calls, SizeIs(9));

    // Saving under a known name replaces its gains, and the file then holds the true count.
    setAll(39);
    saveAs("b");
    EXPECT_EQ(items().size(), 3);
    EXPECT_EQ(fileBytes(), storeBytes());
    EXPECT_THAT(device.curves.curve[1].gain, Each(19));

    form.pushButton_24->click();
    EXPECT_EQ(items(), (QStringList{"一号", "B"}));
    EXPECT_EQ(names().currentText(), "B");
    EXPECT_EQ(fileBytes(), storeBytes());
    form.pushButton_24->click();
    EXPECT_EQ(names().currentText(), "一号");
    form.pushButton_24->click();
    EXPECT_EQ(names().currentText(), "");
    EXPECT_EQ(fileBytes(), QByteArray(748, 0));
}

TEST_F(EqualizerPageTest, EleventhCurveIsRefusedInABox) {
    start(true);
    for (int i = 0; i < 10; ++i)
        saveAs(QString::number(i));
    const QByteArray store = storeBytes();
    BoxAnswerer answerer(0);
    saveAs("eleven");
    EXPECT_EQ(answerer.box().text, L"too many EQ info to save");
    EXPECT_EQ(storeBytes(), store);
    EXPECT_EQ(names().count(), 10);
}

// Typing a name must neither complete to another, nor add an item, nor load a curve over the gains to be
// saved.
TEST_F(EqualizerPageTest, TypedNamesStayWhatTheyAre) {
    start(true);
    window.show();
    form.stackedWidget->setCurrentIndex(2);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    saveAs("Alpha");
    setAll(30);
    recorder.calls.clear();

    QLineEdit &edit = *names().lineEdit();
    const auto type = [&edit](const QString &text) {
        edit.setFocus();
        edit.selectAll();
        QTest::keyClicks(&edit, text);
        QTest::keyClick(&edit, Qt::Key_Return);
        return edit.text();
    };
    EXPECT_EQ(type("al"), "al");
    EXPECT_EQ(items(), QStringList("Alpha"));
    EXPECT_EQ(type(QString(40, 'x')), QString(31, 'x'));
    names().setCurrentIndex(-1);
    edit.setText("Alpha");
    form.pushButton_26->setFocus();
    EXPECT_THAT(recorder.calls, IsEmpty());
    form.pushButton_25->click();
    EXPECT_THAT(device.curves.curve[0].gain, Each(10));
}
