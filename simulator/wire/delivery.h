#pragma once

#include <QByteArray>
#include <QStringList>

namespace sim {

/// A reply and the way in which it is sent.
struct Delivery
{
    /// What happens to the connection once the bytes are sent.
    enum class End : quint8 { Stay, Close, Reset };

    QByteArray bytes;
    quint32 bytesPerSecond = 0; ///< 0: no limit
    int delayMs = 0;
    int pieceSize = 0; ///< bytes in a segment; 0: no pieces
    int pauseMs = 0;   ///< between two pieces
    End end = End::Stay;
    bool late = false;  ///< waits for the next request
    int againMs = -1;   ///< time until it is sent a second time, ahead of its end; negative: never
    QStringList faults; ///< names of the faults that have struck it
};

} // namespace sim
