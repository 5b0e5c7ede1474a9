#include "program/FormMap.h"

#include "ui_demoClass.h"

#include <stdexcept>

namespace {

constexpr int kHiddenPages[] = {1, 5, 7, 10};
constexpr int kIndicatorCentre = 9; // pixels from a check box's left edge

} // namespace

FormMap::FormMap() : window_(std::make_unique<QMainWindow>()) {
    Ui::demoClass form;
    form.setupUi(window_.get());
    window_->setAttribute(Qt::WA_DontShowOnScreen);
    window_->setWindowFlags(Qt::FramelessWindowHint);
    for (const int hidden : kHiddenPages)
        control(qPrintable(QStringLiteral("bt_y%1").arg(hidden))).hide();
    window_->show();
    window_->layout()->activate();
}

FormMap::~FormMap() = default;

QWidget &FormMap::control(const char *objectName) {
    auto *widget = window_->findChild<QWidget *>(QString::fromLatin1(objectName));
    if (!widget)
        throw std::invalid_argument(objectName);
    return *widget;
}

POINT FormMap::centreOf(const char *objectName) {
    QWidget &widget = control(objectName);
    auto *pages = window_->findChild<QStackedWidget *>(QStringLiteral("stackedWidget"));
    for (int page = 0; page < pages->count(); ++page) {
        if (pages->widget(page)->isAncestorOf(&widget))
            pages->setCurrentIndex(page);
    }
    // A check box does not answer to clicks right of its text.
    const bool isCheckBox = qobject_cast<QCheckBox *>(&widget) != nullptr;
    const QPoint place(isCheckBox ? kIndicatorCentre : widget.rect().center().x(),
                       widget.rect().center().y());
    const QPoint centre = widget.mapTo(window_.get(), place);
    return {centre.x(), centre.y()};
}
