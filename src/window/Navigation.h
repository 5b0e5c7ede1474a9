// The left column: twelve buttons "bt_y0".."bt_y11", each showing the page of its number.
#pragma once

#include "window/screens/DeferredStyle.h"

#include <optional>
#include <QButtonGroup>
#include <QPushButton>
#include <QStackedWidget>

class Navigation : public QObject {
    Q_OBJECT

public:
    // Finds the buttons among window's children, hides those of the pages that are not offered, shows page 0.
    Navigation(QWidget &window, QStackedWidget &pages, QObject *parent);

    QPushButton *button(int page) const;

    // At the start, see DeferredStyle; a selection styles the pages by itself.
    void deferHiddenStyle();
    void styleHiddenPages();

private:
    void select(int page);
    void markCurrent(int page);

    QStackedWidget &pages_;
    std::optional<DeferredStyle> deferredStyle_;
    QButtonGroup group_;
    QPushButton *selected_ = nullptr; // none before the first click
};
