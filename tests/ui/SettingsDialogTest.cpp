#include "ui/SettingsDialog.h"

#include "helpers/LogHelper.h"
#include "ui/DialogTest.h"
#include "ui/LanguageChoice.h"
#include "ui/VersionDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <sddl.h>

namespace {

class SettingsDialogTest : public DialogTest {
protected:
    SettingsDialogTest() : translation(window, context()), settings(window, language, state, translation) {}

    void run(const std::function<void(QDialog &)> &act) {
        runDialog([this] { settings.OpenSettingsDialog(); }, act);
        EXPECT_FALSE(state.anyOpen());
    }

    static bool checked(const QDialog &dialog, const char *name) {
        return dialog.findChild<QCheckBox *>(QString::fromLatin1(name))->isChecked();
    }
    static QComboBox &languages(const QDialog &dialog) {
        return *dialog.findChild<QComboBox *>(QStringLiteral("comboBox"));
    }

    DialogState state;
    Translation translation;
    SettingsDialog settings;
};

// What the boxes show for what is stored, what Confirm then stores, and what a click on the tray box changes.
TEST_F(SettingsDialogTest, ShowsAndSavesByTheRules) {
    using Stored = std::optional<uint32_t>;
    struct Case {
        Stored tray;
        Stored tip;
        bool clickTrayBox;
        bool trayShown;
        bool tipHiddenShown; // state of the hidden box
        uint32_t savedTray;
        uint32_t savedTip;
    };
    const Stored missing;
    const Case cases[] = {
        {missing, missing, false, true, true, 1, 0}, // saving turns the start tip off for good
        {missing, missing, true, true, true, 0, 0},
        {0, 0, false, false, true, 0, 0},
        {0, 1, true, false, false, 1, 1}, // a tip that is on stays on
        {7, 5, false, true, false, 1, 1},
        {0xFFFFFFFF, 0xFFFFFFFF, false, true, false, 1, 1},
    };
    for (const Case &c : cases) {
        for (const wchar_t *name : {L"isAddSysicon", L"isStartShow"}) {
            if (stored(name))
                Registry::DeleteValue(ProductSettings::kProductKey, name);
        }
        store(L"isAddSysicon", c.tray);
        store(L"isStartShow", c.tip);
        run([&](QDialog &dialog) {
            EXPECT_EQ(checked(dialog, "checkBox"), c.trayShown);
            EXPECT_EQ(checked(dialog, "checkBox_2"), c.tipHiddenShown);
            EXPECT_FALSE(dialog.findChild<QWidget *>(QStringLiteral("checkBox_2"))->isVisible());
            if (c.clickTrayBox)
                click(dialog, "checkBox");
            click(dialog, "pushButton_2");
        });
        EXPECT_EQ(stored(L"isAddSysicon"), c.savedTray);
        EXPECT_EQ(stored(L"isStartShow"), c.savedTip);
        EXPECT_EQ(settings.hidesToTray(), c.savedTray != 0);
    }
}

TEST_F(SettingsDialogTest, CancelAndEscapeStoreNothingAndFreeTheWay) {
    store(L"language", 1);
    store(L"isAddSysicon", 5);
    language.code = 1;
    const auto leave = [](QDialog &dialog, bool byKey) {
        languages(dialog).setCurrentIndex(0);
        click(dialog, "checkBox");
        if (byKey)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        else
            click(dialog, "pushButton");
    };
    for (const bool byKey : {false, true, true, false}) {
        run([&](QDialog &dialog) { leave(dialog, byKey); });
        EXPECT_EQ(stored(L"language"), 1u);
        EXPECT_EQ(stored(L"isAddSysicon"), 5u);
        EXPECT_EQ(stored(L"isStartShow"), std::nullopt);
        EXPECT_EQ(language.code, 1);
        EXPECT_EQ(recorder.countOf("_getVolum"), 0u);
    }
}

TEST_F(SettingsDialogTest, StandsInTheMiddleAndOpensOnce) {
    run([&](QDialog &dialog) {
        expectPlaced(dialog, QSize(370, 286));
        EXPECT_TRUE(state.settingsOpen);
        settings.OpenSettingsDialog();
        ShowVersionDialog(window, language, state);
        EXPECT_EQ(dialogs().size(), 1);
        EXPECT_TRUE(state.settingsOpen);
        click(dialog, "pushButton");
    });
    state.versionOpen = true;
    settings.OpenSettingsDialog();
    EXPECT_TRUE(dialogs().isEmpty());
    EXPECT_FALSE(state.settingsOpen);
}

TEST_F(SettingsDialogTest, ConfirmSwitchesTheLanguageAndTheTitle) {
    Registry::WriteStringValue(ProductSettings::kProductKey, L"DisplayName", L"耳机 Kit");
    for (const int chosen : {1, 0}) {
        window.setWindowTitle(QString());
        recorder.reset();
        run([&](QDialog &dialog) {
            languages(dialog).setCurrentIndex(chosen);
            click(dialog, "pushButton_2");
        });
        EXPECT_EQ(language.code, chosen);
        EXPECT_EQ(stored(L"language"), static_cast<uint32_t>(chosen));
        EXPECT_EQ(window.windowTitle(), QStringLiteral("耳机 Kit"));
        EXPECT_EQ(recorder.calls, std::vector<std::string>{"_getVolum(0, 0)"});
    }
    Registry::DeleteValue(ProductSettings::kProductKey, L"DisplayName");
    run([&](QDialog &dialog) { click(dialog, "pushButton_2"); });
    EXPECT_EQ(window.windowTitle(), QStringLiteral("QorSound Kit"));
}

// Values outside 0 and 1 have no entry in the list; confirming stores what the list then gives.
TEST_F(SettingsDialogTest, LanguagesWithoutAnEntryShowNone) {
    for (const uint32_t value : {2u, 127u, 128u, 200u, 0xFFFFFFFFu}) {
        store(L"language", value);
        language.code = ChooseLanguage();
        run([&](QDialog &dialog) {
            EXPECT_EQ(languages(dialog).currentIndex(), -1) << value;
            click(dialog, "pushButton");
        });
        EXPECT_EQ(stored(L"language"), value);
        run([&](QDialog &dialog) { click(dialog, "pushButton_2"); });
        EXPECT_EQ(stored(L"language"), 0xFFFFFFFFu);
        EXPECT_EQ(language.code, -1);
    }
}

// Denies everybody but a holder of an older handle to write the product key.
class ReadOnlyProductKey {
public:
    ReadOnlyProductKey() {
        RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\QorSoundKit", 0, KEY_ALL_ACCESS | KEY_WOW64_64KEY,
                      &key_);
        apply(L"D:(A;;KR;;;WD)");
    }
    ~ReadOnlyProductKey() {
        apply(L"D:(A;;KA;;;WD)");
        RegCloseKey(key_);
    }

private:
    void apply(const wchar_t *access) {
        PSECURITY_DESCRIPTOR descriptor = nullptr;
        ASSERT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(access, SDDL_REVISION_1, &descriptor,
                                                                         nullptr));
        EXPECT_EQ(RegSetKeySecurity(key_, DACL_SECURITY_INFORMATION, descriptor), ERROR_SUCCESS);
        LocalFree(descriptor);
    }

    HKEY key_ = nullptr;
};

