#include "widgets/elidingcombobox.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QStylePainter>

void ElidingComboBox::showPopup()
{
    view()->setMinimumWidth(view()->sizeHintForColumn(0));
    QComboBox::showPopup();
}

bool ElidingComboBox::event(QEvent *event)
{
    if (event->type() == QEvent::ToolTip)
        setToolTip(currentText());
    return QComboBox::event(event);
}

void ElidingComboBox::paintEvent(QPaintEvent * /*event*/)
{
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect field =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    // The style leaves one pixel empty at each side.
    option.currentText =
        option.fontMetrics.elidedText(option.currentText, Qt::ElideRight, field.width() - 2);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}
