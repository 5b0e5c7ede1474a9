#include "ui/EmbeddedDialog.h"

EmbeddedDialog::EmbeddedDialog(QWidget &mainWindow)
    : mainWindow_(mainWindow), dialog_(new QDialog(&mainWindow)) {}

EmbeddedDialog::~EmbeddedDialog() {
    delete dialog_;
}

void EmbeddedDialog::makeFrameless() {
    dialog_->setWindowFlags(Qt::FramelessWindowHint);
}

void EmbeddedDialog::run() {
    // From the sizes only: the main window's own position plays no part.
    dialog_->move(mainWindow_.width() / 2 - dialog_->width() / 2,
                  mainWindow_.height() / 2 - dialog_->height() / 2);
    dialog_->show();
    dialog_->setFocus(); // else the Escape key goes to the page below
    dialog_->exec();
}
