#pragma once

#include <QLabel>
#include <QPushButton>

/// Small makers of the controls that the windows are drawn with. What they return belongs to the
/// layout's widget it is put into.
namespace controls {

/// Fixes a widget's size; an invalid size leaves it to the style.
template <class Widget> Widget *sized(Widget *widget, QSize size)
{
    if (size.isValid())
        widget->setFixedSize(size);
    return widget;
}

/// Narrows the widget's letters until `text` needs no more than `width` pixels: desktop fonts of
/// one height differ in width, fixed sizes do not.
void fitText(QWidget *widget, const QString &text, int width);

/// A label of fixed size for `buddy`, which may be null.
QLabel *label(const QString &text, QSize size, QWidget *buddy = nullptr);

/// A button whose click runs `slot` (as SLOT() gives it) of `receiver`; its object name is the
/// slot's name.
QPushButton *button(const QString &text, QSize size, const QObject *receiver, const char *slot);

} // namespace controls
