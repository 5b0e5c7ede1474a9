// Which language is chosen, and what good and bad files of it do to the window.
#include "ui/Translation.h"

#include "ui/LanguageChoice.h"
#include "ui/pages/PageTest.h"
#include "ui/QmFiles.h"

namespace {

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
    const QString english = QStringLiteral("Speaker");
    Translation translation;
};

TEST_F(TranslationTest, MissingOrBrokenFilesGiveTheSourceTexts) {
    EXPECT_EQ(textIn(1), english);
    QFile::remove(QmFiles::path("ts_zh.qm"));
    EXPECT_EQ(textIn(0), chinese);
    const qint64 whole = QFile(QmFiles::path("ts_en.qm")).size();
    for (const qint64 size : {whole - 1, whole / 2, qint64{20}, qint64{0}}) {
        ASSERT_TRUE(QFile::resize(QmFiles::path("ts_en.qm"), size));
        EXPECT_EQ(textIn(1), chinese) << size;
    }
}

// A text begins with the tag 3 and its length. The toolkit would follow a length out of the file back to the
// tag, for ever. All bits set stand for an empty text, which is nothing wrong.
TEST_F(TranslationTest, LengthsOutOfTheFileGiveTheSourceTexts) {
    QFile file(QmFiles::path("ts_en.qm"));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    QByteArray bytes = file.readAll();
    const auto write = [&] {
        ASSERT_TRUE(file.seek(0) && file.write(bytes) == bytes.size() && file.flush());
    };
    const QByteArray text("\x03\0\0\0", 4);
    bytes.replace(bytes.indexOf(text), 5, "\x03\xff\xff\xff\xff", 5);
    write();
    EXPECT_EQ(textIn(1), english);
    int count = 0;
    for (int at = 0; (at = bytes.indexOf(text, at)) >= 0; at += 5, ++count)
        bytes.replace(at, 5, "\x03\xff\xff\xff\xfb", 5);
    EXPECT_GT(count, 100);
    write();
    EXPECT_EQ(textIn(1), chinese);
}

} // namespace
