// Which language is chosen, and what a change of it does to the window: files good and bad, calls.
#include "ui/Translation.h"

#include "ui/LanguageChoice.h"
#include "ui/pages/PageTest.h"
#include "ui/QmFiles.h"

#include <QTranslator>

namespace {

TEST(LanguageChoice, StoredValueWinsOverTheSystemsLocale) {
    const struct {
        uint32_t locale;
        std::optional<uint32_t> stored;
        int language;
    } cases[] = {
        {2052, {}, 0},     {1028, {}, 1},    {3076, {}, 1},  {1033, {}, 1},
        {2052, 1, 1},      {1033, 0, 0},     {2052, 2, 2},   {2052, 127, 127},
        {2052, 128, -128}, {1033, 200, -56}, {2052, 256, 0}, {1033, 0xFFFFFFFF, -1},
    };
    for (const auto &c : cases)
        EXPECT_EQ(chooseLanguage(c.locale, c.stored), c.language)
            << c.locale << " " << (c.stored ? std::to_string(*c.stored) : "missing");
}

class TranslationTest : public PageTest {
protected:
    TranslationTest() : translation(window, context()) { QmFiles::restore(); }

    QString textIn(int code) {
        language.code = static_cast<int8_t>(code);
        translation.LoadTranslation();
        return form.label_2->text();
    }

    const QString chinese = QStringLiteral("扬声器");
    const QString english = QStringLiteral("Speakers");
    Translation translation;
};

TEST_F(TranslationTest, EveryLanguageValueHasItsTexts) {
    EXPECT_EQ(textIn(1), english);
    EXPECT_EQ(textIn(0), chinese);
    EXPECT_EQ(textIn(127), english);
    form.label_2->setText(QStringLiteral("x"));
    for (const int negative : {-128, -56, -1}) // texts stay, those that something else put there included
        EXPECT_EQ(textIn(negative), QStringLiteral("x"));
    EXPECT_EQ(textIn(1), english);
    EXPECT_EQ(window.findChildren<QTranslator *>().size(), 1);
}

TEST_F(TranslationTest, PollsTheVolumeThenRefillsInOrderWithoutWriting) {
    std::string order;
    translation.addRefill([&] { order += "first " + std::to_string(recorder.calls.size()); });
    translation.addRefill([&] { order += volume.volumeUpdating ? " second" : " unguarded"; });
    for (const int code : {1, -56}) {
        recorder.reset();
        order.clear();
        textIn(code);
        EXPECT_EQ(order, "first 1 second");
        EXPECT_EQ(recorder.calls, std::vector<std::string>{"_getVolum(0, 0)"});
        EXPECT_FALSE(volume.volumeUpdating);
    }
}

TEST_F(TranslationTest, MissingOrBrokenFilesGiveTheSourceTexts) {
    EXPECT_EQ(textIn(1), english);
    QFile::remove(QmFiles::path("ts_zh.qm"));
    EXPECT_EQ(textIn(0), chinese);
    const qint64 whole = QFile(QmFiles::path("ts_en.qm")).size();
    for (const qint64 size : {whole - 1, whole / 2, qint64{20}, qint64{0}}) {
        ASSERT_TRUE(QFile::resize(QmFiles::path("ts_en.qm"), size));
        EXPECT_EQ(textIn(1), chinese) << size;
    }
    QFile::remove(QmFiles::path("ts_en.qm"));
    EXPECT_EQ(textIn(1), chinese);
    QmFiles::restore();
    EXPECT_EQ(textIn(1), english);
}

// A text begins with the tag 3 and its length. The toolkit would follow this length back to the tag, for
// ever.
TEST_F(TranslationTest, LengthsOutOfTheFileGiveTheSourceTexts) {
    QFile file(QmFiles::path("ts_en.qm"));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    QByteArray bytes = file.readAll();
    int count = 0;
    for (int at = 0; (at = bytes.indexOf(QByteArray("\x03\0\0\0", 4), at)) >= 0; at += 5, ++count)
        bytes.replace(at, 5, "\x03\xff\xff\xff\xfb", 5);
    EXPECT_GT(count, 100);
    file.seek(0);
    file.write(bytes);
    file.close();
    EXPECT_EQ(textIn(1), chinese);
}

} // namespace
