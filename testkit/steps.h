#pragma once

#include "testkit/console.h"

#include <QDir>

class SimulatorProcess;

/// One thing that an operator does, and how its success shows.
struct Step
{
    QString name; ///< also the name of its picture
    std::function<void(Console &)> act;
    /// Called repeatedly until it returns true or the step times out.
    std::function<bool(const Console &)> succeeded;
};

/// Returns false if the step does not succeed in time, a dialog opens that the step does not
/// expect, or the picture cannot be saved.
bool perform(const Step &step, Console *console, const QString &picturePath, int milliseconds);

/// Returns all steps of a session, from the first connection to the disconnect. Files that a step
/// needs are written to the folder.
std::vector<Step> sessionSteps(const SimulatorProcess &simulator, const QDir &folder);

/// The buttons of "User Operation".
std::vector<Step> userSteps(const QDir &folder);
/// The buttons of "Settings", and those that save pictures.
std::vector<Step> settingsSteps(const QDir &folder);
/// The configuration dialogs.
std::vector<Step> configSteps(const QDir &folder);
/// The dialogs for access records and QR codes.
std::vector<Step> recordSteps(const QDir &folder);

/// Steps that succeed when a new line of the information log matches the pattern as a whole.
Step clickStep(const char *name, const char *button, const char *pattern);
Step dialogStep(const char *name, const char *button, const std::vector<Answer> &answers,
                const char *pattern);

/// Returns whether the pattern matches a whole line.
bool anyMatch(const QStringList &lines, const char *pattern);

/// Clicks a button that writes a file beside the program and moves that file to `target`, which
/// must not exist. A file that had this name before is kept.
void clickExport(const QWidget *dialog, const char *button, const QString &fileName,
                 const QString &target);

/// Returns the pictures that the console has saved beside the program.
QStringList savedPictures();
/// Moves the pictures that are not in `before` to the folder. Returns false if there are none or
/// one cannot be moved.
bool takeSavedPictures(const QStringList &before, const QDir &folder);
