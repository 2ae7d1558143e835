#pragma once

#include "simulator/state/chatter.h"

#include <QHostAddress>
#include <QTcpSocket>
#include <QTimer>

namespace sim {

/// Pushes messages to the address that a console announced: a greeting, something at every
/// interval and each event. While nobody listens there it tries again at the interval; what
/// happens meanwhile is not told later.
class Pusher : public QObject
{
    Q_OBJECT
public:
    /// A `port` other than 0 is used in place of the announced one. `device` must outlive this.
    Pusher(const Device &device, quint16 port, int intervalMs, quint32 seed);

public slots:
    /// Leaves the previous address, unless it is the same and the connection stands. The address
    /// 0.0.0.0 or the port 0 ends the messages.
    void setTarget(const QHostAddress &address, quint16 port);
    /// Hangs up; resume() calls the same address again.
    void pause();
    void resume();
    /// Says it if there is a connection that takes it in.
    void say(const QString &line);

private slots:
    void greet();
    void tick();
    void discardInput();

private:
    void connectToTarget();

    Chatter m_chatter;
    QTcpSocket m_socket;
    QTimer m_timer;
    QHostAddress m_address;
    quint16 m_port = 0;
    quint16 m_fixedPort;
};

} // namespace sim
