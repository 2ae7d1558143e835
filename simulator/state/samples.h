#pragma once

#include "simulator/state/state.h"

namespace sim {

// What a terminal holds when it is switched on for the first time.
QVector<User> sampleUsers();
/// Some valid, one expired at `now`.
QVector<QrCode> sampleQrCodes(const QDateTime &now);

} // namespace sim
