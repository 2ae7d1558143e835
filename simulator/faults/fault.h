#pragma once

#include <QVector>

#include <limits>

namespace sim {

/// One way in which the terminal fails a console, and when it does. Values out of range are taken
/// as the nearest one in it.
struct Fault
{
    enum class Kind : quint8 {
        Drop,          ///< no reply
        Delay,         ///< reply after `value` ms more, up to MostMs
        Cut,           ///< only the first `value` bytes; negative: all but the last -`value`
        Pieces,        ///< segments of `value` bytes, 1 or more, `pauseMs` apart
        Length,        ///< declares `value` (0 to 0xFFFFFF) bytes behind the head
        LengthOff,     ///< declares `value` more than there are; negative: fewer
        Status,        ///< a status reply, nothing but `value` (0 to 255)
        Garbage,       ///< random bytes, as many as the reply has
        CloseAfter,    ///< the reply's first `value` bytes, 0 or more, then an orderly end
        ResetAfter,    ///< the same, then a reset; unread bytes may be lost with it
        TrailingBytes, ///< `value` bytes 0xEE behind the reply, up to MostTrailingBytes
        Double,        ///< the same reply once more, `value` ms later, up to MostMs
        Late,          ///< held back until the next request, then sent ahead of that one's reply
    };

    static constexpr int AnyCommand = -1;
    static constexpr int WholeReply =
        std::numeric_limits<int>::max(); ///< value of Close-, ResetAfter
    static constexpr int MostMs = 3'600'000;
    static constexpr int MostTrailingBytes = 1'000'000;

    Kind kind = Kind::Drop;
    int value = 0;
    int command = AnyCommand; ///< otherwise a command code
    int pauseMs = 0;          ///< between Pieces, up to MostMs
    int from = 1;             ///< the first request to strike, counted among those with `command`
    int times = 0;            ///< so many strikes at most; 0: no end
    double chance = 1;        ///< 0 to 1, that such a request is struck
};

/// What a terminal does to its replies and to the way they take.
struct FaultPlan
{
    QVector<Fault> faults;      ///< a reply suffers each that strikes it, in this order
    quint32 seed = 1;           ///< the same seed and requests give the same strikes and garbage
    quint32 bytesPerSecond = 0; ///< to each console; 0: as fast as possible
    int delayMs = 0;            ///< before every reply, up to Fault::MostMs
};

} // namespace sim
