// What the session of the whole panel does not see of the equalizer's page: names and files.
#include "ui/pages/EqualizerPage.h"

#include "support/BoxAnswerer.h"
#include "ui/pages/PageTest.h"

#include <cstring>
#include <gmock/gmock.h>
#include <QTemporaryDir>
#include <QTest>
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
        page = std::make_unique<EqualizerPage>(context(), effects, curveFile().toStdWString());
        form.stackedWidget->setCurrentWidget(form.page_3);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        EXPECT_THAT(takeCalls(), IsEmpty());
    }

    QString curveFile() const { return folder.filePath("eqs.bin"); }
    void saveAs(const QString &name) const {
        form.comboBox->setEditText(name);
        form.pushButton_25->click();
    }

    // As the shell does when the user lets go of a file over the page.
    void drop(const QString &name, const QByteArray &text) {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush());
        const std::wstring path = QDir::toNativeSeparators(file.fileName()).toStdWString();
        const QPoint place = form.page_3->mapTo(&window, QPoint(300, 300));
        const HGLOBAL memory = GlobalAlloc(GHND, sizeof(DROPFILES) + (path.size() + 2) * sizeof(wchar_t));
        auto *files = static_cast<DROPFILES *>(GlobalLock(memory));
        *files = {sizeof *files, {place.x(), place.y()}, FALSE, TRUE};
        std::memcpy(files + 1, path.c_str(), path.size() * sizeof(wchar_t));
        GlobalUnlock(memory);
        SendMessageW(reinterpret_cast<HWND>(window.winId()), WM_DROPFILES, WPARAM(memory), 0);
        QCoreApplication::sendPostedEvents();
    }

    QTemporaryDir folder;
    ExclusiveEffects effects{context()};
    std::unique_ptr<EqualizerPage> page;
};

TEST_F(EqualizerPageTest, NamesTheCurveWhoseGainsStandOnTheSliders) {
    const auto shown = [this] { return form.jhq_lab_20->text(); };
    form.verticalSlider_19->setValue(27);
    EXPECT_EQ(shown(), "自定义");
    saveAs("first");
    saveAs("second");
    EXPECT_EQ(shown(), "second"); // of two that fit the one saved last
    form.pushButton_24->click();
    EXPECT_EQ(shown(), "first");
}

TEST_F(EqualizerPageTest, TakesADroppedCurveAsAPresetAndStoresItOnlyWhenSaved) {
    const QString name = "A headphone, corrected for my own ears.txt";
    const QByteArray text = "GraphicEQ: 30 -3; 16000 -3";
    drop(name, text);
    EXPECT_THAT(takeCalls(), ElementsAre("setDeviceProperty(3)"));
    EXPECT_THAT(recorder.extension.gain, Each(-3));
    EXPECT_EQ(form.comboBox->currentText(), "A headphone, corrected for my o");
    EXPECT_EQ(device.curves.count, 0);
    form.pushButton_25->click();
    EXPECT_EQ(device.curves.count, 1);
    takeCalls();
    form.stackedWidget->setCurrentWidget(form.page_1);
    drop(name, text);
    form.stackedWidget->setCurrentWidget(form.page_3);
    device.sound.equalizerOn = 0;
    drop(name, text);
    EXPECT_THAT(takeCalls(), IsEmpty());
}

TEST_F(EqualizerPageTest, TellsOfABadFileAndChangesNothing) {
    const struct {
        const wchar_t *name;
        QByteArray text;
        const wchar_t *said; // after the file's name
    } files[] = {
        {L"line.txt", "Preamp: -1 dB\nGraphicEQ: 20 x", L"第 2 行有误。"},
        {L"none.bin", "MZ", L"文件中没有均衡器曲线（GraphicEQ 或 Filter 行）。"},
        {L"%1.txt", QByteArray(10 << 20, ' '), L"文件无法读取，或大于 1 MB。"},
    };
    for (const auto &file : files) {
        BoxAnswerer answerer(0);
        drop(QString::fromWCharArray(file.name), file.text);
        EXPECT_EQ(answerer.box().text, L"无法导入“" + std::wstring(file.name) + L"”：" + file.said);
    }
    EXPECT_THAT(takeCalls(), IsEmpty());
}

} // namespace
