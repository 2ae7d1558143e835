#include "testkit/replayclient.h"

#include "link/clienthost.h"
#include "widgets/textlog.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QNetworkProxy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTextEdit>

namespace {

constexpr int SmallReply = 16384; // bytes
constexpr int PieceTimeout = 100; // ms; longer than a delayed acknowledgement

} // namespace

/// The client's host, and the peer that it is connected to.
class ReplayClient::Host : public ClientHost
{
public:
    explicit Host(QTextEdit *infoText)
        : log(infoText)
    {
        server.setProxy(QNetworkProxy::NoProxy);
        if (!server.listen(QHostAddress::LocalHost))
            qFatal("The peer of a replaying client cannot listen.");
    }

    void say(const QString &line) override { textlog::append(log, line); }

    bool wait(const std::function<bool()> &complete, int milliseconds) override
    {
        return peer ? answer(complete) : connectPeer(complete, milliseconds);
    }

    QTcpServer server;
    const QTcpSocket *socket = nullptr; ///< of the client
    QByteArray reply;
    QByteArray request;

    QTextEdit *const log;

private:
    bool connectPeer(const std::function<bool()> &complete, int milliseconds)
    {
        const QDeadlineTimer deadline(milliseconds);
        while (!(complete() && server.hasPendingConnections()) && !deadline.hasExpired())
            QCoreApplication::processEvents();
        peer = server.nextPendingConnection();
        return complete();
    }

    bool answer(const std::function<bool()> &complete)
    {
        peer->waitForReadyRead(0);
        request = peer->readAll();
        peer->write(reply);
        // A small reply arrives at once, a large one in pieces with pauses between them.
        const int timeout = reply.size() > SmallReply ? PieceTimeout : 0;
        QDeadlineTimer deadline(timeout);
        do {
            peer->flush();
            if (socket->bytesAvailable() > 0)
                deadline.setRemainingTime(timeout);
            QCoreApplication::processEvents();
        } while (!complete() && (peer->bytesToWrite() > 0 || !deadline.hasExpired()));
        return complete();
    }

    QTcpSocket *peer = nullptr; ///< owned by the server
};

ReplayClient::ReplayClient(QTextEdit *log)
    : ReplayClient(new Host(log))
{
}

ReplayClient::ReplayClient(Host *newHost)
    : CmdClient(std::unique_ptr<ClientHost>(newHost), nullptr),
      host(newHost)
{
    host->socket = findChild<QTcpSocket *>();
    connectToDevice("127.0.0.1", host->server.serverPort());
    host->log->clear();
}

void ReplayClient::setReply(const QByteArray &bytes)
{
    host->reply = bytes;
}

QByteArray ReplayClient::lastRequest() const
{
    return host->request;
}
