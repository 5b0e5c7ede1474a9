// What the session of the whole panel does not see of the equalizer's page: typed names, the name and the
// drawing of the curve, and files.
#include "ui/pages/EqualizerPage.h"

#include "support/BoxAnswerer.h"
#include "ui/pages/EqCurveView.h"
#include "ui/pages/PageTest.h"

#include <cstring>
#include <gmock/gmock.h>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <QtMath>
#include <shlobj.h>

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

class EqualizerPageTest : public PageTest {
protected:
    EqualizerPageTest() {
        recorder.updatesImage = true;
        device.sound.equalizerOn = 1;
        device.info.sound = device.sound;
    }

    void open() {
        page = std::make_unique<EqualizerPage>(context(), effects, curveFile().toStdWString());
        EXPECT_THAT(takeCalls(), IsEmpty());
        form.stackedWidget->setCurrentWidget(form.page_3);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }

    QString curveFile() const { return folder.filePath("eqs.bin"); }
    QSlider *slider(int band) const {
        return window.findChild<QSlider *>(QString("verticalSlider_%1").arg(10 + band));
    }
    void saveAs(const QString &name) const {
        form.comboBox->setEditText(name);
        form.pushButton_25->click();
    }

    QString write(const char *name, const QByteArray &text) const {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
        return file.fileName();
    }
    // As the shell does when the user lets go of a file over the page.
    void drop(const QString &path) {
        const std::wstring name = QDir::toNativeSeparators(path).toStdWString();
        const QPoint place = form.page_3->mapTo(&window, QPoint(300, 300));
        const size_t size = sizeof(DROPFILES) + (name.size() + 2) * sizeof(wchar_t);
        const HGLOBAL memory = GlobalAlloc(GHND, size);
        auto *files = static_cast<DROPFILES *>(GlobalLock(memory));
        *files = {sizeof *files, {place.x(), place.y()}, FALSE, TRUE};
        std::memcpy(files + 1, name.c_str(), name.size() * sizeof(wchar_t));
        GlobalUnlock(memory);
        SendMessageW(reinterpret_cast<HWND>(window.winId()), WM_DROPFILES, reinterpret_cast<WPARAM>(memory),
                     0);
        QCoreApplication::sendPostedEvents();
    }

    QTemporaryDir folder;
    ExclusiveEffects effects{context()};
    std::unique_ptr<EqualizerPage> page;
};

// Typing a name must neither complete to another, nor add an item, nor load a curve over the gains to be
// saved.
TEST_F(EqualizerPageTest, TypedNamesStayWhatTheyAre) {
    open();
    saveAs("Alpha");
    form.btn_jhq8->click();
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
    EXPECT_EQ(device.curves.curve[0].gain[0], 6);
}

TEST_F(EqualizerPageTest, StoresTenCurvesAndSaysThatAnEleventhIsTooMany) {
    open();
    for (int i = 0; i < 10; ++i)
        saveAs(QString::number(i));
    EXPECT_EQ(device.curves.count, 10);
    BoxAnswerer answerer(0);
    saveAs("eleventh");
    EXPECT_EQ(answerer.box().text, L"too many EQ info to save");
    EXPECT_EQ(form.comboBox->count(), 10);
}

TEST_F(EqualizerPageTest, NamesTheCurveWhoseGainsStandOnTheSliders) {
    const auto shown = [this] { return form.jhq_lab_20->text(); };
    device.extension.gain[9] = 7;
    open();
    EXPECT_EQ(shown(), "自定义");
    saveAs("first");
    saveAs("second");
    EXPECT_EQ(shown(), "second"); // of two that fit the one saved last
    slider(9)->setValue(20);
    EXPECT_EQ(shown(), form.btn_jhq11->text());
    slider(9)->setValue(27);
    EXPECT_EQ(shown(), "second");
    form.pushButton_24->click();
    EXPECT_EQ(shown(), "first");
    form.btn_jhq3->click();
    EXPECT_EQ(shown(), form.btn_jhq3->text());
    form.comboBox->setEditText(QString(31, 'W'));
    slider(0)->setValue(0);
    EXPECT_EQ(shown(), "自定义");
    form.pushButton_25->click();
    EXPECT_TRUE(shown().startsWith("WWW") && shown().endsWith(u'…')) << shown().toStdString();
}

