#include "ui/pages/StatusStrip.h"

#include "ui/pages/PageTest.h"

#include <gmock/gmock.h>
#include <memory>

namespace {

class StatusStripTest : public PageTest {
protected:
    // Names of the lit functions, by their captions.
    std::string lit() const {
        std::string names;
        const struct {
            const char *name;
            QLabel *caption, *value;
        } functions[] = {
            {"speaker ", form.label_138, form.label_149}, {"equalizer ", form.label_151, form.label_154},
            {"field ", form.label_158, form.label_158},   {"microphone ", form.label_139, form.label_147},
            {"voice ", form.label_156, form.label_153},   {"noise ", form.label_159, form.label_155},
        };
        for (const auto &function : functions) {
            const bool on = function.caption->styleSheet().contains("color: #FFFFFF;");
            EXPECT_EQ(on, function.value->styleSheet().contains("color: #FFFFFF;")) << function.name;
            EXPECT_NE(on, function.caption->styleSheet().contains("color: #444645;")) << function.name;
            if (on)
                names += function.name;
        }
        return names;
    }
};

TEST_F(StatusStripTest, FollowsEveryWriteOfTheSettings) {
    device.sound.muted = 1;
    device.system.head.voiceEffectOn = 1;
    auto strip = std::make_unique<StatusStrip>(context(), nullptr);
    EXPECT_EQ(lit(), "microphone voice ");

    device.sound.equalizerOn = 1;
    device.saveType2Block();
    device.sound.muted = 0; // after the write, but in the same handler
    settle();
    EXPECT_EQ(lit(), "speaker equalizer microphone voice ");

    device.system.head.micMuted = 1;
    device.system.head.voiceEffectOn = 0;
    device.system.head.noiseReductionOn = 1;
    device.sound.soundFieldOn = 1;
    device.saveType1Block();
    settle();
    EXPECT_EQ(lit(), "speaker equalizer field noise ");

    // The window writes a last time when it is destroyed; a refresh may be under way then.
    device.saveType1Block();
    strip.reset();
    device.saveType1Block();
    settle();
}

} // namespace
