// What the session of the whole panel does not see of the equalizer's page: names and files.
#include "pages/equalizer/EqualizerPage.h"
#include "pages/PageTest.h"
#include "support/BoxAnswerer.h"

#include <cstring>
#include <gmock/gmock.h>
#include <QTemporaryDir>
#include <shlobj.h>

namespace {

using namespace testing;

class EqualizerPageTest : public PageTest {
protected:
    EqualizerPageTest() {
        recorder.updatesImage = true;
        recorder.info.sound.equalizerOn = 1;
        const std::wstring curveFile = folder.filePath("eqs.bin").toStdWString();
        readDevice(curveFile);
        page.emplace(context, effects, curveFile);
        form.stackedWidget->setCurrentWidget(form.page_3);
        window.show();
    }

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
    ExclusiveEffects effects{context};
    std::optional<EqualizerPage> page;
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
    EXPECT_THAT(recorder.calls, ElementsAre("setDeviceProperty(3)"));
    EXPECT_THAT(recorder.extension.gain, Each(-3));
    EXPECT_EQ(form.comboBox->currentText(), "A headphone, corrected for my o");
    EXPECT_EQ(form.comboBox->count(), 0);
    form.pushButton_25->click();
    EXPECT_EQ(form.comboBox->count(), 1);
    form.stackedWidget->setCurrentIndex(0);
    drop(name, text);
    form.stackedWidget->setCurrentWidget(form.page_3);
    form.pushButton_6->click(); // off
    recorder.calls.clear();
    drop(name, text);
    EXPECT_THAT(recorder.calls, IsEmpty());
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
    EXPECT_THAT(recorder.calls, IsEmpty());
}

} // namespace
