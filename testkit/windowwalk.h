#pragma once

#include "testkit/dialogrig.h"

#include <QStringList>

/// A window that the console opens.
struct WindowKind
{
    const char *name;
    MakeWindow make;
    const char *title; ///< in English
    QSize size = {};   ///< invalid: the layout chooses the size
};

/// All windows of the console; the main window, with all groups usable, is the first.
const QList<WindowKind> &windowKinds();

/// Controls that take the focus, without the parts that they consist of.
QList<QWidget *> focusableIn(const QWidget *window);

/// Presses Tab from the first control on and returns the names of the controls that do not get the
/// focus or are not visible then.
QStringList unreachedByTab(const QList<QWidget *> &controls);
