#include "simulator/wire/outbox.h"

#include <QTcpSocket>

#ifdef Q_OS_WIN
#include <winsock2.h>
#else
#include <sys/socket.h>
#endif

namespace sim {

Outbox::Outbox(QTcpSocket *console)
    : socket(console)
{
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    connect(&timer, SIGNAL(timeout()), this, SLOT(resume()));
    // Queued, because a flush in the middle of a step emits it, too.
    connect(socket, SIGNAL(bytesWritten(qint64)), this, SLOT(resume()), Qt::QueuedConnection);
}

void Outbox::send(const Delivery &delivery)
{
    if (held)
        enqueue(*std::exchange(held, std::nullopt));
    if (delivery.late)
        held = delivery;
    else
        enqueue(delivery);
    advance();
}

void Outbox::enqueue(Delivery delivery)
{
    if (delivery.againMs >= 0) {
        queue.enqueue(delivery);
        queue.last().end = Delivery::End::Stay;
        delivery.delayMs = delivery.againMs;
    }
    queue.enqueue(delivery);
}

void Outbox::resume()
{
    if (queue.isEmpty() || timer.isActive())
        return;
    advance();
    if (isIdle())
        emit done();
}

void Outbox::advance()
{
    bool more = true;
    while (more && !queue.isEmpty() && socket->state() == QAbstractSocket::ConnectedState)
        more = step();
}

bool Outbox::step()
{
    Delivery &delivery = queue.head();
    if (delivery.delayMs > 0)
        return waitFor(std::exchange(delivery.delayMs, 0));
    if (sent == delivery.bytes.size())
        return finish();
    if (delivery.pieceSize > 0 || delivery.bytesPerSecond > 0)
        return sendSlice();
    socket->write(delivery.bytes.mid(sent));
    sent = delivery.bytes.size();
    return true;
}

bool Outbox::sendSlice()
{
    if (socket->bytesToWrite() > 0)
        return false;
    if (const int busy = throttle.waitMs())
        return waitFor(busy);
    const Delivery &delivery = queue.head();
    const int left = delivery.bytes.size() - sent;
    const int pieceLeft =
        delivery.pieceSize > 0 ? delivery.pieceSize - sent % delivery.pieceSize : left;
    const int size = throttle.take(std::min(left, pieceLeft), delivery.bytesPerSecond);
    socket->write(delivery.bytes.constData() + sent, size);
    socket->flush();
    sent += size;
    return size == left || size < pieceLeft || waitFor(delivery.pauseMs);
}

bool Outbox::finish()
{
    const Delivery::End end = queue.head().end;
    if (end == Delivery::End::Reset && socket->bytesToWrite() > 0)
        return false;
    queue.dequeue();
    sent = 0;
    hasEnded = end != Delivery::End::Stay;
    if (end == Delivery::End::Close)
        socket->disconnectFromHost();
    else if (end == Delivery::End::Reset)
        resetConnection();
    return !hasEnded;
}

bool Outbox::waitFor(int ms)
{
    timer.start(ms);
    return false;
}

void Outbox::resetConnection()
{
    linger noTime{};
    noTime.l_onoff = 1;
    // A descriptor is an int, on Windows a SOCKET.
    const auto descriptor = static_cast<decltype(::socket(0, 0, 0))>(socket->socketDescriptor());
    ::setsockopt(descriptor, SOL_SOCKET, SO_LINGER, reinterpret_cast<const char *>(&noTime),
                 sizeof noTime);
    socket->abort();
}

} // namespace sim
