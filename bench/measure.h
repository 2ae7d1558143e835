#pragma once

#include <QStringList>

#include <vector>

/// What is measured of this program, in the order of the columns.
enum Quantity { Resident, Heap, Descriptors, Objects, Timers, Sockets, Windows, QuantityCount };

struct Sample
{
    qint64 values[QuantityCount]; ///< memory in KiB; -1 where it cannot be measured
};

/// Memory of this process in the machine; -1 where it cannot be measured.
qint64 residentKiB();

Sample takeSample();
/// Whether there is as much as before of what must never become more.
bool hasSettled(const Sample &sample, const Sample &before);

QString headline();
QString columns(const Sample &sample);
/// What cannot be measured on this system.
QStringList unmeasured(const Sample &sample);

/// Rounds that are needed at least.
constexpr int FewestRounds = 4;
/// How many rounds of so many are the warm-up.
int warmUp(int rounds);

/// Compares the last rounds with those behind the warm-up, and tells each growth that is a fault.
QStringList growth(const std::vector<Sample> &samples);
