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
    int objects = 0; ///< without what Qt's thread pools are made of
    int timers = 0;
    int sockets = 0; ///< servers too
    /// Of each thread one, with a descriptor of its own.
    int dispatchers = 0;
};
Count count();

} // namespace census
