// A dialog drawn inside the main window, above its pages, which are dimmed and out of reach while it is open.
// With the frameless hint as its only window flag it is a child of the window and not a window of its own, so
// its position is in the main window's coordinates.
#pragma once

#include <QDialog>
#include <QPointer>

class EmbeddedDialog {
public:
    // open: true from now until the dialog is closed, by whatever means.
    EmbeddedDialog(QWidget &mainWindow, bool &open);
    explicit EmbeddedDialog(QWidget &mainWindow);
    ~EmbeddedDialog();
    EmbeddedDialog(const EmbeddedDialog &) = delete;
    EmbeddedDialog &operator=(const EmbeddedDialog &) = delete;

    // Where the form is built and buttons are connected.
    QDialog *dialog() const { return dialog_; }

    // After the form is built and before anything that depends on the window flags.
    void makeFrameless();

    // Shows the dialog in the middle of the main window and returns when it has been closed.
    void run();

private:
    QWidget &mainWindow_;
    // Made in this order, so that the dialog stands above the shade. The main window may end, with its
    // children, while the dialog runs.
    QPointer<QWidget> shade_;
    QPointer<QDialog> dialog_;
};
