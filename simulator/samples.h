#pragma once

#include "simulator/device.h"

namespace sim {

// What a terminal holds when it is switched on.
QVector<User> sampleUsers();
/// Passages of these users over the two months before `now`, none of them later.
Records sampleRecords(const QVector<User> &users, const QDateTime &now, quint32 seed);
/// Some valid, one expired at `now`.
QVector<QrCode> sampleQrCodes(const QDateTime &now);

} // namespace sim
