#pragma once

#include <QByteArray>
#include <QMap>

/// Counts every QObject of this program, with a parent or without.
namespace census {

/// To be called once, before there are objects to count.
void begin();

/// Living objects by the name of their class.
QMap<QByteArray, int> byClass();

struct Count
{
    int objects = 0;
    int timers = 0;
    int sockets = 0; ///< servers too
};
Count count();

} // namespace census
