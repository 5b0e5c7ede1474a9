#include "ui/pages/LedPage.h"

#include "ui/pages/PageTest.h"

#include <gmock/gmock.h>
#include <memory>
#include <QImage>
#include <QTest>

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

class LedPageTest : public PageTest {
protected:
    LedPageTest() {
        device.usbIds = {{1, 2, 3, 4}};
        form.comboBox_3->setCurrentIndex(3);
        form.horizontalSlider_18->setValue(60);
        page = std::make_unique<LedPage>(context(), nullptr);
    }

    // Bytes 1..5 of every report sent since the last call.
    std::vector<std::vector<int>> takeReports() {
        std::vector<std::vector<int>> taken;
        for (const auto &report : recorder.reports) {
            EXPECT_EQ(report[0], 0x0A);
            taken.emplace_back(report.begin() + 1, report.begin() + 6);
        }
        EXPECT_EQ(recorder.countOf("_hid_trans_data(1, 2, 3, 4)"), recorder.calls.size());
        EXPECT_THAT(recorder.repliesWanted, Each(false));
        recorder.reports.clear();
        recorder.calls.clear();
        return taken;
    }

    QStringList fields() const {
        return {form.lineEdit->text(), form.lineEdit_2->text(), form.lineEdit_3->text()};
    }

    QString swatch() const { return form.label_color_pat_2->styleSheet(); }

    std::unique_ptr<LedPage> page;
};

TEST_F(LedPageTest, FixedColoursSendOneReportEach) {
    EXPECT_THAT(recorder.calls, IsEmpty()); // of the set-up
    const struct {
        QPushButton *button;
        int red, green, blue;
    } cases[] = {
        {form.pushButton_35, 255, 0, 0},     {form.pushButton_36, 255, 255, 0},
        {form.pushButton_37, 0, 255, 0},     {form.pushButton_38, 0, 255, 255},
        {form.pushButton_39, 255, 0, 255},   {form.pushButton_40, 0, 0, 255},
        {form.pushButton_43, 255, 255, 255},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.button->objectName().toStdString());
        c.button->click();
        EXPECT_THAT(takeReports(), ElementsAre(std::vector<int>{3, 60, c.red, c.green, c.blue}));
        EXPECT_EQ(form.lineEdit_5->text(), QString("3,60,%1,%2,%3").arg(c.red).arg(c.green).arg(c.blue));
        EXPECT_TRUE(swatch().contains(QString("rgb(%1, %2, %3)").arg(c.red).arg(c.green).arg(c.blue)));
    }
}

TEST_F(LedPageTest, EnteredTextIsCheckedAndSentAtOnce) {
    const struct {
        const char *text, *shown;
        int sent;
    } cases[] = {
        {"12", "12", 12}, {"300", "255", 255}, {"-5", "0", 0}, {"abc", "0", 0}, {" 12 ", "12", 12},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text);
        form.lineEdit_2->setText(c.text);
        EXPECT_EQ(fields(), QStringList({"255", c.shown, "255"}));
        EXPECT_THAT(takeReports(), ElementsAre(std::vector<int>{3, 60, 255, c.sent, 255}));
        EXPECT_TRUE(swatch().contains(QString("rgb(255, %1, 255)").arg(c.sent)));
    }
    EXPECT_FALSE(volume.volumeUpdating);
}

TEST_F(LedPageTest, TypingSendsEachStepAndFinishingOnceMore) {
    form.lineEdit_3->clear();
    takeReports();
    QTest::keyClicks(form.lineEdit_3, "30");
    EXPECT_EQ(form.lineEdit_3->text(), "30"); // the 0 of the emptied field has gone
    EXPECT_THAT(takeReports(),
                ElementsAre(std::vector<int>{3, 60, 255, 255, 3}, std::vector<int>{3, 60, 255, 255, 30}));
    QTest::keyClick(form.lineEdit_3, Qt::Key_Return);
    EXPECT_EQ(takeReports().size(), 1u);
}

TEST_F(LedPageTest, FillingFieldsFromCodeSendsNothing) {
    const FlagScope filling(volume.volumeUpdating);
    form.lineEdit->setText("400");
    form.lineEdit_2->setText("-5");
    form.lineEdit_3->setText("x");
    EXPECT_THAT(recorder.calls, IsEmpty());

    // What the send button finds there is only cut at the upper end.
    form.pushButton_9->click();
    EXPECT_EQ(form.lineEdit_5->text(), "3,60,255,-5,0");
    EXPECT_THAT(takeReports(), ElementsAre(std::vector<int>{3, 60, 255, 0xFB, 0}));
}

TEST_F(LedPageTest, ModeAndLevelWaitForTheSendButton) {
    form.comboBox_3->setCurrentIndex(4);
    form.horizontalSlider_18->setValue(0);
    EXPECT_THAT(recorder.calls, IsEmpty());
    recorder.transferResult = 0; // refused: nobody is told
    form.pushButton_9->click();
    EXPECT_THAT(takeReports(), ElementsAre(std::vector<int>{4, 0, 255, 255, 255}));
}

TEST_F(LedPageTest, PaletteClickTakesThePixelUnderTheMouse) {
    const QImage palette(":/page4/png/pallete.png");
    ASSERT_FALSE(palette.isNull());
    for (const QPoint &click : {QPoint(40, 128), QPoint(200, 60)}) {
        QTest::mouseClick(form.pushButton_palette, Qt::LeftButton, Qt::NoModifier, click);
        const QColor pixel =
            palette.pixelColor(click.x() * palette.width() / form.label_color_pat->width(),
                               click.y() * palette.height() / form.label_color_pat->height());
        EXPECT_THAT(takeReports(),
                    ElementsAre(std::vector<int>{3, 60, pixel.red(), pixel.green(), pixel.blue()}));
        EXPECT_EQ(fields(), QStringList({QString::number(pixel.red()), QString::number(pixel.green()),
                                         QString::number(pixel.blue())}));
    }

    page->pickPaletteColour(256, 5); // beside it
    EXPECT_THAT(recorder.calls, IsEmpty());
}

} // namespace
