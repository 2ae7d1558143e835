#pragma once

#include "simulator/state/state.h"

#include <QByteArray>

namespace sim {

// The lists that a terminal gives out, as JSON.
QByteArray userListText(const State &state);
QByteArray qrListText(const State &state);

/// Whether the reply that carries the list is short enough for a console, and stays so however
/// the users' features are counted.
bool userListFits(const State &state);
bool qrListFits(const State &state);

} // namespace sim
