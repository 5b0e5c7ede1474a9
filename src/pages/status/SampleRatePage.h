// The sample-rate pages of the speaker and of the microphone: the chosen rate's picture is shown, nothing is
// sent.
#pragma once

#include "pages/PageContext.h"

#include <QObject>

class QRadioButton;

class SampleRatePage : public QObject {
    Q_OBJECT

public:
    explicit SampleRatePage(PageContext context);

private:
    // Shows ":/right/png/<imageName>" in the picture while the button is the checked one.
    void showWhenChecked(QRadioButton *button, QWidget *picture, const QString &imageName);
};
