// The dialogs of the main window, and the notices of its tray icon.
#include "ui/StartTip.h"
#include "ui/WindowTest.h"

#include <functional>
#include <optional>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <windows.h>

namespace {

using ProductSettings::readDword;

class DialogsTest : public WindowTest {
protected:
    void whileSettingsRun(const std::function<void(QDialog &)> &act) {
        whileDialogRuns(
            *window, [this] { window->OpenSettingsDialog(); }, act);
    }

    const std::unique_ptr<demo> window = start(1);
};

// What the boxes show for what is stored, and what Confirm then stores.
TEST_F(DialogsTest, SettingsAreShownAndSavedByTheRules) {
    const struct {
        std::optional<uint32_t> tray, tip; // nothing: as the row before left it, or missing
        bool trayShown, tipShown;          // the second box is hidden, but saved all the same
        bool trayChosen;
        uint32_t savedTray, savedTip;
    } cases[] = {
        {{}, {}, true, true, true, 1, 0}, // saving turns the start tip off for good
        {{}, {}, true, true, false, 0, 0},
        {0, 1, false, false, true, 1, 1}, // a tip that is on stays on
        {7, 0xFFFFFFFF, true, false, false, 0, 1},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(&c - cases);
        if (c.tray)
            ProductSettings::writeDword(L"isAddSysicon", *c.tray);
        if (c.tip)
            ProductSettings::writeDword(L"isStartShow", *c.tip);
        whileSettingsRun([&](QDialog &dialog) {
            auto &tray = child<QCheckBox>(dialog, "checkBox");
            EXPECT_EQ(tray.isChecked(), c.trayShown);
            EXPECT_EQ(child<QCheckBox>(dialog, "checkBox_2").isChecked(), c.tipShown);
            tray.setChecked(c.trayChosen);
            child<QPushButton>(dialog, "pushButton_2").click();
        });
        EXPECT_EQ(readDword(L"isAddSysicon"), c.savedTray);
        EXPECT_EQ(readDword(L"isStartShow"), c.savedTip);
    }
}

// Values outside 0 and 1 have no entry in the list; confirming stores what the list then gives.
TEST_F(DialogsTest, CancelStoresNothingAndALanguageWithoutAnEntryShowsNone) {
    ProductSettings::writeDword(L"language", 200);
    window->ChooseLanguage();
    for (const char *button : {"pushButton", "pushButton_2"}) {
        EXPECT_EQ(readDword(L"language"), 200u);
        EXPECT_EQ(readDword(L"isAddSysicon"), std::nullopt);
        whileSettingsRun([button](QDialog &dialog) {
            EXPECT_EQ(child<QComboBox>(dialog, "comboBox").currentIndex(), -1);
            child<QPushButton>(dialog, button).click();
        });
    }
    EXPECT_EQ(readDword(L"language"), 0xFFFFFFFFu);
}

// Open, a dialog keeps the other one, the mouse and the keyboard from the rest of the window.
TEST_F(DialogsTest, AnOpenDialogHasTheWindowToItself) {
    const std::function<void()> openings[] = {[this] { window->OpenSettingsDialog(); },
                                              [this] { window->ShowVersionDialog(); }};
    for (const auto &open : openings) {
        whileDialogRuns(*window, open, [&](QDialog &dialog) {
            QTimer closeSecond;
            QObject::connect(&closeSecond, &QTimer::timeout, &dialog, [&] {
                for (QDialog *other : window->findChildren<QDialog *>())
                    if (other != &dialog) {
                        ADD_FAILURE() << "a second dialog";
                        other->close();
                    }
            });
            closeSecond.start(10);
            for (const auto &openSecond : openings)
                openSecond();
            for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab}) {
                for (int i = 0; i < 8; ++i) {
                    QTest::keyClick(QApplication::focusWidget(), key);
                    EXPECT_TRUE(dialog.isAncestorOf(QApplication::focusWidget()));
                }
            }
            for (const char *name : {"pushButton_18", "bt_y2", "pushButton_3"}) {
                auto &behind = child<QPushButton>(child<QWidget>(*window, "centralWidget"), name);
                const QPoint place = behind.mapTo(window.get(), behind.rect().center());
                EXPECT_EQ(window->childAt(place)->parentWidget(), window.get()) << name;
            }
        });
    }
}

TEST_F(DialogsTest, TrayIconTellsOfALowBatteryAndOnceOfTheHiddenWindow) {
    constexpr wchar_t told[] = L"hidingTold";
    ProductSettings::writeDword(told, 0, ProductSettings::kUserKey);
    window->ShowTray();
    DeviceRecorder::instance().reply = {0, 1, 0, 1}; // 20 %
    for (QTimer *timer : window->findChildren<QTimer *>())
        if (timer->interval() == 5000)
            QMetaObject::invokeMethod(timer, "timeout");
    const auto balloonIsShown = [] {
        const HWND balloon = FindWindowW(L"tooltips_class32", nullptr);
        return balloon && IsWindowVisible(balloon);
    };
    EXPECT_TRUE(QTest::qWaitFor(balloonIsShown, 20000));
    child<QPushButton>(*window, "pushButton").click();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(readDword(told, ProductSettings::kUserKey), 1u);
}

// Ticking keeps the tip on and unticking turns it off, at once and not when the dialog closes.
TEST_F(DialogsTest, StartTipWritesEveryChangeOfItsBox) {
    whileDialogRuns(
        *window, [this] { ShowStartTip(window.get()); },
        [](QDialog &dialog) {
            for (const bool ticked : {true, false}) {
                child<QCheckBox>(dialog, "checkBox").setChecked(ticked);
                EXPECT_EQ(readDword(L"isStartShow"), ticked);
            }
        });
}

} // namespace
