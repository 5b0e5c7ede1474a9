// Files that the user drops on a window. Windows keeps drag and drop between programs away from an elevated
// one like this, but lets the older message through when asked; see ChangeWindowMessageFilterEx and
// RevokeDragDrop in Microsoft's documentation. GUI thread.
#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QPoint>
#include <QWidget>
#include <windows.h>

class FileDrop : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

public:
    // A top-level window, which outlives this object.
    explicit FileDrop(QWidget &window);
    ~FileDrop() override;

    bool eventFilter(QObject *object, QEvent *event) override;
    bool nativeEventFilter(const QByteArray &eventType, void *message, long *result) override;

signals:
    // The first of the files, and where in the window.
    void dropped(const QString &path, QPoint position);

private:
    QWidget &window_;
    HWND accepting_ = nullptr;
};
