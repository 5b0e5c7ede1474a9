// What the session of the whole panel does not see of the equalizer's page: names and files.
#include "support/BoxAnswerer.h"
#include "window/WindowTest.h"

#include <cstring>
#include <gmock/gmock.h>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QSlider>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <shlobj.h>

namespace {

using namespace testing;

class EqualizerPageTest : public WindowTest {
protected:
    EqualizerPageTest() {
        QFile::remove(QCoreApplication::applicationDirPath() + "/config/eqs.bin");
        recorder.updatesImage = true;
        recorder.info.sound.equalizerOn = 1;
        start(0);
        pages().setCurrentIndex(kPage);
        recorder.calls.clear();
    }

    QStackedWidget &pages() const { return child<QStackedWidget>(*window, "stackedWidget"); }
    QComboBox &curves() const { return child<QComboBox>(*window, "comboBox"); }
    void click(const char *button) const { child<QPushButton>(*window, button).click(); }
    void saveAs(const QString &name) const {
        curves().setEditText(name);
        click("pushButton_25");
    }

    // As the shell does when the user lets go of a file over the page.
    void drop(const QString &name, const QByteArray &text) {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush());
        const std::wstring path = QDir::toNativeSeparators(file.fileName()).toStdWString();
        const QPoint place = pages().widget(kPage)->mapTo(window.get(), QPoint(300, 300));
        const HGLOBAL memory = GlobalAlloc(GHND, sizeof(DROPFILES) + (path.size() + 2) * sizeof(wchar_t));
        auto *files = static_cast<DROPFILES *>(GlobalLock(memory));
        *files = {sizeof *files, {place.x(), place.y()}, FALSE, TRUE};
        std::memcpy(files + 1, path.c_str(), path.size() * sizeof(wchar_t));
        GlobalUnlock(memory);
        SendMessageW(reinterpret_cast<HWND>(window->winId()), WM_DROPFILES, WPARAM(memory), 0);
        QCoreApplication::sendPostedEvents();
    }

    static constexpr int kPage = 2;
    QTemporaryDir folder;
};

TEST_F(EqualizerPageTest, NamesTheCurveWhoseGainsStandOnTheSliders) {
    const auto shown = [this] { return child<QLabel>(*window, "jhq_lab_20").text(); };
    child<QSlider>(*window, "verticalSlider_19").setValue(27);
    EXPECT_EQ(shown(), "自定义");
    saveAs("first");
    saveAs("second");
    EXPECT_EQ(shown(), "second"); // of two that fit the one saved last
    click("pushButton_24");
    EXPECT_EQ(shown(), "first");
}

TEST_F(EqualizerPageTest, TakesADroppedCurveAsAPresetAndStoresItOnlyWhenSaved) {
    const QString name = "A headphone, corrected for my own ears.txt";
    const QByteArray text = "GraphicEQ: 30 -3; 16000 -3";
    drop(name, text);
    EXPECT_THAT(recorder.calls, ElementsAre("setDeviceProperty(3)"));
    EXPECT_THAT(recorder.extension.gain, Each(-3));
    EXPECT_EQ(curves().currentText(), "A headphone, corrected for my o");
    EXPECT_EQ(curves().count(), 0);
    click("pushButton_25");
    EXPECT_EQ(curves().count(), 1);
    pages().setCurrentIndex(0);
    drop(name, text);
    pages().setCurrentIndex(kPage);
    click("pushButton_6"); // off
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
