#pragma once

#include <QElapsedTimer>

namespace sim {

/// Says when how many bytes may go out so that a line is not overrun: slices of some
/// milliseconds, one at a time. A slice that comes late may be made up for by the next.
class Throttle
{
public:
    Throttle() { m_clock.start(); }

    /// Milliseconds until the line is free; 0: now.
    int waitMs() const;
    /// Takes up to `wanted` bytes (1 or more) from a free line; at least 1, all of them when
    /// `bytesPerSecond` is 0.
    int take(int wanted, quint32 bytesPerSecond);

private:
    QElapsedTimer m_clock;
    qint64 m_freeAt = 0; ///< nanoseconds on the clock
};

} // namespace sim
