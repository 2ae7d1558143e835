#include "simulator/terminal.h"

#include <QNetworkProxy>
#include <QTcpSocket>

namespace sim {
namespace {

constexpr int RetryMs = 1000;    // when the port or a connection cannot be had at once
constexpr int MostConsoles = 32; // at the same time

} // namespace

Terminal::Terminal(const TerminalOptions &options, QObject *parent)
    : QObject(parent),
      m_log(options.log),
      m_rebootMs(options.rebootMs),
      m_device(options),
      m_faults(options.faults),
      m_pusher(m_device, options.pushPort, options.pushIntervalMs, options.seed)
{
    m_server.setProxy(QNetworkProxy::NoProxy);
    connect(&m_device, SIGNAL(happened(QString)), &m_pusher, SLOT(say(QString)));
    connect(&m_device, SIGNAL(debugAddressSet(QHostAddress, quint16)), &m_pusher,
            SLOT(setTarget(QHostAddress, quint16)));
    m_comeback.setSingleShot(true);
    connect(&m_comeback, SIGNAL(timeout()), this, SLOT(comeBack()));
    // Later, so that whoever asked for it gets the answer first.
    connect(&m_device, SIGNAL(rebootAsked()), this, SLOT(goDown()), Qt::QueuedConnection);
    // One at a time and later, so that the server asks for a connection only when there is one:
    // once it asked in vain, it keeps to that error and tells of no other.
    m_server.setMaxPendingConnections(1);
    connect(&m_server, SIGNAL(newConnection()), this, SLOT(acceptConnections()),
            Qt::QueuedConnection);
    m_acceptPause.setSingleShot(true);
    connect(&m_acceptPause, SIGNAL(timeout()), this, SLOT(resumeAccepting()));
    connect(&m_server, SIGNAL(acceptError(QAbstractSocket::SocketError)), this,
            SLOT(pauseAccepting()));
}

Terminal::~Terminal() = default;

bool Terminal::listen(const QHostAddress &address, quint16 port)
{
    if (!m_server.listen(address, port))
        return false;
    m_address = address;
    m_port = m_server.serverPort();
    return true;
}

bool Terminal::keepState(const QString &path, QString *error)
{
    m_store = std::make_unique<Store>(m_device, path);
    if (m_store->open(error))
        return true;
    m_store.reset();
    return false;
}

void Terminal::goDown()
{
    if (m_comeback.isActive())
        return;
    m_comeback.start(m_rebootMs);
    m_server.close();
    m_pusher.pause();
    for (Connection *connection : m_connections.findChildren<Connection *>())
        connection->close(); // once its answers are written
}

void Terminal::comeBack()
{
    for (QTcpSocket *socket : m_connections.findChildren<QTcpSocket *>())
        socket->abort();
    if (!m_server.listen(m_address, m_port)) {
        qWarning("Cannot listen again: %s", qPrintable(m_server.errorString()));
        m_comeback.start(RetryMs);
        return;
    }
    m_device.restart();
    m_pusher.resume();
}

void Terminal::acceptConnections()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        if (m_connections.children().size() >= MostConsoles) {
            socket->abort();
            socket->deleteLater();
            continue;
        }
        m_device.announce(QStringLiteral("console connected from ") +
                          socket->peerAddress().toString());
        new Connection(socket, m_device, m_faults, m_log, &m_connections);
    }
}

void Terminal::pauseAccepting()
{
    m_server.pauseAccepting();
    m_acceptPause.start(RetryMs);
}

void Terminal::resumeAccepting()
{
    if (m_server.isListening())
        m_server.resumeAccepting();
}

} // namespace sim
