#include "window/dialogs/EmbeddedDialog.h"

#include <QApplication>
#include <QFile>

namespace {

// As a child of the main window a dialog would hand the keyboard focus on to the pages below.
class FocusKeepingDialog : public QDialog {
public:
    using QDialog::QDialog;

protected:
    bool focusNextPrevChild(bool next) override {
        QWidget *const start = isAncestorOf(QApplication::focusWidget()) ? QApplication::focusWidget() : this;
        QWidget *widget = start;
        do {
            widget = next ? widget->nextInFocusChain() : widget->previousInFocusChain();
            if (takesTab(*widget)) {
                widget->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
                break;
            }
        } while (widget != start);
        return true;
    }

private:
    bool takesTab(const QWidget &widget) const {
        return isAncestorOf(&widget) && widget.focusPolicy() & Qt::TabFocus && widget.isEnabled() &&
               widget.isVisible();
    }
};

// Lets no click through to the pages. What it ignores goes to the main window, which can still be dragged.
QWidget *makeShade(QWidget &mainWindow) {
    auto *shade = new QWidget(&mainWindow);
    shade->setAttribute(Qt::WA_StyledBackground);
    shade->setStyleSheet(QStringLiteral("background: rgba(0, 0, 0, 150);"));
    return shade;
}

// What the dialogs' own sheets have in common; those come after it and win.
QString commonStyleSheet() {
    QFile file(QStringLiteral(":/styles/dialogs.qss"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

EmbeddedDialog::EmbeddedDialog(QWidget &mainWindow)
    : mainWindow_(mainWindow), shade_(makeShade(mainWindow)), dialog_(new FocusKeepingDialog(&mainWindow)) {}

EmbeddedDialog::EmbeddedDialog(QWidget &mainWindow, bool &open) : EmbeddedDialog(mainWindow) {
    open = true;
    QObject::connect(dialog_, &QDialog::finished, dialog_, [&open] { open = false; });
}

EmbeddedDialog::~EmbeddedDialog() {
    delete dialog_;
    delete shade_;
}

void EmbeddedDialog::makeFrameless() {
    dialog_->setWindowFlags(Qt::FramelessWindowHint);
    dialog_->setStyleSheet(commonStyleSheet() + dialog_->styleSheet());
}

void EmbeddedDialog::run() {
    shade_->setGeometry(mainWindow_.rect());
    shade_->show();
    // From the sizes only: the main window's own position plays no part.
    dialog_->move(mainWindow_.width() / 2 - dialog_->width() / 2,
                  mainWindow_.height() / 2 - dialog_->height() / 2);
    dialog_->show();
    dialog_->setFocus(); // else the Escape key goes to the page below
    dialog_->exec();
}
