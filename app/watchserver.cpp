#include "app/watchserver.h"

#include "app/keepalive.h"
#include "link/textlog.h"

#include <QDebug>
#include <QNetworkInterface>
#include <QNetworkProxy>
#include <QTcpServer>
#include <QTcpSocket>

#include <algorithm>
#include <utility>

namespace {

constexpr int MaxPending = 1;
constexpr int MaxServed = 1;
// A flood is taken in such bites, each an entry that is shown as far as the log shows any.
constexpr qint64 MaxBatch = 1048576; // bytes
constexpr int NetworkOctets = 3;

void toOctets(quint32 address, quint8 out[4])
{
    for (int i = 0; i < 4; ++i)
        out[i] = static_cast<quint8>(address >> (8 * (3 - i)));
}

bool parseHost(const QString &host, quint8 out[4])
{
    const QStringList parts = host.split(QLatin1Char('.'));
    if (parts.size() != 4)
        return false;
    bool isNumber = true;
    for (int i = 0; i < 4 && isNumber; ++i)
        out[i] = static_cast<quint8>(parts[i].toUInt(&isNumber));
    return isNumber;
}

} // namespace

WatchServer::WatchServer(QTextEdit *watchText, QObject *parent)
    : QObject(parent),
      log(watchText),
      server(new QTcpServer(this))
{
    server->setProxy(QNetworkProxy::NoProxy); // a proxy of the system cannot listen
    server->setMaxPendingConnections(MaxPending);
    connect(server, SIGNAL(newConnection()), this, SLOT(newConnAct()));
}

void WatchServer::startListen(quint16 port)
{
    if (listening)
        return;
    server->listen(QHostAddress::AnyIPv4, port);
    listening = true;
}

void WatchServer::stopListen()
{
    if (!listening)
        return;
    // A socket may report its disconnect while it is told to go: the list is empty by then.
    const QList<QTcpSocket *> sockets = std::exchange(connections, {});
    for (QTcpSocket *socket : sockets)
        socket->disconnectFromHost();
    listening = false;
    server->close();
}

bool WatchServer::findLocalAddress(quint8 out[4], const QString &deviceHost)
{
    quint8 device[4];
    if (!parseHost(deviceHost, device))
        return false;
    const QList<QHostAddress> addresses = QNetworkInterface::allAddresses();
    for (const QHostAddress &address : addresses) {
        if (address.protocol() != QAbstractSocket::IPv4Protocol)
            continue;
        toOctets(address.toIPv4Address(), out);
        if (std::equal(out, out + NetworkOctets, device))
            return true;
    }
    return false;
}

void WatchServer::newConnAct()
{
    qDebug() << "new conn";
    while (server->hasPendingConnections()) {
        QTcpSocket *socket = server->nextPendingConnection();
        if (connectionCount < MaxServed) {
            accept(socket);
        } else {
            socket->close();
            socket->deleteLater();
        }
    }
}

void WatchServer::accept(QTcpSocket *socket)
{
    socket->setReadBufferSize(MaxBatch);
    keepAlive(socket);
    connections.append(socket);
    textlog::append(
        log, tr("Recieve connect: [%1:%2]")
                 .arg(socket->peerAddress().toString(), QString::number(socket->peerPort())));
    connect(socket, SIGNAL(readyRead()), this, SLOT(dataReadyAct()));
    connect(socket, SIGNAL(disconnected()), this, SLOT(disconnAct()));
    connect(socket, SIGNAL(disconnected()), socket, SLOT(deleteLater()));
    ++connectionCount;
}

void WatchServer::dataReadyAct()
{
    if (connections.isEmpty() || connections.first()->bytesAvailable() < 1)
        return;
    textlog::append(log, entry(connections.first()->readAll()));
}

QString WatchServer::entry(const QByteArray &batch)
{
    return tr("Data In:%1").arg(QString::fromUtf8(batch).trimmed());
}

void WatchServer::disconnAct()
{
    if (connectionCount <= 0)
        return;
    --connectionCount;
    if (!connections.isEmpty())
        connections.removeLast();
    textlog::append(log, tr("The connection is abandoned."));
}
