#pragma once

#include "simulator/wire/delivery.h"
#include "simulator/wire/throttle.h"

#include <QObject>
#include <QQueue>
#include <QTimer>

#include <optional>

class QTcpSocket;

namespace sim {

/// Puts replies on a socket, each wholly before the next, at the pace they ask for. Whoever waits
/// for idle() before answering another request keeps at most two of them here, and their doubles.
class Outbox : public QObject
{
    Q_OBJECT
public:
    /// `socket` must outlive the outbox.
    explicit Outbox(QTcpSocket *socket);

    void send(const Delivery &delivery);
    /// To each second; 0: no limit.
    void setRate(quint32 bytesPerSecond) { m_bytesPerSecond = bytesPerSecond; }

    /// True when the next reply may be sent; never again once one has ended the connection.
    bool idle() const { return m_queue.isEmpty() && !m_ended; }

signals:
    /// Idle again after a send() that took its time.
    void done();

private slots:
    void resume();

private:
    void enqueue(Delivery delivery);
    void advance();
    /// One move towards an empty queue; false when it has to wait for resume().
    bool step();
    bool sendSlice();
    bool finish();
    bool waitFor(int ms);

    QTcpSocket *m_socket;
    QQueue<Delivery> m_queue;
    std::optional<Delivery> m_held; ///< late; sent ahead of the next one
    int m_sent = 0;                 ///< bytes of the first in the queue
    bool m_ended = false;
    quint32 m_bytesPerSecond = 0;
    Throttle m_throttle;
    QTimer m_timer;
};

} // namespace sim