TEST_F(SettingsDialogTest, ChoicesThatCannotBeStoredHoldForThisRun) {
    store(L"isAddSysicon", 1);
    store(L"isStartShow", 1);
    store(L"language", 0);
    {
        const ReadOnlyProductKey readOnly;
        run([&](QDialog &dialog) {
            languages(dialog).setCurrentIndex(1);
            click(dialog, "checkBox");
            click(dialog, "pushButton_2");
        });
        EXPECT_EQ(language.code, 1);
        EXPECT_FALSE(settings.hidesToTray());
        EXPECT_EQ(stored(L"isAddSysicon"), 1u);
        EXPECT_EQ(stored(L"language"), 0u);
        run([&](QDialog &dialog) {
            EXPECT_FALSE(checked(dialog, "checkBox"));
            EXPECT_EQ(languages(dialog).currentIndex(), 1);
            click(dialog, "pushButton");
        });
    }
    QFile log(QString::fromStdWString(LogFilePath()));
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_TRUE(log.readAll().contains("HKEY_LOCAL_MACHINE\\SOFTWARE\\QorSoundKit"));

    // As soon as it can be stored again, the registry decides.
    run([&](QDialog &dialog) { click(dialog, "pushButton_2"); });
    EXPECT_EQ(stored(L"isAddSysicon"), 0u);
    store(L"isAddSysicon", 1);
    EXPECT_TRUE(settings.hidesToTray());
}

} // namespace
