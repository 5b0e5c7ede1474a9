// Pages that the window does not show at its start get their style, and with it their pictures, when the
// window is up: Qt would do it for all pages before the window is first painted, which takes a good part of
// the start.
#pragma once

#include <QStackedWidget>
#include <vector>

class DeferredStyle {
public:
    // All pages but the current one.
    explicit DeferredStyle(const QStackedWidget &pages);
    // Styles them.
    ~DeferredStyle();
    DeferredStyle(const DeferredStyle &) = delete;
    DeferredStyle &operator=(const DeferredStyle &) = delete;

private:
    std::vector<QWidget *> pages_;
};
