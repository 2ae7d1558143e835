#include "simulator/terminal.h"

#include <QNetworkProxy>
#include <QTcpSocket>

namespace sim {

Terminal::Terminal(const TerminalOptions &options, QObject *parent)
    : QObject(parent),
      m_log(options.log),
      m_device(options.seed),
      m_pusher(m_device, options.pushPort, options.pushIntervalMs, options.seed)
{
    m_server.setProxy(QNetworkProxy::NoProxy);
    connect(&m_device, SIGNAL(happened(QString)), &m_pusher, SLOT(say(QString)));
    connect(&m_device, SIGNAL(debugAddressSet(QHostAddress, quint16)), &m_pusher,
            SLOT(setTarget(QHostAddress, quint16)));
    connect(&m_server, SIGNAL(newConnection()), this, SLOT(acceptConnections()));
}

Terminal::~Terminal() = default;

bool Terminal::listen(const QHostAddress &address, quint16 port)
{
    return m_server.listen(address, port);
}

void Terminal::acceptConnections()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        m_device.announce(QStringLiteral("console connected from ") +
                          socket->peerAddress().toString());
        new Connection(socket, m_device, m_log, &m_connections);
    }
}

} // namespace sim
