#include "window/screens/SmallScreen.h"

#include "ui_demoClass.h"
#include "window/screens/WindowFit.h"

#include <QScrollArea>

namespace {

void closeUpNavigation(const Ui::demoClass &form, const WindowFit &fit) {
    form.line_3->move(form.line_3->x(), fit.microphoneLine);
    form.widget_3->move(form.widget_3->x(), fit.microphoneTop);
    form.line_4->move(form.line_4->x(), fit.otherTop);
    form.widget_7->move(form.widget_7->x(), fit.otherTop);
    form.bt_y11->move(form.bt_y11->x(), fit.upgradeTop);
}

void letMarginsGiveWay(QVBoxLayout &layout, const WindowFit &fit) {
    QMargins margins = layout.contentsMargins();
    margins.setTop(fit.margin);
    margins.setBottom(fit.scrolls ? fit.margin : 0);
    layout.setContentsMargins(margins);
    layout.setSpacing(fit.margin);
}

void letStripGiveWay(const Ui::demoClass &form, int inset) {
    QWidget &strip = *form.widget_53;
    for (QWidget *child : strip.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly))
        child->move(child->x(), child->y() - inset);
    strip.resize(strip.width(), strip.height() - 2 * inset);
    form.widget_btm->setMinimumHeight(strip.height());
}

void letPageScroll(const Ui::demoClass &form) {
    auto *area = new QScrollArea(form.widget_right);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    delete form.verticalLayout->replaceWidget(form.widget_mbtm, area);
    area->setWidget(form.widget_mbtm);
}

} // namespace

void fitToHeight(QWidget &window, const Ui::demoClass &form, int availableHeight) {
    const WindowFit fit = fitWindow(availableHeight);
    if (fit.height == WindowFit::kFullHeight)
        return;
    closeUpNavigation(form, fit);
    letMarginsGiveWay(*form.verticalLayout_4, fit);
    letStripGiveWay(form, fit.stripInset);
    if (fit.scrolls)
        letPageScroll(form);
    window.resize(window.width(), fit.height);
}
