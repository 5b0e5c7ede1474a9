#include "ui/DeferredPages.h"

DeferredPages::DeferredPages(QStackedWidget &stack) : stack_(stack) {
    for (int i = 0; i < stack.count(); ++i)
        pages_.push_back(stack.widget(i));
    for (QWidget *page : pages_) {
        if (page == stack.currentWidget())
            continue;
        stack.removeWidget(page);
        page->setParent(nullptr);
    }
}

DeferredPages::~DeferredPages() {
    for (size_t i = 0; i < pages_.size(); ++i) {
        if (pages_[i] != stack_.currentWidget())
            stack_.insertWidget(static_cast<int>(i), pages_[i]);
    }
}
