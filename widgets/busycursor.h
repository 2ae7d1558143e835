#pragma once

#include <QElapsedTimer>

/// The busy cursor for a wait that turns out to be long. Several may nest.
class BusyCursor
{
public:
    BusyCursor() { timer.start(); }
    /// Gives the former cursor back.
    ~BusyCursor();
    BusyCursor(const BusyCursor &) = delete;
    BusyCursor &operator=(const BusyCursor &) = delete;

    /// To be called now and then during the wait.
    void showIfLong();
    void show();

private:
    QElapsedTimer timer;
    bool shown = false;
};
