#include "link/connection.h"

#include "link/clienthost.h"

#include <QDeadlineTimer>
#include <QDebug>
#include <QElapsedTimer>
#include <QNetworkProxy>
#include <QScopedValueRollback>
#include <QTcpSocket>

namespace {

constexpr int ConnectTimeout = 5000;    // ms
constexpr int DisconnectTimeout = 3000; // ms
constexpr int DroppedAtOnce = 65536;    // bytes
constexpr int MaxDrops = 256; // so that a terminal that floods the socket cannot hold the console
constexpr qint64 NanosecondsPerMicrosecond = 1000;

} // namespace

Connection::Connection(ClientHost *clientHost, QObject *owner)
    : host(clientHost),
      tcpSocket(new QTcpSocket(owner)),
      sendBuffer(std::make_unique<uint8_t[]>(wire::SendCapacity))
{
    recvBuffer.reserve(wire::MaxUserListReply);
    // The terminal is on the local network, whatever proxy the system uses for others.
    tcpSocket->setProxy(QNetworkProxy::NoProxy);
}

bool Connection::isConnected() const
{
    return tcpSocket->state() == QAbstractSocket::ConnectedState;
}

bool Connection::open(const QString &newHost, quint16 newPort)
{
    if (isConnected()) {
        tcpSocket->disconnectFromHost();
        if (tcpSocket->state() != QAbstractSocket::UnconnectedState)
            tcpSocket->waitForDisconnected(DisconnectTimeout);
    }
    deviceHost = newHost;
    devicePort = newPort;
    return connectSocket();
}

bool Connection::connectSocket()
{
    const QScopedValueRollback<bool> inside(waiting, true);
    // A socket that is still closing its last connection would refuse a new one.
    tcpSocket->abort();
    // Unbuffered, so that a reply is copied only once and a request leaves at once.
    tcpSocket->connectToHost(deviceHost, devicePort, QIODevice::ReadWrite | QIODevice::Unbuffered,
                             QAbstractSocket::AnyIPProtocol);
    // QAbstractSocket::waitForConnected() would block while a name is looked up, however long.
    const QDeadlineTimer deadline(ConnectTimeout);
    const auto isSettled = [this] {
        return isConnected() || tcpSocket->state() == QAbstractSocket::UnconnectedState;
    };
    host->wait([&] { return isSettled() || deadline.hasExpired(); }, ConnectTimeout);
    connectTimedOut = !isSettled();
    if (!isConnected()) {
        tcpSocket->abort();
        return false;
    }
    tcpSocket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    inStep = true;
    return true;
}

bool Connection::resynchronize(int settleTime)
{
    if (inStep && hasMoreWithin(settleTime))
        inStep = false;
    if (inStep)
        return isConnected();
    if (!isConnected() && !connectTimedOut)
        return false;
    return connectSocket() || connectTimedOut;
}

bool Connection::hasMoreWithin(int milliseconds)
{
    if (tcpSocket->bytesAvailable() > 0)
        return true;
    const QScopedValueRollback<bool> inside(waiting, true);
    recvBuffer.resize(0);
    return host->wait([this] { return !recvBuffer.isEmpty(); }, milliseconds);
}

PacketWriter Connection::request(wire::Command command)
{
    PacketWriter packet(sendBuffer.get(), wire::SendCapacity);
    packet.u8(static_cast<uint8_t>(command));
    return packet;
}

qint64 Connection::send(uint32_t totalLength)
{
    writeHead(sendBuffer.get(), totalLength);
    dropArrived();
    const qint64 written =
        tcpSocket->write(reinterpret_cast<const char *>(sendBuffer.get()), totalLength);
    if (written != totalLength)
        tcpSocket->abort(); // an unbuffered socket stays "connected" after a failed write
    return written;
}

void Connection::dropArrived()
{
    char dropped[DroppedAtOnce];
    for (int i = 0; i < MaxDrops && tcpSocket->bytesAvailable() > 0; ++i)
        tcpSocket->read(dropped, sizeof dropped);
}

bool Connection::await(const Wait &wait)
{
    const QScopedValueRollback<bool> inside(waiting, true);
    QElapsedTimer clock;
    clock.start();
    recvBuffer.resize(0); // keeps its memory
    const bool complete = host->wait([&] { return isComplete(wait); }, wait.rounds);
    qDebug().nospace() << (complete ? "success data num: " : "fail data num: ")
                       << recvBuffer.size();
    if (complete)
        replyTime = clock.nsecsElapsed() / NanosecondsPerMicrosecond;
    inStep = inStep && complete && reply().received() == reply().declaredTotal();
    return complete;
}

bool Connection::isComplete(const Wait &wait) const
{
    const size_t total = reply().declaredTotal();
    const bool byHead = wait.kind == Wait::Reply && total > 0 && reply().received() >= total;
    return byHead || reply().received() >= wait.bytes;
}

void Connection::receive()
{
    qDebug().nospace() << "SDK: " << tcpSocket->bytesAvailable();
    // Bytes that arrive between two commands belong to none.
    if (!waiting)
        recvBuffer.resize(0);
    const int before = recvBuffer.size();
    // If there are no bytes, reading lets the socket notice that the terminal has disconnected.
    recvBuffer.resize(before + qMax(1, static_cast<int>(tcpSocket->bytesAvailable())));
    const qint64 count = tcpSocket->read(recvBuffer.data() + before, recvBuffer.size() - before);
    recvBuffer.resize(before + static_cast<int>(qMax<qint64>(count, 0)));
}
