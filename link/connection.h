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

/// A TCP connection to a terminal that carries one request at a time. It knows packets by their
/// heads only; what they mean is the commands' part.
class Connection
{
public:
    /// The socket becomes a child of `owner`. The host is borrowed and must outlive the connection.
    Connection(ClientHost *host, QObject *owner);

    QTcpSocket *socket() const { return tcpSocket; }
    bool isConnected() const;

    /// Connects; an existing connection is closed first. Returns false after five seconds, in which
    /// a name is looked up too.
    bool open(const QString &host, quint16 port);
    /// Makes sure that no late reply can be taken for that of the next request: see
    /// CmdClient::resynchronize().
    bool resynchronize(int settleTime);
    void distrustReply() { inStep = false; }

    /// A request in the send buffer, its command code already written.
    PacketWriter request(wire::Command command);
    /// Frames and sends the first `totalLength` bytes of the send buffer, after dropping what has
    /// arrived before. Returns the number of bytes written; any other than `totalLength` is a
    /// failure, which ends the connection.
    qint64 send(uint32_t totalLength);

    /// Waits for as many bytes, or as long a reply, as `wait` names, counted from now on.
    bool await(const Wait &wait);
    bool isWaiting() const { return waiting; }
    /// How long the last reply that came whole took, in microseconds; -1 before the first.
    qint64 lastReplyTime() const { return replyTime; }

    /// What has arrived since the wait began; valid until the next wait.
    ReplyView reply() const { return ReplyView(recvBuffer); }
    /// Takes over what the socket has ready to be read.
    void receive();

private:
    bool connectSocket();
    /// Whether anything arrives that no request has asked for.
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
