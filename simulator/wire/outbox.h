#pragma once

#include "simulator/wire/delivery.h"

#include <QElapsedTimer>
#include <QQueue>
#include <QTimer>

#include <optional>

class QTcpSocket;

namespace sim {

/// Limits a rate: hands out slices of some milliseconds, one at a time. The next slice may make up
/// for one that comes late.
class Throttle
{
public:
    Throttle() { clock.start(); }

    /// Returns the milliseconds until the next slice may be taken; 0: now.
    int waitMs() const
    {
        const qint64 wait = std::max(freeAt - clock.nsecsElapsed(), qint64{0});
        return static_cast<int>((wait + Millisecond - 1) / Millisecond);
    }

    /// Takes up to `wanted` bytes, 1 or more, and returns how many, at least 1. Takes all of them
    /// when `bytesPerSecond` is 0.
    int take(int wanted, quint32 bytesPerSecond)
    {
        if (bytesPerSecond == 0)
            return wanted;
        const qint64 slice = std::max<qint64>(bytesPerSecond * Slice / Second, 1);
        const qint64 taken = std::min<qint64>(wanted, slice);
        freeAt = std::max(freeAt, clock.nsecsElapsed() - Slice) + taken * Second / bytesPerSecond;
        return static_cast<int>(taken);
    }

private:
    // In nanoseconds, as are all times here.
    static constexpr qint64 Second = 1'000'000'000;
    static constexpr qint64 Millisecond = Second / 1000;
    static constexpr qint64 Slice = 10 * Millisecond;

    QElapsedTimer clock;
    qint64 freeAt = 0; ///< on the clock
};

/// Sends replies on a socket, each completely before the next, at the pace that they ask for. A
/// caller that waits for isIdle() before it answers another request keeps at most two replies and
/// their doubles here.
class Outbox : public QObject
{
    Q_OBJECT
public:
    /// `console` must outlive the outbox.
    explicit Outbox(QTcpSocket *console);

    void send(const Delivery &delivery);

    /// Returns true when the next reply may be sent; never again once a reply has ended the
    /// connection.
    bool isIdle() const { return queue.isEmpty() && !hasEnded; }

signals:
    /// Idle again after a send() that did not finish at once.
    void done();

private slots:
    void resume();

private:
    void enqueue(Delivery delivery);
    void advance();
    /// Does one step towards an empty queue; returns false when it has to wait for resume().
    bool step();
    bool sendSlice();
    bool finish();
    bool waitFor(int ms);
    /// Ends the connection so that the peer sees a reset instead of an orderly end.
    void resetConnection();

    QTcpSocket *socket;
    QQueue<Delivery> queue;
    std::optional<Delivery> held; ///< late; sent ahead of the next one
    int sent = 0;                 ///< bytes of the first reply in the queue
    bool hasEnded = false;
    Throttle throttle;
    QTimer timer;
};

} // namespace sim
