#pragma once

#include "dialogrig.h"

#include <QList>
#include <QSet>

/// A kind of window that the console opens.
struct WindowKind
{
    const char *name;
    MakeWindow make;
    const char *title; ///< in English
    QSize size = {};   ///< invalid: what the layout needs
};

/// All of them, the main window first; its groups are usable.
const QList<WindowKind> &windowKinds();

/// What the operator can give the focus to, without what these are made of.
QList<QWidget *> focusableIn(const QWidget *window);

/// What the Tab key leads to, and shows, from the first of the controls on.
QSet<QWidget *> tabThrough(const QList<QWidget *> &controls);
