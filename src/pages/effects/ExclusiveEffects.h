// Virtual 7.1, sound field, room effect and equalizer: at most one is on. Their pages bring the controls, the
// rules for all four are here and in ExclusiveGroup. GUI thread; the switches' `clicked` may come from any
// thread.
#pragma once

#include "pages/effects/ExclusiveGroup.h"
#include "pages/PageContext.h"

#include <QAbstractButton>
#include <QObject>
#include <QVector>

class ExclusiveEffects : public QObject {
    Q_OBJECT

public:
    explicit ExclusiveEffects(PageContext context);

    // Shows the effect's state on the controls from now on and lets the switch toggle it. caption may be
    // null; panel holds what can be worked only while the effect is on.
    void attach(Effect effect, QAbstractButton &switchButton, QWidget *caption, QVector<QWidget *> panel);

    // Flips the effect, shows what follows from it and sends the sound block once.
    void toggle(Effect effect);

    bool isOn(Effect effect) const;

signals:
    // The block's switches or angle mode are others; on a toggle, before it is sent.
    void changed();

private:
    struct Controls {
        Effect effect;
        QAbstractButton *switchButton;
        QWidget *caption;
        QVector<QWidget *> panel;
    };

    void showStored();
    void showAll() const;
    void show(const Controls &controls) const;

    PageContext context_;
    QVector<Controls> controls_;
};
