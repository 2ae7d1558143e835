#include "link/cmdclient.h"

#include "link/clienthost.h"

#include <QTcpSocket>

CmdClient::CmdClient(std::unique_ptr<ClientHost> clientHost, QObject *parent)
    : QObject(parent),
      host(std::move(clientHost)),
      connection(host.get(), this)
{
    const QTcpSocket *socket = connection.socket();
    connect(socket, SIGNAL(connected()), this, SLOT(connected()));
    connect(socket, SIGNAL(disconnected()), this, SLOT(disconnected()));
    connect(socket, SIGNAL(bytesWritten(qint64)), this, SLOT(bytesWritten(qint64)));
    connect(socket, SIGNAL(readyRead()), this, SLOT(readyRead()));
}

CmdClient::~CmdClient()
{
    if (isConnected)
        connection.socket()->disconnectFromHost();
}

bool CmdClient::connectToDevice(const char *deviceHost, quint16 port)
{
    isConnected = connection.open(QString::fromLatin1(deviceHost), port);
    log(isConnected ? tr("Device connected.") : tr("Connecting failed."));
    return isConnected;
}

bool CmdClient::disconnectFromDevice()
{
    if (isConnected)
        connection.socket()->disconnectFromHost();
    log(tr("The connection is abandoned."));
    isConnected = false;
    return true;
}

bool CmdClient::resynchronize(int settleTime)
{
    return connection.resynchronize(settleTime);
}

QAbstractSocket::SocketState CmdClient::socketState() const
{
    return connection.socket()->state();
}

int CmdClient::sendPacket(uint32_t totalLength)
{
    if (totalLength < wire::AckSize || totalLength > wire::SendCapacity)
        return 0;
    const qint64 written = connection.send(totalLength);
    if (written == totalLength)
        return 1;
    log(tr("Fail to send the data packet：%1").arg(written));
    return 0;
}

bool CmdClient::waitAck(int expectedLength, int rounds)
{
    return connection.await({Wait::Ack, static_cast<size_t>(expectedLength), false, rounds});
}

bool CmdClient::waitReply(int capLength, int rounds)
{
    return connection.await({Wait::Reply, static_cast<size_t>(capLength), false, rounds});
}

bool CmdClient::exchange(const PacketWriter &packet, const Wait &wait)
{
    if (!packet.fits()) {
        log(tr("The data is too long for one packet."));
        return false;
    }
    if (!sendPacket(packet.size()))
        return false;
    const bool complete = connection.await(wait);
    if (!complete && !wait.silent)
        log(tr("Fail to accept ACK."));
    return complete;
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
    host->say(line);
}

void CmdClient::connected() {}

void CmdClient::disconnected() {}

void CmdClient::bytesWritten(qint64 /*bytes*/) {}

void CmdClient::readyRead()
{
    connection.receive();
}
