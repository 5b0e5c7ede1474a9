// What a language change does to the window: files good and bad, calls, levels written back. The translation
// files are copies beside this test program, which it changes as it likes.
#include "ui/Translation.h"

#include "ui/pages/PageTest.h"
#include "ui/QmFiles.h"

#include <QTranslator>

namespace {

class TranslationTest : public PageTest {
protected:
    TranslationTest() : translation(window, context()) { QmFiles::restore(); }

    QString textIn(int8_t code) {
        language.code = code;
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
    for (const int negative : {-128, -56, -1}) // texts stay, those that something else put there included
        EXPECT_EQ(textIn(static_cast<int8_t>(negative)), english);
    form.label_2->setText(QStringLiteral("x"));
    EXPECT_EQ(textIn(-1), QStringLiteral("x"));
    EXPECT_EQ(textIn(1), english);
    EXPECT_EQ(window.findChildren<QTranslator *>().size(), 1);
}

TEST_F(TranslationTest, PollsTheVolumeThenRefillsInOrderWithoutWriting) {
    for (const int8_t code : {int8_t{1}, int8_t{-56}}) {
        recorder.reset();
        Translation loading(window, context());
        std::string order;
        loading.addRefill([&] { order += "first " + std::to_string(recorder.calls.size()); });
        loading.addRefill([&] { order += volume.volumeUpdating ? " second" : " unguarded"; });
        language.code = code;
        loading.LoadTranslation();
        EXPECT_EQ(order, "first 1 second");
        EXPECT_EQ(recorder.calls, std::vector<std::string>{"_getVolum(0, 0)"});
        EXPECT_FALSE(volume.volumeUpdating);
    }
}

TEST_F(TranslationTest, MissingOrBrokenFilesGiveTheSourceTexts) {
    EXPECT_EQ(textIn(1), english);
    QFile::remove(QmFiles::folder() + QStringLiteral("ts_zh.qm"));
    EXPECT_EQ(textIn(0), chinese);
    QFile::remove(QmFiles::folder() + QStringLiteral("ts_en.qm"));
    EXPECT_EQ(textIn(1), chinese);
    const QByteArray whole = QmFiles::built("ts_en.qm");
    for (const int size : {0, 20, whole.size() / 2, whole.size() - 1}) {
        QmFiles::write("ts_en.qm", whole.left(size));
        EXPECT_EQ(textIn(1), chinese) << size;
    }
    QmFiles::write("ts_en.qm", whole);
    EXPECT_EQ(textIn(1), english);
}

} // namespace
