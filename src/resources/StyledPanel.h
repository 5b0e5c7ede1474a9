// The main window's central widget: a plain widget that has the panel's style sheet from the start. Set on
// the finished form, the sheet would give each of its 400 widgets a second style.
#pragma once

#include <QFile>
#include <QWidget>

class StyledPanel : public QWidget { // no Q_OBJECT: to style sheets and tools it is a QWidget
public:
    explicit StyledPanel(QWidget *parent = nullptr) : QWidget(parent) {
        QFile sheet(QStringLiteral(":/styles/panel.qss"));
        if (sheet.open(QIODevice::ReadOnly))
            setStyleSheet(QString::fromUtf8(sheet.readAll()));
    }
};
