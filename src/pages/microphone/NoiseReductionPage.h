// The noise-reduction page: a switch, a level and its reset. Its settings are bytes 16..19 and 23 of the
// system block.
#pragma once

#include "pages/PageContext.h"

#include <QObject>

class NoiseReductionPage : public QObject {
    Q_OBJECT

public:
    explicit NoiseReductionPage(PageContext context);

private:
    void setUpControls();
    void connectControls();

    void toggleNoiseReduction();
    void changeLevel(int level);
    void resetLevel();

    void showLevel();
    void showNoiseReduction();

    PageContext context_;
};
