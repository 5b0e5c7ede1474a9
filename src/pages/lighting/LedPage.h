// The LED page: colour by fixed buttons, palette or three fields, lighting mode and level, sent as one raw
// report.
#pragma once

#include "pages/lighting/LedReport.h"
#include "pages/PageContext.h"

#include <optional>
#include <QObject>
#include <QPoint>

class LedPage : public QObject {
    Q_OBJECT

public:
    explicit LedPage(PageContext context);

    // Sends what the controls show and tells it in the report field.
    void sendLedReport();

    // x, y: a click on the palette, from its top left corner. A click beside the image changes nothing.
    void pickPaletteColour(int x, int y);

    // button: one of the seven colour buttons; any other sender is ignored.
    void pickFixedColour(const QObject *button);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void connectControls();
    void checkEntry();
    // Brings the three fields to 0..255 and tells their colour.
    LedColour checkedFields();
    void paletteClicked();
    void togglePanel();
    void showPanel();

    void takeColour(const LedColour &colour);
    void paintSwatch(const LedColour &colour);

    PageContext context_;
    std::optional<QPoint> paletteRelease_; // of the mouse on the palette, until its click is handled
    bool panelOn_ = true;
};
