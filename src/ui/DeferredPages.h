// Pages that the window does not show at its start wait outside of it until it is up: their style and
// pictures would take longer than those of the page that is shown.
#pragma once

#include <QStackedWidget>
#include <vector>

class DeferredPages {
public:
    // Takes all pages but the current one out; they have no parent meanwhile.
    explicit DeferredPages(QStackedWidget &stack);
    // Every page is in its place again; the current one stays.
    ~DeferredPages();
    DeferredPages(const DeferredPages &) = delete;
    DeferredPages &operator=(const DeferredPages &) = delete;

private:
    QStackedWidget &stack_;
    std::vector<QWidget *> pages_; // all, in their order
};
