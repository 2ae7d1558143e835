#include "simulator/wire/pusher.h"

#include "simulator/state/device.h"
#include "simulator/state/documents.h"

#include <QNetworkProxy>

namespace sim {
namespace {

constexpr qint64 MaxPending = 16384; // bytes that a peer may leave unread before lines are dropped

QString recognition(const std::map<quint32, User> &users, QRandomGenerator &random)
{
    if (users.empty())
        return QStringLiteral("palm not recognised");
    const int index = random.bounded(static_cast<int>(users.size()));
    const User &user = std::next(users.begin(), index)->second;
    return QStringLiteral("user %1 %2 recognised, score %3")
        .arg(QString::number(user.id), user.name, QString::number(random.bounded(82, 100)));
}

} // namespace

QString greetingLine(const Device &device)
{
    return QStringLiteral("%1 %2 online, %3 users")
        .arg(deviceName(device.options()), device.state.serialNumber)
        .arg(device.state.users.size());
}

QString chatLine(const Device &device, QRandomGenerator &random)
{
    const QString lines[] = {
        QStringLiteral("palm seen at %1 mm").arg(device.palmHeight()),
        QStringLiteral("board temperature %1 °C").arg(38 + random.bounded(6.0), 0, 'f', 1),
        QStringLiteral("heartbeat, up %1 s").arg(device.uptimeSeconds()),
        recognition(device.state.users, random), // from here on a recognition is needed
        QStringLiteral("door relay closed for %1 ms").arg(random.bounded(2, 7) * 500),
    };
    return lines[random.bounded(recognises(device.mode()) ? 5 : 3)];
}

Pusher::Pusher(const Device &simulated, quint16 usedPort, int intervalMs, quint32 seed)
    : device(simulated),
      random(seed),
      fixedPort(usedPort)
{
    socket.setProxy(QNetworkProxy::NoProxy);
    timer.setInterval(intervalMs);
    connect(&timer, SIGNAL(timeout()), this, SLOT(tick()));
    connect(&socket, SIGNAL(connected()), this, SLOT(greet()));
    connect(&socket, SIGNAL(readyRead()), this, SLOT(discardInput()));
}

void Pusher::setTarget(const QHostAddress &announced, quint16 announcedPort)
{
    const quint16 used = fixedPort != 0 ? fixedPort : announcedPort;
    const bool isSame = announced == address && used == port;
    if (isSame && socket.state() == QAbstractSocket::ConnectedState)
        return;
    address = announced;
    port = used;
    resume();
}

void Pusher::pause()
{
    timer.stop();
    socket.disconnectFromHost();
}

void Pusher::resume()
{
    timer.stop();
    socket.abort();
    if (port == 0 || address == QHostAddress(QHostAddress::AnyIPv4))
        return;
    timer.start();
    socket.connectToHost(address, port);
}

void Pusher::greet()
{
    // When nobody listens on a port of the local range, the system may give the same port to this
    // connection, which is then connected to itself.
    if (socket.localPort() == socket.peerPort() && socket.localAddress() == socket.peerAddress())
        socket.abort();
    else
        say(greetingLine(device));
}

void Pusher::say(const QString &line)
{
    if (socket.state() == QAbstractSocket::ConnectedState && socket.bytesToWrite() <= MaxPending)
        socket.write(QStringLiteral("[simulated] %1\r\n").arg(line).toUtf8());
}

void Pusher::tick()
{
    if (socket.state() == QAbstractSocket::UnconnectedState)
        socket.connectToHost(address, port);
    else
        say(chatLine(device, random));
}

void Pusher::discardInput()
{
    socket.readAll();
}

} // namespace sim
