#pragma once

#include "app/mainwindow.h"

#include <QDir>

/// The real window, handled as an operator does: controls are found by their object names, a
/// button's being its slot's. A control that does not exist ends the program.
class Console
{
public:
    Console();

    void click(const char *button);
    void type(const char *field, const QString &text);
    void pointAt(const char *picture, QPoint position);

    bool isUsable(const char *control) const;
    QString caption(const char *button) const;
    QString labelText(const char *label) const;
    /// The camera's picture as the window shows it.
    QImage picture(const char *name) const;

    /// All lines of the information log, of the message log.
    QStringList infoLines() const;
    QStringList watchLines() const;

    bool savePicture(const QString &path);

private:
    template <class Widget> Widget *find(const char *name) const;

    MainWindow window;
};
