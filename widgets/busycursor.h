#pragma once

#include <QElapsedTimer>

/// Shows the busy cursor during a wait that turns out to be long. Instances may be nested.
class BusyCursor
{
public:
    BusyCursor() { timer.start(); }
    /// Restores the previous cursor.
    ~BusyCursor();
    BusyCursor(const BusyCursor &) = delete;
    BusyCursor &operator=(const BusyCursor &) = delete;

    /// Must be called regularly during the wait.
    void showIfLong();
    void show();

private:
    QElapsedTimer timer;
    bool shown = false;
};
