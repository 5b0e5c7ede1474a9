#include "ui/pages/EqualizerPage.h"

#include "device/EqCurves.h"
#include "ui/pages/PageTest.h"

#include <cstring>
#include <gmock/gmock.h>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

const std::string kWrite = "setDeviceProperty(3)";

class EqualizerPageTest : public PageTest {
protected:
    void start() {
        recorder.updatesImage = true;
        device.sound.equalizerOn = 1;
        device.info.sound = device.sound;
        page = std::make_unique<EqualizerPage>(context(), effects,
                                               (folder.path() + "/eqs.bin").toStdWString(), nullptr);
        EXPECT_THAT(takeCalls(), IsEmpty());
    }

    QSlider *slider(int band) const {
        return window.findChild<QSlider *>(QString("verticalSlider_%1").arg(10 + band));
    }
    void setAll(int gain) const {
        for (int band = 0; band < 10; ++band)
            slider(band)->setValue(gain + 20);
    }

    void saveAs(const QString &name) const {
        form.comboBox->setEditText(name);
        form.pushButton_25->click();
    }
    // What the box emits when the user picks an item.
    void choose(const QString &name) const {
        QMetaObject::invokeMethod(form.comboBox, "activated", Q_ARG(QString, name));
    }

    QTemporaryDir folder;
    QTimer rotationTimer;
    ExclusiveEffects effects{context(), rotationTimer, nullptr};
    std::unique_ptr<EqualizerPage> page;
};

TEST_F(EqualizerPageTest, ShowsTheBlockAndTheStore) {
    const int8_t stored[10] = {-20, 20, 0, 1, -1, 5, 127, -128, 19, -19};
    std::memcpy(device.extension.gain, stored, sizeof stored);
    for (const char16_t *name : {u"a", u"\uFEFFb"})
        EqCurves::save(device.curves, name, {}, [](const EqCurveStore &) {});
    start();
    EXPECT_EQ(slider(6)->value(), 40);
    EXPECT_EQ(slider(7)->value(), 0);
    EXPECT_EQ(form.jhq_lab_12->text() + form.jhq_lab_13->text() + form.jhq_lab_14->text(), "0+1-1");
    EXPECT_EQ(form.comboBox->count(), 2);
    EXPECT_EQ(form.comboBox->currentText(), QString(QChar(0xFEFF)) + "b");
}

TEST_F(EqualizerPageTest, AChosenCurveIsSentBandByBand) {
    start();
    setAll(1);
    saveAs("b");
    setAll(3);
    slider(4)->setValue(21);
    takeCalls();
    choose("b");
    EXPECT_EQ(takeCalls(), std::vector<std::string>(9, kWrite)); // one band was right already
    EXPECT_THAT(recorder.extension.gain, Each(1));
    EXPECT_EQ(slider(9)->value(), 21);
}

// Typing a name must neither complete to another, nor add an item, nor load a curve over the gains to be
// saved.
TEST_F(EqualizerPageTest, TypedNamesStayWhatTheyAre) {
    start();
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
    EXPECT_EQ(type(QString(40, 'x')), QString(31, 'x'));
    EXPECT_EQ(form.comboBox->count(), 1);
    form.comboBox->setCurrentIndex(-1);
    edit.setText("Alpha");
    form.pushButton_26->setFocus();
    form.pushButton_25->click();
    EXPECT_THAT(device.curves.curve[0].gain, Each(10));
}

} // namespace
