#pragma once

#include <QByteArray>
#include <QMap>

/// Counts every QObject of this program, with or without a parent.
namespace census {

/// Starts counting. Call it once, before any object is created.
void begin();

/// Returns the number of living objects of each class.
QMap<QByteArray, int> byClass();

struct Count
{
    int objects = 0; ///< without those of Qt's thread pools
    int timers = 0;
    int sockets = 0; ///< including servers
    /// Event dispatchers: one for each thread, each with a file descriptor.
    int dispatchers = 0;
};
Count count();

} // namespace census
