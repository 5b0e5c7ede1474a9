#include "window/Navigation.h"

#include "pages/FindControl.h"
#include "pages/ShownState.h"

namespace {

constexpr int kPageCount = 12;
constexpr unsigned kHiddenPages = 0x4A2; // 1, 5, 7 and 10 exist but are not offered

const QString kPlain = QStringLiteral("background-color: none;");
const QString kHighlight = QStringLiteral("background-color: rgba(110, 110, 110, 0.9);");

void replaceFirst(QWidget &widget, const QString &from, const QString &to) {
    QString text = widget.styleSheet();
    const int at = text.indexOf(from);
    if (at < 0)
        return;
    widget.setStyleSheet(text.replace(at, from.size(), to));
}

} // namespace

Navigation::Navigation(QWidget &window, QStackedWidget &pages, QObject *parent)
    : QObject(parent), pages_(pages), group_(this) {
    group_.setExclusive(false); // which one is checked follows the page; every one stays in the tab order
    for (int page = 0; page < kPageCount; ++page) {
        auto *button = &findControl<QPushButton>(window, QStringLiteral("bt_y%1").arg(page));
        group_.addButton(button, page);
        if (kHiddenPages >> page & 1u)
            button->hide();
        connect(button, &QPushButton::clicked, this, [this, page] { select(page); });
    }
    pages_.setCurrentIndex(0);
    markCurrent(0);
}

QPushButton *Navigation::button(int page) const {
    return qobject_cast<QPushButton *>(group_.button(page));
}

void Navigation::deferHiddenStyle() {
    deferredStyle_.emplace(pages_);
}

void Navigation::styleHiddenPages() {
    deferredStyle_.reset();
}

// A second click on the selected button takes its own highlight away: the first exchange finds nothing to do
// and the second one turns the button, as the one selected before, back to plain. The page stays.
void Navigation::select(int page) {
    styleHiddenPages();
    QPushButton *clicked = button(page);
    replaceFirst(*clicked, kPlain, kHighlight);
    if (selected_)
        replaceFirst(*selected_, kHighlight, kPlain);
    selected_ = clicked;
    pages_.setCurrentIndex(page);
    markCurrent(page);
}

// The style sheet shows the button of the current page as checked, whatever the highlight.
void Navigation::markCurrent(int page) {
    for (QAbstractButton *button : group_.buttons())
        ShownState::show(*button, group_.id(button) == page);
}
