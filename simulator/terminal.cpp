#include "simulator/terminal.h"

#include <QNetworkProxy>
#include <QTcpSocket>

namespace sim {

constexpr int RetryDelay = 1000; // ms, when the port or a connection is not available at once
constexpr int MaxConsoles = 32;  // at the same time

Terminal::Terminal(const TerminalOptions &options, QObject *parent)
    : QObject(parent),
      settings(options),
      simulated(options),
      faults(options.faults),
      pusher(simulated, options.pushPort, options.pushIntervalMs, seedOf(options))
{
    server.setProxy(QNetworkProxy::NoProxy);
    connect(&simulated, SIGNAL(happened(QString)), &pusher, SLOT(say(QString)));
    connect(&simulated, SIGNAL(debugAddressSet(QHostAddress, quint16)), &pusher,
            SLOT(setTarget(QHostAddress, quint16)));
    // Queued, so that the console that asked for the reboot gets its reply first.
    connect(&simulated, SIGNAL(rebootAsked()), this, SLOT(goDown()), Qt::QueuedConnection);
    // One at a time and queued, so that the server asks for a connection only when there is one:
    // after it has asked in vain, it keeps that error and reports no other.
    server.setMaxPendingConnections(1);
    connect(&server, SIGNAL(newConnection()), this, SLOT(acceptConnections()),
            Qt::QueuedConnection);
    connect(&server, SIGNAL(acceptError(QAbstractSocket::SocketError)), this,
            SLOT(pauseAccepting()));
}

bool Terminal::listen(const QHostAddress &address, quint16 wantedPort)
{
    server.close();
    if (!server.listen(address, wantedPort))
        return false;
    listeningAddress = address;
    listeningPort = server.serverPort();
    return true;
}

bool Terminal::keepState(const QString &path, QString *error)
{
    store = std::make_unique<Store>(simulated, path);
    if (store->open(error))
        return true;
    store.reset();
    return false;
}

void Terminal::goDown()
{
    QTimer::singleShot(settings.rebootMs, this, SLOT(comeBack()));
    server.close();
    pusher.pause();
    for (Connection *connection : connections.findChildren<Connection *>())
        connection->close(); // after its replies
}

void Terminal::comeBack()
{
    for (QTcpSocket *socket : connections.findChildren<QTcpSocket *>())
        socket->abort();
    if (!server.listen(listeningAddress, listeningPort)) {
        qWarning("Cannot listen again: %s", qPrintable(server.errorString()));
        QTimer::singleShot(RetryDelay, this, SLOT(comeBack()));
        return;
    }
    simulated.restart();
    pusher.resume();
}

void Terminal::acceptConnections()
{
    while (QTcpSocket *socket = server.nextPendingConnection()) {
        if (connections.children().size() >= MaxConsoles) {
            socket->abort();
            socket->deleteLater();
            continue;
        }
        simulated.announce("console connected from " + socket->peerAddress().toString());
        auto *connection = new Connection(socket, simulated, faults, settings.log, &connections);
        if (!settings.oneClient)
            continue;
        server.pauseAccepting(); // the next one waits in the system's backlog
        connect(connection, SIGNAL(destroyed()), this, SLOT(resumeAccepting()),
                Qt::QueuedConnection);
    }
}

void Terminal::pauseAccepting()
{
    server.pauseAccepting();
    QTimer::singleShot(RetryDelay, this, SLOT(resumeAccepting()));
}

void Terminal::resumeAccepting()
{
    if (server.isListening() && (!settings.oneClient || connections.children().isEmpty()))
        server.resumeAccepting();
}

} // namespace sim
