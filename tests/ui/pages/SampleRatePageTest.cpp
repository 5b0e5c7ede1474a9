#include "ui/pages/SampleRatePage.h"

#include "ui/pages/PageTest.h"

using SampleRatePageTest = PageTest;

TEST_F(SampleRatePageTest, ShowsThePictureOfTheChosenRate) {
    const SampleRatePage page(context(), nullptr);
    struct Case {
        QRadioButton *button;
        QWidget *picture;
        const char *image;
    };
    const Case cases[] = {
        {form.radioButton, form.widget_6, "44.1KHz.png"},
        {form.radioButton_3, form.widget_17, "16KHz.png"},
        {form.radioButton_2, form.widget_6, "48KHz.png"},
        {form.radioButton_4, form.widget_17, "48KHz.png"},
    };
    for (const Case &c : cases) {
        c.button->click();
        EXPECT_EQ(c.picture->styleSheet().toStdString(),
                  std::string("background-image: url(:/right/png/") + c.image + ");");
    }
    EXPECT_TRUE(recorder.calls.empty());
}
