// The texts of the whole main window with all its pages and dialogs, and the files of its languages.
#include "window/language/LanguageChoice.h"
#include "window/WindowTest.h"

#include <gmock/gmock.h>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>

namespace {

using namespace testing;

// One line per text of the window and everything in it, shown or not, tool tips and the names for screen
// readers included: "object.property: text".
QStringList texts(const QWidget &window) {
    QStringList lines;
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        const auto add = [&](const char *kind, const QString &text) {
            if (!text.isEmpty())
                lines << QStringLiteral("%1.%2: %3").arg(widget->objectName(), kind, text);
        };
        for (const char *property :
             {"text", "title", "toolTip", "windowTitle", "placeholderText", "accessibleName", "format"})
            add(property, widget->property(property).toString());
        if (const auto *box = qobject_cast<const QComboBox *>(widget))
            for (int i = 0; i < box->count(); ++i)
                add("entry", box->itemText(i));
    }
    return lines;
}

std::string joined(const QStringList &lines) {
    return lines.join('\n').toStdString();
}

using InterfaceTexts = WindowTest;

// After a switch every text is what a start in that language shows, the live levels included, and the device
// is not written to. English leaves no Chinese behind.
TEST_F(InterfaceTexts, SwitchingEqualsStartingInTheLanguage) {
    SoundBlock &sound = recorder.info.sound; // levels that no text of the form shows
    sound.leftVolume = 41;
    sound.speakerLevel[0] = -7;
    start(0);
    const QStringList chinese = texts(*window);
    start(1);
    const QStringList english = texts(*window);
    EXPECT_TRUE(english.contains("label_57.text: 41"));
    recorder.calls.clear();
    const auto openSettings = [&] { window->OpenSettingsDialog(); };
    for (const int language : {0, 1}) {
        whileDialogRuns(openSettings, [&](QDialog &dialog) {
            child<QComboBox>(dialog, "comboBox").setCurrentIndex(language);
            child<QPushButton>(dialog, "pushButton_2").click();
        });
        EXPECT_EQ(joined(texts(*window)), joined(language == 0 ? chinese : english));
    }
    EXPECT_THAT(recorder.calls, Each(Not(HasSubstr("setDeviceProperty"))));

    const QRegularExpression han(
        QStringLiteral("[\\x{2e80}-\\x{9fff}\\x{f900}-\\x{faff}\\x{ff00}-\\x{ffef}]"));
    EXPECT_GT(chinese.filter(han).size(), 100);
    EXPECT_EQ(joined(english.filter(han)), "");
}

TEST(LanguageChoice, StoredValueWinsOverTheSystemsLocale) {
    const struct {
        uint32_t locale;
        std::optional<uint32_t> stored;
        int language;
    } cases[] = {
        {2052, {}, 0}, {1028, {}, 1},    {1033, {}, 1},    {2052, 1, 1},           {1033, 0, 0},
        {2052, 2, 2},  {2052, 127, 127}, {1033, 200, -56}, {1033, 0xFFFFFFFF, -1},
    };
    for (const auto &c : cases)
        EXPECT_EQ(chooseLanguage(c.locale, c.stored), c.language) << &c - cases;
}

TEST_F(InterfaceTexts, MissingOrBrokenTranslationFilesGiveTheSourceTexts) {
    start(1);
    const auto textIn = [&](uint32_t language) {
        ProductSettings::writeDword(L"language", language);
        window->ChooseLanguage();
        return child<QLabel>(*window, "label_2").text();
    };
    EXPECT_EQ(textIn(1), "Speaker");
    QFile::remove(translationFile("ts_zh.qm"));
    EXPECT_EQ(textIn(0), "扬声器");

    QFile file(translationFile("ts_en.qm"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray whole = file.readAll();
    file.close();
    // A text begins with the tag 3 and its length. The toolkit would follow this one back to the tag, for
    // ever.
    QByteArray astray = whole;
    for (int at = 0; (at = astray.indexOf(QByteArray("\x03\0\0\0", 4), at)) >= 0; at += 5)
        astray.replace(at, 5, "\x03\xff\xff\xff\xfb", 5);
    for (const QByteArray &bytes : {whole.left(whole.size() - 1), whole.left(20), QByteArray(), astray}) {
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        EXPECT_EQ(textIn(1), "扬声器") << bytes.size();
    }
}

} // namespace
