// The dialogs of the main window; the start tip is tested with the program.
#include "window/WindowTest.h"

#include <optional>
#include <QCheckBox>
#include <QPushButton>

namespace {

using ProductSettings::readDword;

class DialogsTest : public WindowTest {
protected:
    DialogsTest() { start(1); }
    const std::function<void()> openings[2] = {[this] { window->OpenSettingsDialog(); },
                                               [this] { window->ShowVersionDialog(); }};
};

// What the boxes show for what is stored, and what is stored when a button has ended the dialog.
TEST_F(DialogsTest, SettingsAreShownAndSavedByTheRules) {
    constexpr char cancel[] = "pushButton", confirm[] = "pushButton_2";
    const struct {
        std::optional<uint32_t> tray, tip; // nothing: as the row before left it, or missing
        bool trayShown, tipShown;          // the second box is hidden, but saved all the same
        bool trayChosen;
        const char *button;
        std::optional<uint32_t> savedTray, savedTip;
    } cases[] = {
        {{}, {}, true, true, false, cancel, {}, {}},
        {{}, {}, true, true, true, confirm, 1, 0}, // saving turns the start tip off for good
        {{}, {}, true, true, false, confirm, 0, 0},
        {0, 1, false, false, true, confirm, 1, 1}, // a tip that is on stays on
        {7, 0xFFFFFFFF, true, false, false, confirm, 0, 1},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(&c - cases);
        if (c.tray)
            ProductSettings::writeDword(L"isAddSysicon", *c.tray);
        if (c.tip)
            ProductSettings::writeDword(L"isStartShow", *c.tip);
        whileDialogRuns(openings[0], [&](QDialog &dialog) {
            auto &tray = child<QCheckBox>(dialog, "checkBox");
            EXPECT_EQ(tray.isChecked(), c.trayShown);
            EXPECT_EQ(child<QCheckBox>(dialog, "checkBox_2").isChecked(), c.tipShown);
            tray.setChecked(c.trayChosen);
            child<QPushButton>(dialog, c.button).click();
        });
        EXPECT_EQ(readDword(L"isAddSysicon"), c.savedTray);
        EXPECT_EQ(readDword(L"isStartShow"), c.savedTip);
    }
}

// Open, a dialog keeps the other one and the mouse from the rest of the window.
TEST_F(DialogsTest, AnOpenDialogHasTheWindowToItself) {
    for (const auto &open : openings) {
        whileDialogRuns(open, [&](QDialog &dialog) {
            for (const auto &openSecond : openings) {
                QTimer::singleShot(100, &dialog, [&] {
                    for (QDialog *other : window->findChildren<QDialog *>())
                        EXPECT_TRUE(other == &dialog || !other->close()) << "a second dialog";
                });
                openSecond();
                QTest::qWait(150);
            }
            const auto &behind = child<QPushButton>(*window, "bt_y2");
            const QPoint place = behind.mapTo(window.get(), behind.rect().center());
            EXPECT_EQ(window->childAt(place)->parentWidget(), window.get());
        });
    }
}

} // namespace
