#include "link/cmdclient.h"

#include "link/busycursor.h"
#include "link/textlog.h"

#include <QBasicTimer>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDebug>
#include <QElapsedTimer>
#include <QNetworkProxy>
#include <QScopedValueRollback>
#include <QTcpSocket>
#include <QThread>

namespace {

constexpr int ConnectTimeout = 5000;    // ms
constexpr int DisconnectTimeout = 3000; // ms
constexpr unsigned long RoundPause = 1; // ms
constexpr int LastRounds = 10;
constexpr int DroppedAtOnce = 65536; // bytes
constexpr int MaxDrops = 256;        // a terminal that floods the socket does not hold the console
constexpr qint64 NanosecondsPerMicrosecond = 1000;

} // namespace

CmdClient::CmdClient(QTextEdit *log, QObject *parent)
    : QObject(parent),
      socket(new QTcpSocket(this)),
      infoText(log),
      sendBuffer(std::make_unique<uint8_t[]>(wire::SendCapacity))
{
    recvBuffer.reserve(wire::MaxUserListReply);
    // The terminal is on the local network, whatever proxy the system uses for others.
    socket->setProxy(QNetworkProxy::NoProxy);
    connect(socket, SIGNAL(connected()), this, SLOT(connected()));
    connect(socket, SIGNAL(disconnected()), this, SLOT(disconnected()));
    connect(socket, SIGNAL(bytesWritten(qint64)), this, SLOT(bytesWritten(qint64)));
    connect(socket, SIGNAL(readyRead()), this, SLOT(readyRead()));
}

CmdClient::~CmdClient()
{
    if (isConnected)
        socket->disconnectFromHost();
}

bool CmdClient::connectToDevice(const char *host, quint16 port)
{
    if (isConnected) {
        socket->disconnectFromHost();
        if (socket->state() != QAbstractSocket::UnconnectedState)
            socket->waitForDisconnected(DisconnectTimeout);
    }
    deviceHost = QString::fromLatin1(host);
    devicePort = port;
    isConnected = openConnection();
    log(isConnected ? tr("Device connected.") : tr("Connecting failed."));
    return isConnected;
}

bool CmdClient::openConnection()
{
    const QScopedValueRollback<bool> inside(waiting, true);
    BusyCursor cursor;
    cursor.show();
    // A socket that is still busy with its last connection would refuse a new one.
    socket->abort();
    // Unbuffered: a reply is copied once on its way, and a request leaves at once.
    socket->connectToHost(deviceHost, devicePort, QIODevice::ReadWrite | QIODevice::Unbuffered,
                          QAbstractSocket::AnyIPProtocol);
    // QAbstractSocket::waitForConnected() would block while a name is looked up, however long.
    const QDeadlineTimer deadline(ConnectTimeout);
    const auto pending = [this] {
        return !hasConnection() && socketState() != QAbstractSocket::UnconnectedState;
    };
    while (pending() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        QThread::msleep(RoundPause);
    }
    connectTimedOut = pending();
    if (!hasConnection()) {
        socket->abort();
        return false;
    }
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    inStep = true;
    return true;
}

bool CmdClient::resynchronize()
{
    if (inStep)
        return hasConnection();
    if (!hasConnection() && !connectTimedOut)
        return false;
    isConnected = openConnection();
    return isConnected || connectTimedOut;
}

bool CmdClient::disconnectFromDevice()
{
    if (isConnected)
        socket->disconnectFromHost();
    log(tr("The connection is abandoned."));
    isConnected = false;
    return true;
}

bool CmdClient::hasConnection() const
{
    return socketState() == QAbstractSocket::ConnectedState;
}

QAbstractSocket::SocketState CmdClient::socketState() const
{
    return socket->state();
}

int CmdClient::sendPacket(uint32_t totalLength)
{
    if (totalLength < wire::AckSize || totalLength > wire::SendCapacity)
        return 0;
    const auto following = static_cast<uint32_t>(totalLength - wire::HeadSize);
    sendBuffer[0] = wire::Magic0;
    sendBuffer[1] = wire::Magic1;
    sendBuffer[wire::LengthOffset] = static_cast<uint8_t>(following >> 16);
    sendBuffer[wire::LengthOffset + 1] = static_cast<uint8_t>(following >> 8);
    sendBuffer[wire::LengthOffset + 2] = static_cast<uint8_t>(following);

    dropArrived();
    const qint64 written =
        socket->write(reinterpret_cast<const char *>(sendBuffer.get()), totalLength);
    if (static_cast<uint32_t>(written) == totalLength)
        return 1;
    socket->abort(); // by itself it would count as connected for ever
    log(tr("Fail to send the data packet：%1").arg(written));
    return 0;
}

bool CmdClient::waitAck(int expectedLength, int rounds)
{
    return waitUntil([this, expectedLength] { return recvBuffer.size() >= expectedLength; },
                     rounds);
}

bool CmdClient::waitReply(int capLength, int rounds)
{
    return waitUntil(
        [this, capLength] {
            const size_t total = reply().declaredTotal();
            return (total > 0 && reply().received() >= total) || recvBuffer.size() >= capLength;
        },
        rounds);
}

