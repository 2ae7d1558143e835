#pragma once

#include <QLabel>
#include <QPushButton>

class QComboBox;
class QLineEdit;

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

/// Gives a button another caption. As in all captions of fixed size, the letters are narrowed until
/// it fits: desktop fonts of one height differ in width, the sizes do not.
void setCaption(QPushButton *button, const QString &text);

/// A label of fixed size for `buddy`, which may be null.
QLabel *label(const QString &text, QSize size, QWidget *buddy = nullptr);

/// A button whose click runs `slot` (as SLOT() gives it) of `receiver`; its object name is the
/// slot's name. An invalid size leaves the size to the style.
QPushButton *button(const QString &text, QSize size, const QObject *receiver, const char *slot);

/// Narrows the letters of a combo box of fixed size until its widest item fits.
void fitItems(QComboBox *combo);

/// Lets the Enter key press none of the window's buttons, wherever the focus is.
void keepEnterFromButtons(QWidget *window);

/// The edit's text without the half of a character that its length limit may have left at the end.
QString wholeText(const QLineEdit *edit);

} // namespace controls