TEST_F(EqualizerPageTest, DrawsTheCurveThroughTheHandlesAsTheyMove) {
    open();
    auto *view = window.findChild<EqCurveView *>();
    // Of the darkest handle's centre: 0xb8 on the line, hardly half of it on the filling.
    const auto leastGreen = [&] {
        const QImage image = view->grab().toImage();
        int least = 255;
        for (int band = 0; band < 10; ++band) {
            const int x = slider(band)->x() - view->x() + 12;
            const int y = 8 + qFloor((40 - slider(band)->value()) * 7.1); // 284 pixels of way
            least = qMin(least, image.pixelColor(x, y).green());
        }
        return least;
    };
    for (QPushButton *preset : {form.btn_jhq5, form.btn_jhq1}) {
        preset->click();
        EXPECT_GT(leastGreen(), 0x90) << preset->objectName().toStdString();
    }
    form.pushButton_6->click();
    EXPECT_LT(leastGreen(), 0x68);
    // The mouse goes to what lies behind it.
    EXPECT_EQ(form.widget_24->childAt(slider(0)->geometry().topRight() + QPoint(10, 50)), nullptr);
}

TEST_F(EqualizerPageTest, TakesADroppedCurveAsAPresetAndStoresItOnlyWhenSaved) {
    open();
    form.btn_jhq3->click();
    takeCalls();
    drop(write("A headphone, corrected for my own ears.txt", "GraphicEQ: 30 -3; 16000 -3"));
    EXPECT_THAT(takeCalls(), ElementsAre("setDeviceProperty(3)"));
    EXPECT_THAT(recorder.extension.gain, Each(-3));
    EXPECT_EQ(slider(4)->value(), 17);
    EXPECT_EQ(form.comboBox->currentText(), "A headphone, corrected for my o");
    EXPECT_EQ(form.comboBox->count() + device.curves.count + QFile::exists(curveFile()), 0);
    form.pushButton_25->click();
    EXPECT_EQ(device.curves.count, 1);
    form.pushButton_26->click();
    EXPECT_EQ(slider(2)->value(), 15); // the preset chosen last
    takeCalls();
    form.stackedWidget->setCurrentWidget(form.page_1);
    drop(folder.filePath("A headphone, corrected for my own ears.txt"));
    EXPECT_THAT(takeCalls(), IsEmpty());
    form.stackedWidget->setCurrentWidget(form.page_3);
    device.sound.equalizerOn = 0;
    drop(folder.filePath("A headphone, corrected for my own ears.txt"));
    EXPECT_THAT(takeCalls(), IsEmpty());
}

TEST_F(EqualizerPageTest, TellsOfABadFileAndChangesNothing) {
    open();
    form.comboBox->setEditText("mine");
    const struct {
        const char *name;
        QByteArray text;
        const wchar_t *said;
    } files[] = {
        {"line.txt", "Preamp: -1 dB\nGraphicEQ: 20 x", L"无法导入“line.txt”：第 2 行有误。"},
        {"none.bin", QByteArray("MZ\0\0", 4),
         L"无法导入“none.bin”：文件中没有均衡器曲线（GraphicEQ 或 Filter 行）。"},
        {"%1.txt", "GraphicEQ: 20 1\n#" + QByteArray(10 << 20, ' '),
         L"无法导入“%1.txt”：文件无法读取，或大于 1 MB。"},
    };
    for (const auto &file : files) {
        BoxAnswerer answerer(0);
        drop(write(file.name, file.text));
        EXPECT_EQ(answerer.box().text, file.said);
    }
    EXPECT_THAT(takeCalls(), IsEmpty());
    EXPECT_THAT(device.extension.gain, Each(0));
    EXPECT_EQ(form.comboBox->currentText(), "mine");
    EXPECT_FALSE(QFile::exists(curveFile()));
}

} // namespace
