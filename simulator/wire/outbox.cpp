#include "simulator/wire/outbox.h"

#include "simulator/wire/hardreset.h"

#include <QTcpSocket>

#include <algorithm>
#include <utility>

namespace sim {

Outbox::Outbox(QTcpSocket *socket)
    : m_socket(socket)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, SIGNAL(timeout()), this, SLOT(resume()));
    // Queued, because a flush amidst a step emits it too.
    connect(m_socket, SIGNAL(bytesWritten(qint64)), this, SLOT(resume()), Qt::QueuedConnection);
}

void Outbox::send(const Delivery &delivery)
{
    if (m_held)
        enqueue(*std::exchange(m_held, std::nullopt));
    if (delivery.late)
        m_held = delivery;
    else
        enqueue(delivery);
    advance();
}

void Outbox::enqueue(Delivery delivery)
{
    if (delivery.againMs >= 0) {
        m_queue.enqueue(delivery);
        m_queue.last().end = Delivery::End::Stay;
        delivery.delayMs = delivery.againMs;
    }
    m_queue.enqueue(delivery);
}

void Outbox::resume()
{
    if (m_queue.isEmpty() || m_timer.isActive())
        return;
    advance();
    if (idle())
        emit done();
}

void Outbox::advance()
{
    bool more = true;
    while (more && !m_queue.isEmpty() && m_socket->state() == QAbstractSocket::ConnectedState)
        more = step();
}

bool Outbox::step()
{
    Delivery &delivery = m_queue.head();
    if (delivery.delayMs > 0)
        return waitFor(std::exchange(delivery.delayMs, 0));
    if (m_sent == delivery.bytes.size())
        return finish();
    if (delivery.pieceSize > 0 || m_bytesPerSecond > 0)
        return sendSlice();
    m_socket->write(delivery.bytes.mid(m_sent));
    m_sent = delivery.bytes.size();
    return true;
}

bool Outbox::sendSlice()
{
    if (m_socket->bytesToWrite() > 0)
        return false;
    if (const int busy = m_throttle.waitMs())
        return waitFor(busy);
    const Delivery &delivery = m_queue.head();
    const int left = delivery.bytes.size() - m_sent;
    const int pieceLeft =
        delivery.pieceSize > 0 ? delivery.pieceSize - m_sent % delivery.pieceSize : left;
    const int size = m_throttle.take(std::min(left, pieceLeft), m_bytesPerSecond);
    m_socket->write(delivery.bytes.constData() + m_sent, size);
    m_socket->flush();
    m_sent += size;
    return size == left || size < pieceLeft || waitFor(delivery.pauseMs);
}

bool Outbox::finish()
{
    const Delivery::End end = m_queue.head().end;
    if (end == Delivery::End::Reset && m_socket->bytesToWrite() > 0)
        return false;
    m_queue.dequeue();
    m_sent = 0;
    m_ended = end != Delivery::End::Stay;
    if (end == Delivery::End::Close)
        m_socket->disconnectFromHost();
    else if (end == Delivery::End::Reset)
        resetConnection(*m_socket);
    return !m_ended;
}

bool Outbox::waitFor(int ms)
{
    m_timer.start(ms);
    return false;
}

} // namespace sim
