#include "ui/SettingsDialog.h"

#include "helpers/WinHandles.h"
#include "ui/DialogTest.h"
#include "ui/LanguageChoice.h"
#include "ui/VersionDialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <sddl.h>

namespace {

class SettingsDialogTest : public DialogTest {
protected:
    SettingsDialogTest() : translation(window, context()), settings(window, language, state, translation) {}

    void run(const Act &act) {
        runDialog(
            {370, 286}, [this] { settings.OpenSettingsDialog(); }, act);
    }

    static QCheckBox &box(const QDialog &dialog, const char *name) {
        return *dialog.findChild<QCheckBox *>(QString::fromLatin1(name));
    }
    static QComboBox &languages(const QDialog &dialog) {
        return *dialog.findChild<QComboBox *>(QStringLiteral("comboBox"));
    }
    static void cancel(const QDialog &dialog) { click(dialog, "pushButton"); }
    static void confirm(const QDialog &dialog) { click(dialog, "pushButton_2"); }

    Translation translation;
    SettingsDialog settings;
};

// What the boxes show for what is stored, and what Confirm then stores and shows.
TEST_F(SettingsDialogTest, ShowsAndSavesByTheRules) {
    Registry::WriteStringValue(ProductSettings::kProductKey, L"DisplayName", L"耳机 Kit");
    const std::optional<uint32_t> missing;
    const struct {
        std::optional<uint32_t> tray, tip;
        bool clickTrayBox;
        bool trayShown, tipShown; // the second box is hidden, but saved all the same
        uint32_t savedTray, savedTip;
    } cases[] = {
        {missing, missing, false, true, true, 1, 0}, // saving turns the start tip off for good
        {missing, missing, true, true, true, 0, 0},
        {0, 0, false, false, true, 0, 0},
        {0, 1, true, false, false, 1, 1}, // a tip that is on stays on
        {7, 0xFFFFFFFF, false, true, false, 1, 1},
    };
    for (const auto &c : cases) {
        store(L"isAddSysicon", c.tray);
        store(L"isStartShow", c.tip);
        run([&](QDialog &dialog) {
            EXPECT_EQ(box(dialog, "checkBox").isChecked(), c.trayShown);
            EXPECT_EQ(box(dialog, "checkBox_2").isChecked(), c.tipShown);
            EXPECT_FALSE(box(dialog, "checkBox_2").isVisible());
            if (c.clickTrayBox)
                click(dialog, "checkBox");
            languages(dialog).setCurrentIndex(c.clickTrayBox);
            confirm(dialog);
        });
        EXPECT_EQ(stored(L"language"), c.clickTrayBox);
        EXPECT_EQ(language.code, c.clickTrayBox);
        EXPECT_EQ(stored(L"isAddSysicon"), c.savedTray);
        EXPECT_EQ(stored(L"isStartShow"), c.savedTip);
        EXPECT_EQ(settings.hidesToTray(), c.savedTray != 0);
        EXPECT_EQ(window.windowTitle(), QStringLiteral("耳机 Kit"));
    }
}

TEST_F(SettingsDialogTest, CancelStoresNothing) {
    store(L"isAddSysicon", 5);
    language.code = 1;
    run([](QDialog &dialog) {
        languages(dialog).setCurrentIndex(0);
        click(dialog, "checkBox");
        cancel(dialog);
    });
    EXPECT_EQ(stored(L"isAddSysicon"), 5u);
    EXPECT_EQ(stored(L"isStartShow"), std::nullopt);
    EXPECT_EQ(stored(L"language"), std::nullopt);
    EXPECT_EQ(language.code, 1);
    EXPECT_TRUE(recorder.calls.empty());
}

TEST_F(SettingsDialogTest, NoDialogOpensWhileOneIsOpen) {
    const auto openBoth = [this](QDialog &) {
        settings.OpenSettingsDialog();
        ShowVersionDialog(window, language, state);
        EXPECT_EQ(window.findChildren<QDialog *>().size(), 1);
    };
    run([&](QDialog &dialog) {
        openBoth(dialog);
        cancel(dialog);
    });
    runDialog(
        {400, 283}, [this] { ShowVersionDialog(window, language, state); },
        [&](QDialog &dialog) {
            openBoth(dialog);
            click(dialog, "pushButton");
        });
}

// Values outside 0 and 1 have no entry in the list; confirming stores what the list then gives.
TEST_F(SettingsDialogTest, LanguagesWithoutAnEntryShowNone) {
    for (const uint32_t value : {2u, 127u, 128u, 200u, 0xFFFFFFFFu}) {
        store(L"language", value);
        language.code = ChooseLanguage();
        run([&](QDialog &dialog) {
            EXPECT_EQ(languages(dialog).currentIndex(), -1) << value;
            confirm(dialog);
        });
        EXPECT_EQ(stored(L"language"), 0xFFFFFFFFu);
        EXPECT_EQ(language.code, -1);
    }
}

// Denies everybody but a holder of an older handle to write the product key.
class ReadOnlyProductKey {
public:
    ReadOnlyProductKey() {
        RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\QorSoundKit", 0, KEY_ALL_ACCESS | KEY_WOW64_64KEY,
                      key_.put());
        apply(L"D:(A;;KR;;;WD)");
    }
    ~ReadOnlyProductKey() { apply(L"D:(A;;KA;;;WD)"); }
    ReadOnlyProductKey(const ReadOnlyProductKey &) = delete;
    ReadOnlyProductKey &operator=(const ReadOnlyProductKey &) = delete;

private:
    void apply(const wchar_t *access) {
        PSECURITY_DESCRIPTOR descriptor = nullptr;
        ASSERT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(access, SDDL_REVISION_1, &descriptor,
                                                                         nullptr));
        const UniqueLocalMemory owner(descriptor);
        EXPECT_EQ(RegSetKeySecurity(key_.get(), DACL_SECURITY_INFORMATION, descriptor), ERROR_SUCCESS);
    }

    UniqueRegistryKey key_;
};

TEST_F(SettingsDialogTest, ChoicesThatCannotBeStoredHoldForThisRun) {
    store(L"isAddSysicon", 1);
    store(L"language", 0);
    {
        const ReadOnlyProductKey readOnly;
        run([&](QDialog &dialog) {
            languages(dialog).setCurrentIndex(1);
            click(dialog, "checkBox");
            confirm(dialog);
        });
        EXPECT_EQ(language.code, 1);
        EXPECT_FALSE(settings.hidesToTray());
        EXPECT_EQ(stored(L"isAddSysicon"), 1u);
        EXPECT_EQ(stored(L"language"), 0u);
        EXPECT_TRUE(logText().contains("HKEY_LOCAL_MACHINE\\SOFTWARE\\QorSoundKit"));
    }
    // As soon as it can be stored again, the registry decides.
    run([&](QDialog &dialog) {
        EXPECT_FALSE(box(dialog, "checkBox").isChecked());
        EXPECT_EQ(languages(dialog).currentIndex(), 1);
        confirm(dialog);
    });
    EXPECT_EQ(stored(L"isAddSysicon"), 0u);
    store(L"isAddSysicon", 1);
    EXPECT_TRUE(settings.hidesToTray());
}

} // namespace
