#pragma once

#include <QElapsedTimer>
#include <QtGlobal>

#include <memory>

namespace sim {

struct Pictures;

/// The two cameras above the same hand, which drifts slowly.
class Cameras
{
public:
    explicit Cameras(quint32 seed);

    /// Copies the next frame of each camera asked for; both then show the same instant. A buffer
    /// takes wire::FrameSize bytes; nullptr leaves that camera out.
    void capture(quint8 *palmprint, quint8 *vein);

private:
    void cut(const char *picture, qint64 milliseconds, quint8 *frame) const;

    std::shared_ptr<const Pictures> m_pictures;
    QElapsedTimer m_clock;
    quint32 m_frames = 0;
};

} // namespace sim
