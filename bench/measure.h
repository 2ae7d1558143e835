#pragma once

#include <QStringList>

#include <vector>

/// Measured quantities, in the order of the columns.
enum Quantity { Resident, Heap, Descriptors, Objects, Timers, Sockets, Windows, QuantityCount };

struct Sample
{
    qint64 values[QuantityCount]; ///< memory in KiB; -1 where it cannot be measured
};

/// Returns the resident memory of this process; -1 where it cannot be measured.
qint64 residentKiB();

Sample takeSample();
/// Returns whether all quantities that must not change are the same as before.
bool hasSettled(const Sample &sample, const Sample &before);

QString headline();
QString columns(const Sample &sample);
/// Returns the names of the quantities that cannot be measured on this system.
QStringList unmeasured(const Sample &sample);

/// Number of rounds that growth() needs.
constexpr int MinRounds = 4;
/// Returns the number of warm-up rounds.
int warmUp(int rounds);

/// Compares the last rounds with the first ones after the warm-up and describes each fault.
QStringList growth(const std::vector<Sample> &samples);
