#include "window/screens/DeferredStyle.h"

#include <QCoreApplication>
#include <QEvent>
#include <QtWidgets/private/qwidget_p.h>

// QWidget::ensurePolished descends into hidden children, too, but not into a widget that it takes for
// polished; only Qt's private class can say so. What the children asked for when they were made would style
// them one by one.
DeferredStyle::DeferredStyle(const QStackedWidget &pages) {
    for (int i = 0; i < pages.count(); ++i) {
        QWidget *page = pages.widget(i);
        if (page == pages.currentWidget() || QWidgetPrivate::get(page)->polished)
            continue;
        QWidgetPrivate::get(page)->polished = page->metaObject();
        for (QWidget *part : page->findChildren<QWidget *>())
            QCoreApplication::removePostedEvents(part, QEvent::PolishRequest);
        pages_.push_back(page);
    }
}

DeferredStyle::~DeferredStyle() {
    for (QWidget *page : pages_) {
        QWidgetPrivate::get(page)->polished = nullptr;
        page->ensurePolished();
    }
}
