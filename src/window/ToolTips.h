// Shows every tool tip in the one look of the panel's style sheet. Qt gives a tip the style sheet of its
// widget, and a button's own one, a picture or a border without a selector, would apply to the tip as well.
#pragma once

#include <QObject>
#include <QWidget>

class ToolTips : public QObject {
public:
    // Holds for all widgets of the program; tips look like those of `styled`, which outlives this object.
    explicit ToolTips(QWidget &styled);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget &styled_;
};
