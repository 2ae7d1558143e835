#include "simulator/wire/throttle.h"

#include <algorithm>

namespace sim {
namespace {

constexpr qint64 Second = 1'000'000'000; // in nanoseconds, as are all times here
constexpr qint64 Millisecond = Second / 1000;
constexpr qint64 Slice = 10 * Millisecond;

} // namespace

int Throttle::waitMs() const
{
    const qint64 wait = m_freeAt - m_clock.nsecsElapsed();
    return wait > 0 ? static_cast<int>((wait + Millisecond - 1) / Millisecond) : 0;
}

int Throttle::take(int wanted, quint32 bytesPerSecond)
{
    if (bytesPerSecond == 0)
        return wanted;
    const qint64 sliceBytes = std::max<qint64>(bytesPerSecond * Slice / Second, 1);
    const qint64 taken = std::min<qint64>(wanted, sliceBytes);
    const qint64 start = std::max(m_freeAt, m_clock.nsecsElapsed() - Slice);
    m_freeAt = start + taken * Second / bytesPerSecond;
    return static_cast<int>(taken);
}

} // namespace sim
