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

struct TourPorts
{
    quint16 terminal; ///< where the simulated terminal listens
    quint16 unused;   ///< where nobody listens
    quint16 messages; ///< where the simulated terminal pushes its messages
};

std::vector<Step> tourSteps(const TourPorts &ports);
