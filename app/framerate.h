#pragma once

#include <QElapsedTimer>

#include <deque>

/// Counts the frames that arrived within the last second.
class FrameRate
{
public:
    FrameRate() { clock.start(); }

    void count();
    int lastSecond();

private:
    void forgetOld();

    QElapsedTimer clock;
    std::deque<qint64> arrivals; ///< ms
};
