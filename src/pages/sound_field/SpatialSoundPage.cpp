#include "pages/sound_field/SpatialSoundPage.h"

#include "ui_demoClass.h"

SpatialSoundPage::SpatialSoundPage(PageContext context, ExclusiveEffects &effects) {
    effects.attach(Effect::RoomEffect, *context.form.pushButton_28, nullptr, {});
}
