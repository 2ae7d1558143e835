#include "simulator/wire/pusher.h"

#include <QNetworkProxy>

namespace sim {
namespace {

constexpr qint64 MostPending = 16384; // bytes that a peer may leave unread before it gets less

} // namespace

Pusher::Pusher(const Device &device, quint16 port, int intervalMs, quint32 seed)
    : m_chatter(device, seed),
      m_fixedPort(port)
{
    m_socket.setProxy(QNetworkProxy::NoProxy);
    m_timer.setInterval(intervalMs);
    connect(&m_timer, SIGNAL(timeout()), this, SLOT(tick()));
    connect(&m_socket, SIGNAL(connected()), this, SLOT(greet()));
    connect(&m_socket, SIGNAL(readyRead()), this, SLOT(discardInput()));
}

void Pusher::setTarget(const QHostAddress &address, quint16 port)
{
    const quint16 used = m_fixedPort != 0 ? m_fixedPort : port;
    const bool same = address == m_address && used == m_port;
    if (same && m_socket.state() == QAbstractSocket::ConnectedState)
        return;
    m_address = address;
    m_port = used;
    resume();
}

void Pusher::pause()
{
    m_timer.stop();
    m_socket.disconnectFromHost();
}

void Pusher::resume()
{
    m_timer.stop();
    m_socket.abort();
    if (m_port == 0 || m_address == QHostAddress(QHostAddress::AnyIPv4))
        return;
    m_timer.start();
    connectToTarget();
}

void Pusher::connectToTarget()
{
    m_socket.connectToHost(m_address, m_port);
}

void Pusher::greet()
{
    // With no listener on it, a port of the local range can be given to this very connection,
    // which then meets itself.
    if (m_socket.localPort() == m_socket.peerPort() &&
        m_socket.localAddress() == m_socket.peerAddress())
        m_socket.abort();
    else
        say(m_chatter.greeting());
}

void Pusher::say(const QString &line)
{
    if (m_socket.state() != QAbstractSocket::ConnectedState ||
        m_socket.bytesToWrite() > MostPending)
        return;
    m_socket.write(QStringLiteral("[simulated] %1\r\n").arg(line).toUtf8());
}

void Pusher::tick()
{
    if (m_socket.state() == QAbstractSocket::UnconnectedState)
        connectToTarget();
    else
        say(m_chatter.nextLine());
}

void Pusher::discardInput()
{
    m_socket.readAll();
}

} // namespace sim
