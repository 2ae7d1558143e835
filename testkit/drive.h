#pragma once

#include <QWidget>

#include <functional>

class QTextEdit;

/// Operates a window from outside. Controls are found by their object names; a button has the name
/// of its slot. A control that does not exist ends the program.
namespace drive {

/// Selects Qt's offscreen platform unless QT_QPA_PLATFORM names another. Call it before the
/// application is created.
void stayOffScreen();

template <class Widget> Widget *find(const QWidget *window, const QByteArray &name)
{
    auto *widget = window->findChild<Widget *>(QString::fromLatin1(name));
    if (!widget)
        qFatal("%s has no %s", window->metaObject()->className(), name.constData());
    return widget;
}

void click(const QWidget *window, const QByteArray &button);
/// Clicks a button that has no name of its own, such as those of message boxes.
void clickCaption(const QWidget *window, const QString &caption);
/// Reads or sets a control's value: the text of a field, the number of a spin box and so on.
QVariant value(const QWidget *window, const QByteArray &control);
void setValue(const QWidget *window, const QByteArray &control, const QVariant &value);
/// Replaces the text of a field.
void type(const QWidget *window, const QByteArray &field, const QString &text);

/// Returns the lines of a log; none if it is empty.
QStringList lines(const QTextEdit *log);

/// Processes events until the condition holds. Reports a failure after 8 s.
void waitFor(const std::function<bool()> &condition);

/// Fails the running test. In a program that is not a test, prints a warning.
void fail(const QString &reason);
/// Returns the number of calls of fail().
int failureCount();

} // namespace drive
