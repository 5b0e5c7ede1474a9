// The version dialog, the start tip, and the top bar's two actions.
#include "ui/MakerActions.h"
#include "ui/StartTip.h"
#include "ui/VersionDialog.h"

#include "ui/DialogTest.h"

#include <QLabel>
#include <QMenu>

namespace {

using SmallDialogsTest = DialogTest;

TEST_F(SmallDialogsTest, VersionDialogSaysTheVersion) {
    const std::pair<int8_t, const char *> lines[] = {
        {0, "当前版本 V2.0.5"}, {1, "Current version V2.0.5"}, {-56, "Current version V2.0.5"}};
    for (const auto &[code, line] : lines) {
        language.code = code;
        runDialog(
            {400, 283}, [&] { ShowVersionDialog(window, language, state); },
            [line = line](QDialog &dialog) {
                QStringList shown;
                for (const QLabel *label : dialog.findChildren<QLabel *>())
                    if (label->isVisible())
                        shown << label->objectName() + QLatin1Char('=') + label->text();
                EXPECT_EQ(shown, (QStringList{QStringLiteral("label_3=") + QString::fromUtf8(line),
                                              QStringLiteral("label_4=")}));
                click(dialog, "pushButton");
            });
    }
}

// Ticking keeps the tip on and unticking turns it off, at once and not when the dialog closes.
TEST_F(SmallDialogsTest, StartTipWritesEveryChangeOfItsBox) {
    const auto run = [this](const Act &act) {
        runDialog(
            {400, 300}, [this] { ShowStartTip(&window); }, act);
    };
    store(L"isStartShow", 5);
    run([](QDialog &dialog) { click(dialog, "pushButton"); });
    EXPECT_EQ(stored(L"isStartShow"), 5u);
    run([](QDialog &dialog) {
        click(dialog, "checkBox");
        EXPECT_EQ(stored(L"isStartShow"), 1u);
        click(dialog, "checkBox");
        EXPECT_EQ(stored(L"isStartShow"), 0u);
        dialog.close();
    });
    EXPECT_EQ(stored(L"isStartShow"), 0u);
}

TEST_F(SmallDialogsTest, TopBarMenuOffersTheTwoActions) {
    std::string done;
    addTopBarMenu(
        *form.widget_top, [&] { done += "site "; }, [&] { done += "recording "; });
    for (int entry = 0; entry < 2; ++entry) {
        emit form.widget_top->customContextMenuRequested(QPoint(100, 20));
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        ASSERT_EQ(menu->actions().size(), 2);
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions().at(entry)).center());
        settle();
    }
    EXPECT_EQ(done, "site recording ");
}

// The program that Windows finds first is the one beside the executable: this one keeps its command line.
TEST_F(SmallDialogsTest, RecordingSettingsStartTheSoundControlPanel) {
    const QString folder = QCoreApplication::applicationDirPath();
    const QString control = folder + QStringLiteral("/control.exe");
    QFile kept(control + QStringLiteral(".txt"));
    kept.remove();
    QFile::remove(control);
    ASSERT_TRUE(QFile::copy(folder + QStringLiteral("/argument_keeper.exe"), control));
    OpenRecordingSettings();
    EXPECT_TRUE(QTest::qWaitFor([&] { return kept.size() > 0; }, 10000));
    EXPECT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll().trimmed(), "mmsys.cpl,,1");

    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::remove(control); }, 10000));
    // Of this test's own prefix.
    ASSERT_TRUE(QFile::remove(QStringLiteral("C:/windows/system32/control.exe")));
    OpenRecordingSettings();
    EXPECT_TRUE(logText().contains("control.exe"));
}

} // namespace
