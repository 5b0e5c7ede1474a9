// Puts the texts of the current interface language into the main window, at start-up and after every change.
#pragma once

#include "pages/PageContext.h"

#include <QMainWindow>
#include <QTranslator>

class Translation : public QObject {
    Q_OBJECT

public:
    Translation(QMainWindow &mainWindow, PageContext context);

    // Loads translations/ts_zh.qm (language 0) or ts_en.qm (1 and above) from the program's folder, in
    // Chinese also qtbase_zh_CN.qm, the toolkit's own texts, and re-applies all texts; a negative language
    // leaves the texts as they are. Without a usable file the texts are the source texts, which are Chinese.
    // Controls that change here write nothing to the device.
    void LoadTranslation();

signals:
    // The texts were reset to those of the form: time to write live values back and to set again the texts
    // that the form does not hold.
    void retranslated();

private:
    void loadTexts(int8_t language);

    QMainWindow &mainWindow_;
    PageContext context_;
    QTranslator *translator_ = nullptr; // owned by the main window
    QTranslator toolkitTranslator_;
};
