// The spatial-sound page, which the navigation does not offer: its switch is a second one for the effect that
// the room page calls by the same name.
#pragma once

#include "pages/effects/ExclusiveEffects.h"

#include <QObject>

class SpatialSoundPage : public QObject {
    Q_OBJECT

public:
    SpatialSoundPage(PageContext context, ExclusiveEffects &effects);
};
