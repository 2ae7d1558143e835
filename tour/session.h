#pragma once

#include "tour/steps.h"

/// What every program needs that goes through steps with a console.

/// Unless a platform is chosen. To be called before there is an application.
void stayOffScreen();

/// A port of this machine on which nobody listens.
quint16 freePort();

/// False if the step does not succeed in time, or its picture cannot be saved.
bool perform(const Step &step, Console *console, const QString &picturePath, int milliseconds);

/// The pictures that the console has saved beside itself.
QStringList savedPictures();
/// Moves those that have come since to the folder. False if there are none or one stays.
bool takeSavedPictures(const QStringList &before, const QDir &folder);
