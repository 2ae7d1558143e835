#pragma once

#include <QElapsedTimer>

namespace sim {

/// The two cameras and the hand above them, which drifts slowly. Every frame bears the mark
/// "SIMULATED" and a number that grows with each capture.
class Cameras
{
public:
    /// The seed decides where the hand begins.
    explicit Cameras(quint32 seed);

    /// Copies the next frame of each camera asked for; both then show the same moment. A buffer
    /// has wire::FrameSize bytes; nullptr leaves that camera out.
    void capture(quint8 *palmprint, quint8 *vein);

private:
    qint64 start; ///< ms
    QElapsedTimer clock;
    quint32 frames = 0;
};

} // namespace sim
