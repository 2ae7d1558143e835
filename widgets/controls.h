#pragma once

#include <QLabel>
#include <QPushButton>

#include <initializer_list>

class QComboBox;
class QGridLayout;
class QLineEdit;

/// Functions that create the controls of the windows. What they return belongs to the widget whose
/// layout it is put into.
namespace controls {

/// Fixes a widget's size; an invalid size leaves it to the style.
template <class Widget> Widget *sized(Widget *widget, QSize size)
{
    if (size.isValid())
        widget->setFixedSize(size);
    return widget;
}

/// Fixes a widget's size and gives it an object name.
template <class Widget> Widget *field(Widget *widget, const char *name, QSize size)
{
    widget->setObjectName(QLatin1String(name));
    return sized(widget, size);
}

/// Changes a button's caption. In every control of fixed size the letters are narrowed until the
/// text fits, since desktop fonts of the same height differ in width.
void setCaption(QPushButton *button, const QString &text);

/// A label of fixed size; `buddy` may be null.
QLabel *label(const QString &text, QSize size, QWidget *buddy = nullptr);

/// A button that is connected to a slot of `receiver`, given as SLOT(). The slot's name is the
/// button's object name. An invalid size leaves the size to the style.
QPushButton *button(const QString &text, QSize size, const QObject *receiver, const char *slot);

struct ButtonRow
{
    QString text;
    const char *slot;
};
/// A grid of such buttons, filled row by row.
QGridLayout *buttonGrid(std::initializer_list<ButtonRow> buttons, int columns, QSize size,
                        const QObject *receiver);

/// Adds a label and its control side by side to a row of a grid.
void addField(QGridLayout *grid, int row, int column, const QString &text, QSize labelSize,
              QWidget *field);

/// Narrows the letters of a combo box of fixed size until its widest item fits.
void fitItems(QComboBox *combo);

/// Prevents the Enter key from pressing a button of the window.
void keepEnterFromButtons(QWidget *window);

/// Returns the edit's text without the half of a surrogate pair that its length limit may have left
/// at the end.
QString wholeText(const QLineEdit *edit);

} // namespace controls
