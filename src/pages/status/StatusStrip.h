// The strip under the pages: lights the caption and the value of every function that is on. The captions of
// the effects that exclude each other are lit by their own switches.
#pragma once

#include "pages/PageContext.h"

#include <QObject>

class StatusStrip : public QObject {
    Q_OBJECT

public:
    explicit StatusStrip(PageContext context);

private:
    void refresh();
    // A write may come in the middle of a handler, so the strip looks at the settings once that has ended.
    void refreshSoon();

    PageContext context_;
    bool refreshPending_ = false;
};
