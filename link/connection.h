#pragma once

#include "link/exchange.h"
#include "link/packet.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <memory>

class ClientHost;
class QObject;
class QTcpSocket;

/// A TCP connection to a terminal that carries one request at a time. It reads only the heads of
/// packets; the commands read the rest.
class Connection
{
public:
    /// The socket becomes a child of `owner`. The host is borrowed and must outlive the connection.
    Connection(ClientHost *host, QObject *owner);

    QTcpSocket *socket() const { return tcpSocket; }
    bool isConnected() const;

    /// Closes an existing connection and connects. Returns false after five seconds, including the
    /// lookup of a host name.
    bool open(const QString &host, quint16 port);
    /// See CmdClient::resynchronize() and distrustReply().
    bool resynchronize(int settleTime);
    void distrustReply() { inStep = false; }

    /// Begins a request in the send buffer with its command code.
    PacketWriter request(wire::Command command);
    /// Drops what has arrived, writes the head and sends the first `totalLength` bytes of the send
    /// buffer. Returns the number of bytes written, or -1. Anything but `totalLength` is a failure,
    /// and the connection is closed.
    qint64 send(uint32_t totalLength);

    /// Clears the receive buffer and waits for the number of bytes, or the reply, that `wait`
    /// describes.
    bool await(const Wait &wait);
    bool isWaiting() const { return waiting; }
    /// Time that the last complete reply took, in microseconds; -1 before the first.
    qint64 lastReplyTime() const { return replyTime; }

    /// The bytes that have arrived since the wait began; valid until the next wait.
    ReplyView reply() const { return ReplyView(recvBuffer); }
    /// Reads what the socket has.
    void receive();

private:
    bool connectSocket();
    /// Returns whether bytes arrive that no request has asked for.
    bool hasMoreWithin(int milliseconds);
    void dropArrived();
    bool isComplete(const Wait &wait) const;

    ClientHost *host;
    QTcpSocket *tcpSocket;
    std::unique_ptr<uint8_t[]> sendBuffer;
    QByteArray recvBuffer;
    QString deviceHost; ///< host and port of the last connection
    quint16 devicePort = 0;
    bool connectTimedOut = false; ///< the terminal did not answer the last attempt to connect
    bool inStep = true; ///< every request on this connection got one whole reply and no more
    bool waiting = false;
    qint64 replyTime = -1;
};
