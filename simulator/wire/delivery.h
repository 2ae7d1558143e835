#pragma once

#include <QByteArray>
#include <QStringList>

namespace sim {

/// A reply and how it goes out.
struct Delivery
{
    enum class End : quint8 { Stay, Close, Reset }; ///< of the connection, once `bytes` are out

    QByteArray bytes;
    int delayMs = 0;
    int pieceSize = 0; ///< bytes to a segment; 0: as it comes
    int pauseMs = 0;   ///< between two pieces
    End end = End::Stay;
    bool late = false;  ///< waits for the next request
    int againMs = -1;   ///< sent once more so much later, ahead of the `end`; negative: not
    QStringList faults; ///< names of those it suffered
};

} // namespace sim