void CmdClient::dropArrived()
{
    char dropped[DroppedAtOnce];
    for (int i = 0; i < MaxDrops && socket->bytesAvailable() > 0; ++i)
        socket->read(dropped, sizeof dropped);
}

bool CmdClient::waitUntil(const std::function<bool()> &complete, int rounds)
{
    const QScopedValueRollback<bool> inside(waiting, true);
    // As long as it runs, the ticks of a Windows system, and so its sleeps, last a millisecond.
    QBasicTimer precise;
    precise.start(1, Qt::PreciseTimer, this);
    QElapsedTimer clock;
    clock.start();
    BusyCursor cursor;
    recvBuffer.resize(0); // keeps its memory
    for (int round = 0; round < rounds; ++round) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        if (complete()) {
            qDebug().nospace() << "success data num: " << recvBuffer.size();
            return true;
        }
        cursor.showIfLong();
        // Sleeps that last too long add half of the time at most. After a long interruption the
        // reply still has a few rounds.
        if (clock.elapsed() - round <= rounds / 2 || round >= rounds - LastRounds)
            QThread::msleep(RoundPause); // usleep(1000) takes two ticks on Windows
    }
    qDebug().nospace() << "fail data num: " << recvBuffer.size();
    return false;
}

PacketWriter CmdClient::request(wire::Command command)
{
    PacketWriter packet(sendBuffer.get(), wire::SendCapacity);
    packet.u8(static_cast<uint8_t>(command));
    return packet;
}

bool CmdClient::exchange(const PacketWriter &packet, const Wait &wait)
{
    if (!packet.fits()) {
        log(tr("The data is too long for one packet."));
        return false;
    }
    if (!sendPacket(packet.size()))
        return false;
    inStep = false;
    QElapsedTimer clock;
    clock.start();
    const int bytes = static_cast<int>(wait.bytes);
    if (wait.kind == Wait::Ack ? waitAck(bytes, wait.rounds) : waitReply(bytes, wait.rounds)) {
        inStep = reply().received() == reply().declaredTotal();
        replyTime = clock.nsecsElapsed() / NanosecondsPerMicrosecond;
        return true;
    }
    if (!wait.silent)
        log(tr("Fail to accept ACK."));
    return false;
}

bool CmdClient::command(const PacketWriter &packet, const Wait &wait, const StatusText *texts)
{
    return exchange(packet, wait) && accepted(texts);
}

bool CmdClient::getText(wire::Command command, const Wait &wait, const StatusText *texts, char *out,
                        uint32_t *outLen, size_t capacity)
{
    return exchange(request(command), wait) &&
           acceptedData(texts, 1, reinterpret_cast<uint8_t *>(out), outLen, capacity);
}

bool CmdClient::accepted(const StatusText *texts)
{
    const quint8 status = reply().u8(wire::StatusOffset);
    return status == wire::StatusOk || refuse(texts, status);
}

bool CmdClient::acceptedData(const StatusText *texts, uint32_t skipped, uint8_t *out,
                             uint32_t *outLen, size_t capacity, size_t atLeast)
{
    const quint8 status = declaredStatus();
    const uint32_t declared = reply().declaredLength();
    if (status != wire::StatusOk || !reply().isWhole(skipped + atLeast) ||
        declared - skipped > capacity)
        return refuse(texts, status);
    *outLen = declared - skipped;
    return reply().copy(wire::HeadSize + skipped, *outLen, out);
}

bool CmdClient::acceptedBlock(const StatusText *texts, size_t length, uint8_t *out, size_t capacity)
{
    const quint8 status = declaredStatus();
    if (status != wire::StatusOk || reply().declaredLength() != 1 + length || length > capacity ||
        !reply().copy(wire::PayloadOffset, length, out))
        return refuse(texts, status);
    return true;
}

quint8 CmdClient::declaredStatus() const
{
    return reply().declaredLength() > 0 ? reply().u8(wire::StatusOffset) : wire::StatusOk;
}

bool CmdClient::refuse(const StatusText *texts, quint8 status)
{
    while (texts->status != status && texts->status != StatusText::AnyOther)
        ++texts;
    const QString text = tr(texts->text);
    switch (texts->form) {
    case StatusText::Plain:
        log(text);
        break;
    case StatusText::Decimal:
        log(text.arg(status));
        break;
    case StatusText::SignedDecimal:
        log(text.arg(static_cast<qint8>(status)));
        break;
    case StatusText::Character:
        log(text.arg(static_cast<char>(status)));
        break;
    }
    return false;
}

void CmdClient::log(const QString &line)
{
    textlog::append(infoText, line);
}

void CmdClient::connected() {}

void CmdClient::disconnected() {}

void CmdClient::bytesWritten(qint64 /*bytes*/) {}

void CmdClient::readyRead()
{
    qDebug().nospace() << "SDK: " << socket->bytesAvailable();
    // What arrives between two commands belongs to none; only its last batch is kept.
    if (!waiting)
        recvBuffer.resize(0);
    const int before = recvBuffer.size();
    // Where nothing is, an attempt to read tells the socket that the terminal has left.
    recvBuffer.resize(before + qMax(1, static_cast<int>(socket->bytesAvailable())));
    const qint64 count = socket->read(recvBuffer.data() + before, recvBuffer.size() - before);
    recvBuffer.resize(before + static_cast<int>(qMax<qint64>(count, 0)));
}
