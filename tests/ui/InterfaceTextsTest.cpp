// The whole main window with all its pages and dialogs, in both languages.
#include "ui/demo.h"

#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "support/DeviceRecorder.h"
#include "ui/QmFiles.h"
#include "ui/ShownTexts.h"
#include "ui/StartTip.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QPushButton>
#include <QRegularExpression>
#include <QSlider>
#include <QStackedWidget>
#include <QTest>
#include <QTimer>

namespace {

class InterfaceTexts : public testing::Test {
protected:
    InterfaceTexts() {
        DeviceRecorder::instance().reset();
        DeviceInfo &info = DeviceRecorder::instance().info; // levels that no form text happens to show
        info.sound.masterVolume = info.sound.rightVolume = 63;
        info.sound.leftVolume = 41;
        info.system.micLevel = 77;
        info.system.monitorLevel = 22;
        info.extension.gain[0] = -9;
        QApplication::setFont(QFont(QStringLiteral("Microsoft YaHei")));
        qApp->setStyleSheet(QStringLiteral("QPushButton:focus { outline: none; }"));
        QmFiles::restore();
        Registry::CreateKey(ProductSettings::kProductKey);
    }

    static std::unique_ptr<demo> start(uint32_t language) {
        ProductSettings::writeDword(L"language", language);
        auto window = std::make_unique<demo>();
        window->move(180, 60);
        window->show();
        QTest::qWait(150); // the re-layout after construction
        return window;
    }

    static void whileDialogRuns(demo &window, const std::function<void()> &open,
                                const std::function<void(QDialog &)> &act) {
        QTimer::singleShot(0, &window, [&] {
            QTest::qWait(20);
            QDialog *dialog = window.findChild<QDialog *>();
            ASSERT_NE(dialog, nullptr);
            act(*dialog);
            dialog->close();
        });
        open();
    }

    // As a user does it.
    static void switchTo(demo &window, int language) {
        whileDialogRuns(
            window, [&] { window.OpenSettingsDialog(); },
            [&](QDialog &dialog) {
                dialog.findChild<QComboBox *>(QStringLiteral("comboBox"))->setCurrentIndex(language);
                dialog.findChild<QPushButton *>(QStringLiteral("pushButton_2"))->click();
            });
    }

    static void forEachDialog(demo &window, const std::function<void(QDialog &)> &act) {
        const std::function<void()> openings[] = {[&] { window.OpenSettingsDialog(); },
                                                  [&] { window.ShowVersionDialog(); },
                                                  [&] { ShowStartTip(&window); }};
        for (const auto &open : openings)
            whileDialogRuns(window, open, act);
    }

    static std::string joined(const QStringList &lines) {
        return lines.join(QLatin1Char('\n')).toStdString();
    }
};

TEST_F(InterfaceTexts, EnglishLeavesNoChinese) {
    const std::unique_ptr<demo> window = start(1);
    QStringList texts = ShownTexts::all(*window);
    forEachDialog(*window, [&](QDialog &dialog) { texts += ShownTexts::all(dialog); });
    EXPECT_GT(texts.size(), 150);
    EXPECT_EQ(joined(texts.filter(QRegularExpression(
                  QStringLiteral("[\\x{2e80}-\\x{9fff}\\x{f900}-\\x{faff}\\x{ff00}-\\x{ffef}]")))),
              "");
}

// After a switch every text is what a start in that language shows, the live levels included, and the device
// is not written to.
TEST_F(InterfaceTexts, SwitchingEqualsStartingInTheLanguage) {
    const QStringList chinese = ShownTexts::all(*start(0));
    const std::unique_ptr<demo> window = start(1);
    const QStringList english = ShownTexts::all(*window);
    EXPECT_NE(chinese, english);
    EXPECT_TRUE(english.contains(QStringLiteral("label_57.text: 41")));
    DeviceRecorder::instance().calls.clear();
    for (const int language : {0, 1}) {
        switchTo(*window, language);
        QTest::qWait(20);
        EXPECT_EQ(joined(ShownTexts::all(*window)), joined(language == 0 ? chinese : english));
        EXPECT_EQ(window->findChild<QSlider *>(QStringLiteral("verticalSlider_5"))->value(), 41);
    }
    for (const std::string &call : DeviceRecorder::instance().calls)
        EXPECT_EQ(call.substr(0, 8), "_getVolu") << call;
}

TEST_F(InterfaceTexts, NothingIsClippedInEitherLanguage) {
    for (const uint32_t language : {1u, 0u}) {
        const std::unique_ptr<demo> window = start(language);
        auto *pages = window->findChild<QStackedWidget *>(QStringLiteral("stackedWidget"));
        QStringList clipped;
        for (int page = 0; page < pages->count(); ++page) {
            pages->setCurrentIndex(page);
            QTest::qWait(10);
            clipped += ShownTexts::clipped(*window);
        }
        forEachDialog(*window, [&](QDialog &dialog) { clipped += ShownTexts::clipped(dialog); });
        clipped.removeDuplicates();
        EXPECT_EQ(joined(clipped), "") << "language " << language;
        window->findChild<QPushButton *>(QStringLiteral("bt_y0"))->setFixedWidth(20);
        EXPECT_EQ(ShownTexts::clipped(*window).size(), 1) << "the measure itself works";
    }
}

} // namespace
