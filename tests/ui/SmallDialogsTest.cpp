// The version dialog, the start tip, and the top bar's menu.
#include "ui/MakerActions.h"
#include "ui/StartTip.h"
#include "ui/VersionDialog.h"

#include "ui/DialogTest.h"

#include <QCheckBox>
#include <QLabel>
#include <QMenu>

namespace {

using SmallDialogsTest = DialogTest;

TEST_F(SmallDialogsTest, VersionDialogSaysTheVersionAndOpensOnce) {
    DialogState state;
    for (const int code : {0, 1, -56}) {
        language.code = static_cast<int8_t>(code);
        runDialog([&] { ShowVersionDialog(window, language, state); },
                  [&](QDialog &dialog) {
                      expectPlaced(dialog, QSize(400, 283));
                      EXPECT_TRUE(state.versionOpen);
                      EXPECT_EQ(dialog.findChild<QLabel *>(QStringLiteral("label_3"))->text(),
                                code ? QStringLiteral("Current version V2.0.5")
                                     : QStringLiteral("当前版本 V2.0.5"));
                      ShowVersionDialog(window, language, state);
                      EXPECT_EQ(dialogs().size(), 1);
                      click(dialog, "pushButton");
                  });
        EXPECT_FALSE(state.anyOpen());
    }
    runDialog([&] { ShowVersionDialog(window, language, state); },
              [](QDialog &) { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape); });
    EXPECT_FALSE(state.anyOpen());
    state.settingsOpen = true;
    ShowVersionDialog(window, language, state);
    EXPECT_FALSE(state.versionOpen);
}

// Ticking keeps the tip on and unticking turns it off, at once and not when the dialog closes.
TEST_F(SmallDialogsTest, StartTipWritesEveryChangeOfItsBox) {
    store(L"isStartShow", 5);
    const uint32_t storedAfterClicks[] = {5, 1, 0};
    for (int clicks = 0; clicks < 3; ++clicks) {
        runDialog([this] { ShowStartTip(&window); },
                  [&](QDialog &dialog) {
                      expectPlaced(dialog, QSize(400, 300));
                      EXPECT_FALSE(dialog.findChild<QCheckBox *>(QStringLiteral("checkBox"))->isChecked());
                      for (int i = 0; i < clicks; ++i)
                          click(dialog, "checkBox");
                      EXPECT_EQ(stored(L"isStartShow"), storedAfterClicks[clicks]);
                      click(dialog, "pushButton");
                  });
        EXPECT_EQ(stored(L"isStartShow"), storedAfterClicks[clicks]);
    }
}

TEST_F(SmallDialogsTest, TopBarMenuOffersTheTwoActions) {
    std::string done;
    addTopBarMenu(
        *form.widget_top, [&] { done += "site "; }, [&] { done += "recording "; });
    for (int entry = 0; entry < 2; ++entry) {
        emit form.widget_top->customContextMenuRequested(QPoint(100, 20));
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(menu->actions().at(entry)).center());
        settle();
    }
    EXPECT_EQ(done, "site recording ");
}

} // namespace
