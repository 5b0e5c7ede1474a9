// Import and export of the equalizer's curve as a text file: a menu on a button, or a file dropped on the
// page. What cannot be imported is told in a message box. GUI thread.
#pragma once

#include "pages/effects/ExclusiveEffects.h"
#include "pages/equalizer/EqCurveText.h"
#include "pages/equalizer/FileDrop.h"
#include "pages/PageContext.h"

#include <QObject>

class QMenu;

class EqCurveExchange : public QObject {
    Q_OBJECT

public:
    EqCurveExchange(PageContext context, ExclusiveEffects &effects);

signals:
    // While the equalizer is on. The name is the file's, without its extension.
    void imported(const EqCurveText::Gains &gains, const QString &name);

private:
    void showMenu();
    void chooseImport();
    void chooseExport();
    void importDropped(const QString &path, QPoint position);
    void importFile(const QString &path);

    PageContext context_;
    ExclusiveEffects &effects_;
    QMenu *menu_;
    FileDrop drop_;
};
