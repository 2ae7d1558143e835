#include "app/watchserver.h"

#include "app/keepalive.h"
#include "widgets/textlog.h"

#include <QDebug>
#include <QElapsedTimer>
#include <QNetworkInterface>
#include <QNetworkProxy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTextCodec>

#include <algorithm>
#include <utility>

namespace {

constexpr int MaxPending = 1;
constexpr int MaxServed = 1;
// The largest number of bytes per read, which fits one log entry. The system's receive buffer holds
// about as many; TCP flow control makes the peer keep the rest.
constexpr int MaxBatch = 61440;
// The pause after each entry, as a multiple of the time that appending the entry took. Painting it
// takes at most the same time again.
constexpr qint64 PauseFactor = 3;
constexpr qint64 Millisecond = 1000000; // ns
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

/// Returns the number of bytes at the end that are an incomplete character.
int incompleteBytes(const QByteArray &text)
{
    QTextCodec::ConverterState state;
    QTextCodec::codecForName("UTF-8")->toUnicode(text.constData(), text.size(), &state);
    return state.remainingChars;
}

} // namespace

WatchServer::WatchServer(QTextEdit *watchText, QObject *parent)
    : QObject(parent),
      log(watchText),
      server(new QTcpServer(this))
{
    server->setProxy(QNetworkProxy::NoProxy); // a system proxy cannot listen
    server->setMaxPendingConnections(MaxPending);
    connect(server, SIGNAL(newConnection()), this, SLOT(newConnAct()));
    pause.setSingleShot(true);
    connect(&pause, SIGNAL(timeout()), this, SLOT(dataReadyAct()));
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
    showRest();
    // disconnectFromHost() may emit disconnected() at once; the list must be empty by then.
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
    socket->setSocketOption(QAbstractSocket::ReceiveBufferSizeSocketOption, MaxBatch);
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
    if (pause.isActive() || connections.isEmpty() || connections.first()->bytesAvailable() < 1)
        return;
    const QByteArray arrived = connections.first()->readAll();
    const QByteArray batch = split + arrived;
    split = batch.right(arrived.size() == MaxBatch ? incompleteBytes(batch) : 0);
    show(batch.chopped(split.size()));
}

void WatchServer::showRest()
{
    if (!connections.isEmpty())
        show(std::exchange(split, {}) + connections.first()->readAll());
}

void WatchServer::show(const QByteArray &batch)
{
    if (batch.isEmpty())
        return;
    QElapsedTimer clock;
    clock.start();
    textlog::append(log, entry(batch));
    pause.start(static_cast<int>(PauseFactor * clock.nsecsElapsed() / Millisecond) + 1);
}

QString WatchServer::entry(const QByteArray &batch)
{
    return tr("Data In:%1").arg(QString::fromUtf8(batch).trimmed());
}

void WatchServer::disconnAct()
{
    if (connectionCount <= 0)
        return;
    showRest();
    --connectionCount;
    if (!connections.isEmpty())
        connections.removeLast();
    textlog::append(log, tr("The connection is abandoned."));
}
