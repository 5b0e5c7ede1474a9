#include "ui/ShownTexts.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOption>
#include <QTextDocument>

namespace ShownTexts {

namespace {

QStringList listEntries(const QComboBox &box) {
    QStringList entries;
    for (int i = 0; i < box.count(); ++i)
        entries += box.itemText(i);
    return entries;
}

QString plain(const QString &text) {
    if (!Qt::mightBeRichText(text))
        return text;
    QTextDocument document;
    document.setHtml(text);
    return document.toPlainText();
}

// What is left for the text inside the frame, indicator and icon.
QSize roomInButton(const QAbstractButton &button) {
    QStyleOptionButton option;
    option.initFrom(&button);
    option.text = button.text();
    option.icon = button.icon();
    option.iconSize = button.iconSize();
    const bool radio = qobject_cast<const QRadioButton *>(&button);
    if (radio || qobject_cast<const QCheckBox *>(&button))
        return button.style()
            ->subElementRect(radio ? QStyle::SE_RadioButtonContents : QStyle::SE_CheckBoxContents, &option,
                             &button)
            .size();
    QSize room = button.style()->subElementRect(QStyle::SE_PushButtonContents, &option, &button).size();
    if (!button.icon().isNull())
        room.rwidth() -= button.iconSize().width() + 4; // the gap that the toolkit leaves
    return room;
}

QSize roomInList(const QComboBox &box) {
    QStyleOptionComboBox option;
    option.initFrom(&box);
    option.editable = box.isEditable();
    return box.style()
        ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &box)
        .size();
}

// A line when the text needs more than the room; empty when it fits.
QString fault(const QWidget &widget, const QString &rawText, QSize room, bool wraps) {
    // Test machines have no medium face and smear the normal one, which makes it wider.
    QFont font = widget.font();
    if (font.weight() < QFont::Bold)
        font.setWeight(QFont::Normal);
    const QString text = plain(rawText);
    const QSize size = QFontMetrics(font, const_cast<QWidget *>(&widget))
                           .boundingRect(QRect(0, 0, wraps ? room.width() : 10000, 10000),
                                         wraps ? Qt::TextWordWrap : 0, text)
                           .size();
    const bool severalLines = wraps || text.contains(QLatin1Char('\n'));
    if (text.isEmpty() || (size.width() <= room.width() && (!severalLines || size.height() <= room.height())))
        return {};
    return QStringLiteral("%1 \"%2\" needs %3 x %4")
        .arg(widget.objectName(), text)
        .arg(size.width())
        .arg(size.height());
}

} // namespace

QStringList all(const QWidget &window) {
    QStringList lines;
    QList<QWidget *> widgets = window.findChildren<QWidget *>();
    widgets.prepend(const_cast<QWidget *>(&window));
    for (const QWidget *widget : widgets) {
        for (const char *property :
             {"text", "title", "toolTip", "windowTitle", "placeholderText", "accessibleName", "format"}) {
            const QString text = widget->property(property).toString();
            if (!text.isEmpty())
                lines += widget->objectName() + QLatin1Char('.') + QLatin1String(property) +
                         QStringLiteral(": ") + text;
        }
        if (const auto *box = qobject_cast<const QComboBox *>(widget)) {
            for (const QString &entry : listEntries(*box))
                lines += widget->objectName() + QStringLiteral(".entry: ") + entry;
        }
    }
    return lines;
}

QStringList clipped(const QWidget &window) {
    QStringList lines;
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        if (!widget->isVisible())
            continue;
        if (const auto *label = qobject_cast<const QLabel *>(widget))
            lines += fault(*label, label->text(), label->contentsRect().size(), label->wordWrap());
        else if (const auto *button = qobject_cast<const QAbstractButton *>(widget))
            lines += fault(*button, button->text(), roomInButton(*button), false);
        else if (const auto *box = qobject_cast<const QComboBox *>(widget))
            for (const QString &entry : listEntries(*box))
                lines += fault(*box, entry, roomInList(*box), false);
    }
    lines.removeAll(QString());
    return lines;
}

} // namespace ShownTexts
