// The version dialog, the start tip, and the top bar's two actions.
#include "ui/MakerActions.h"
#include "ui/StartTip.h"
#include "ui/VersionDialog.h"

#include "helpers/LogHelper.h"
#include "ui/DialogTest.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QTranslator>

namespace {

using SmallDialogsTest = DialogTest;

// Stands for a Chinese translation that says the version line in another way.
class OtherVersionLine : public QTranslator {
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *, const char *source, const char *, int) const override {
        return QByteArray(source) == "当前版本 V%1.%2.%3" ? QStringLiteral("版本：%1-%2-%3") : QString();
    }
};

TEST_F(SmallDialogsTest, VersionDialogSaysTheVersion) {
    DialogState state;
    const auto expectLine = [&](int8_t code, const QString &line) {
        language.code = code;
        runDialog([&] { ShowVersionDialog(window, language, state); },
                  [&](QDialog &dialog) {
                      expectPlaced(dialog, QSize(400, 283));
                      EXPECT_TRUE(state.versionOpen);
                      const auto visible = [&](const char *name) {
                          return dialog.findChild<QWidget *>(QString::fromLatin1(name))->isVisible();
                      };
                      EXPECT_FALSE(visible("label"));
                      EXPECT_FALSE(visible("label_2"));
                      EXPECT_TRUE(visible("widget_4"));
                      EXPECT_TRUE(visible("label_4"));
                      EXPECT_EQ(dialog.findChild<QLabel *>(QStringLiteral("label_3"))->text(), line);
                      ShowVersionDialog(window, language, state); // a second one does not open
                      EXPECT_EQ(dialogs().size(), 1);
                      click(dialog, "pushButton");
                      EXPECT_FALSE(state.versionOpen);
                  });
    };
    expectLine(0, QStringLiteral("当前版本 V2.0.5"));
    expectLine(1, QStringLiteral("Current version V2.0.5"));
    expectLine(-56, QStringLiteral("Current version V2.0.5"));

    OtherVersionLine translator;
    QCoreApplication::installTranslator(&translator);
    expectLine(0, QStringLiteral("版本：2-0-5"));
    expectLine(1, QStringLiteral("Current version V2.0.5"));
    QCoreApplication::removeTranslator(&translator);

    state.settingsOpen = true;
    ShowVersionDialog(window, language, state);
    EXPECT_FALSE(state.versionOpen);
}

TEST_F(SmallDialogsTest, EscapeLeavesNoDialogMarkedOpen) {
    DialogState state;
    runDialog([&] { ShowVersionDialog(window, language, state); },
              [](QDialog &) { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape); });
    EXPECT_FALSE(state.anyOpen());
}

// Ticking keeps the tip on and unticking turns it off, at once and not when the dialog closes.
TEST_F(SmallDialogsTest, StartTipWritesEveryChangeOfItsBox) {
    const auto run = [this](const std::function<void(QDialog &)> &act) {
        runDialog([this] { ShowStartTip(&window); }, act);
    };
    store(L"isStartShow", 5);
    run([&](QDialog &dialog) {
        expectPlaced(dialog, QSize(400, 300));
        EXPECT_FALSE(dialog.findChild<QCheckBox *>(QStringLiteral("checkBox"))->isChecked());
        click(dialog, "pushButton");
    });
    EXPECT_EQ(stored(L"isStartShow"), 5u);

    run([&](QDialog &dialog) {
        click(dialog, "checkBox");
        EXPECT_EQ(stored(L"isStartShow"), 1u);
        click(dialog, "pushButton");
    });
    EXPECT_EQ(stored(L"isStartShow"), 1u);

    run([&](QDialog &dialog) {
        click(dialog, "checkBox");
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

QByteArray logText() {
    QFile log(QString::fromStdWString(LogFilePath()));
    return log.open(QIODevice::ReadOnly) ? log.readAll() : QByteArray();
}

// The program that Windows finds first is the one beside the executable: this one keeps its command line.
TEST_F(SmallDialogsTest, RecordingSettingsStartTheSoundControlPanel) {
    const QString folder = QCoreApplication::applicationDirPath();
    const QString control = folder + QStringLiteral("/control.exe");
    const QString kept = folder + QStringLiteral("/control.exe.txt");
    QFile::remove(kept);
    QFile::remove(control);
    ASSERT_TRUE(QFile::copy(folder + QStringLiteral("/argument_keeper.exe"), control));
    OpenRecordingSettings();
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile(kept).size() > 0; }, 10000));
    QFile file(kept);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll().trimmed(), "mmsys.cpl,,1");
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile::remove(control); }, 10000));
}

TEST_F(SmallDialogsTest, MissingControlPanelIsLogged) {
    ASSERT_TRUE(
        QFile::remove(QStringLiteral("C:/windows/system32/control.exe"))); // of this test's own prefix
    OpenRecordingSettings();
    EXPECT_TRUE(logText().contains("control.exe"));
}

TEST_F(SmallDialogsTest, WebSiteGoesToTheDefaultBrowser) {
    const QString folder = QCoreApplication::applicationDirPath();
    const QString kept = folder + QStringLiteral("/argument_keeper.exe.txt");
    QFile::remove(kept);
    const std::wstring classes = L"HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\https";
    const std::wstring command = classes + L"\\shell\\open\\command";
    const QString line = QStringLiteral("\"%1\" \"%2\"")
                             .arg(QDir::toNativeSeparators(folder + QStringLiteral("/argument_keeper.exe")),
                                  QStringLiteral("%1"));
    Registry::CreateKey(command);
    Registry::WriteStringValue(classes, L"URL Protocol", L"");
    Registry::WriteStringValue(command, L"", line.toStdWString());
    OpenMakerWebSite();
    EXPECT_TRUE(QTest::qWaitFor([&] { return QFile(kept).size() > 0; }, 10000));
    QFile file(kept);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll().trimmed(), "https://www.qorsound.example/");
}

} // namespace
