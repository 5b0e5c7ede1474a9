#include "ui/pages/NoiseReductionPage.h"

#include "ui/pages/PageTest.h"

#include <gmock/gmock.h>
#include <memory>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char kWrite[] = "setDeviceProperty(1)";

class NoiseReductionPageTest : public PageTest {
protected:
    void start(uint8_t on, int32_t level) {
        head.noiseReductionOn = on;
        head.noiseLevel = level;
        page.reset();
        page = std::make_unique<NoiseReductionPage>(context(), nullptr);
    }

    void expectPanel(bool on) {
        EXPECT_THAT(form.pushButton_29->styleSheet().toStdString(),
                    HasSubstr(on ? "btn_open.png" : "btn_close.png"));
        EXPECT_THAT(form.label_208->styleSheet().toStdString(),
                    HasSubstr(on ? "border-image: url(:/right/png/jiangzao_pic.png);"
                                 : "border-image: url(:/right/png/jiangzao_pic_nor.png);"));
        EXPECT_EQ(form.horizontalSlider_17->isEnabled(), on);
        EXPECT_EQ(form.pushButton_31->isEnabled(), on);
    }

    SystemHead &head = device.system.head;
    std::unique_ptr<NoiseReductionPage> page;
};

TEST_F(NoiseReductionPageTest, SwitchShowsItselfAndWrites) {
    start(0, 30);
    EXPECT_EQ(form.horizontalSlider_17->maximum(), 100);
    EXPECT_EQ(form.horizontalSlider_17->value(), 30);
    EXPECT_THAT(recorder.calls, IsEmpty());
    for (const bool on : {false, true}) {
        expectPanel(on);
        form.pushButton_29->click();
        EXPECT_EQ(recorder.system.head.noiseReductionOn, !on);
    }
    EXPECT_THAT(recorder.calls, ElementsAre(kWrite, kWrite));
}

TEST_F(NoiseReductionPageTest, LevelIsStoredOnlyWhileOnAndResetDoesNotWrite) {
    start(0, 31);
    form.horizontalSlider_17->setValue(90);
    EXPECT_EQ(head.noiseLevel, 31);
    start(1, 31);
    form.pushButton_31->click();
    EXPECT_EQ(head.noiseLevel, 50);
    EXPECT_EQ(form.horizontalSlider_17->value(), 50);
    EXPECT_THAT(recorder.calls, IsEmpty());
    form.horizontalSlider_17->setValue(51); // the slider's handler is awake again
    EXPECT_EQ(recorder.system.head.noiseLevel, 51);
    EXPECT_THAT(recorder.calls, ElementsAre(kWrite));
}

} // namespace
