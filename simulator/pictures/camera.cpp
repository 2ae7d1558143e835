#include "simulator/pictures/camera.h"

#include "simulator/pictures/hand.h"
#include "simulator/pictures/pictures.h"
#include "simulator/pictures/stamp.h"

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstring>

namespace sim {
namespace {

constexpr double SwayPeriod = 7300; // milliseconds
constexpr double LiftPeriod = 11100;
constexpr double DriftReach = 0.9 * PictureMargin; // pixels, less than the margin

/// Position within the margin at the given time.
int drift(qint64 milliseconds, double period)
{
    const double turns = static_cast<double>(milliseconds) / period;
    return PictureMargin + static_cast<int>(std::lround(DriftReach * std::sin(6.2831853 * turns)));
}

} // namespace

Cameras::Cameras(quint32 seed)
    : m_pictures(picturesFor(seed))
{
    m_clock.start();
}

void Cameras::capture(quint8 *palmprint, quint8 *vein)
{
    const qint64 now = m_clock.elapsed();
    ++m_frames;
    if (palmprint)
        cut(m_pictures->palmprint.constData(), now, palmprint);
    if (vein)
        cut(m_pictures->vein.constData(), now, vein);
}

void Cameras::cut(const char *picture, qint64 milliseconds, quint8 *frame) const
{
    const char *source = picture + drift(milliseconds, SwayPeriod) +
                         std::ptrdiff_t{PictureWidth} * drift(milliseconds, LiftPeriod);
    quint8 *end = frame + wire::FrameSize;
    for (quint8 *row = frame; row != end; row += wire::FrameWidth, source += PictureWidth)
        std::memcpy(row, source, wire::FrameWidth);
    char text[32];
    std::snprintf(text, sizeof text, "SIMULATED %06u", m_frames % 1000000U);
    stampText(frame, text);
}

} // namespace sim
