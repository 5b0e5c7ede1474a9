// Has Qt draw the panel in a size that suits each screen.
#pragma once

namespace Screens {

// Chooses each screen's scale and hands the choice to Qt. To be called before the application object exists.
void chooseScales();

} // namespace Screens
