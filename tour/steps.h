#pragma once

#include "tour/console.h"

#include <functional>
#include <vector>

/// One thing that an operator does, and how its success shows.
struct Step
{
    QString name; ///< of the picture too
    std::function<void(Console &)> act;
    /// Asked again and again until it holds or the step's time is over.
    std::function<bool(const Console &)> succeeded;
};

/// Steps whose success is a line in the information log that matches the pattern as a whole.
Step clickStep(const char *name, const char *button, const char *pattern);
Step dialogStep(const char *name, const char *button, const std::vector<Answer> &answers,
                const char *pattern);

/// Whether the pattern matches a whole line.
bool anyMatch(const QStringList &lines, const char *pattern);

struct TourPorts
{
    quint16 terminal; ///< where the simulated terminal listens
    quint16 unused;   ///< where nobody listens
    quint16 messages; ///< where the simulated terminal pushes its messages
};

/// The buttons of "User Operation"; files that a step needs are made in the folder.
std::vector<Step> userSteps(const QDir &folder);
/// Those of "Settings", and the ones that save pictures.
std::vector<Step> settingsSteps(const QDir &folder);
/// Those of the configuration dialogs.
std::vector<Step> configSteps(const QDir &folder);
/// Those of the access records and the QR codes.
std::vector<Step> recordSteps(const QDir &folder);

std::vector<Step> tourSteps(const TourPorts &ports, const QDir &folder);
