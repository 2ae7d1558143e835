#include "app/framerate.h"

namespace {

constexpr qint64 Second = 1000; // ms

} // namespace

void FrameRate::count()
{
    forgetOld();
    arrivals.push_back(clock.elapsed());
}

int FrameRate::lastSecond()
{
    forgetOld();
    return static_cast<int>(arrivals.size());
}

void FrameRate::forgetOld()
{
    const qint64 oldest = clock.elapsed() - Second;
    while (!arrivals.empty() && arrivals.front() <= oldest)
        arrivals.pop_front();
}
