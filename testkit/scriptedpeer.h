#pragma once

#include "testkit/bytes.h"

#include <QObject>
#include <QQueue>
#include <QTcpServer>
#include <QTimer>

class QTcpSocket;

/// A terminal that follows a script, in the thread of the client. Reports a request that is not in
/// the script, one that arrives before the last answer has been sent, and a script that is not
/// finished when the peer is destroyed.
class ScriptedPeer : public QObject
{
    Q_OBJECT

public:
    struct Exchange
    {
        QByteArray request;
        QList<QByteArray> pieces; ///< of the answer, each sent on its own; none: no answer
        bool closes = false;      ///< closes the connection after the last piece
        int delay = 0;            ///< ms before the first piece
    };

    ScriptedPeer();
    ~ScriptedPeer() override;

    quint16 port() const { return server.serverPort(); }
    int connectionCount() const { return connections; }
    bool isDone() const { return script.isEmpty() && arrived.isEmpty() && !sender.isActive(); }

    void expect(const Exchange &exchange) { script.enqueue(exchange); }
    /// Answers this request any number of times, whenever it is not the next one in the script.
    void serve(const QByteArray &request, const QByteArray &answer);
    /// Number of requests that serve() has answered.
    int servedCount() const { return served; }

    void send(const QByteArray &bytes);
    void closeConnection();

private slots:
    void takeConnection();
    void takeBytes();
    void sendPiece();

private:
    bool findExchange(Exchange *exchange);
    void fail(const QByteArray &expected);

    QTcpServer server;
    QTcpSocket *client = nullptr; ///< the newest connection, owned by the server
    int connections = 0;
    QByteArray arrived; ///< incomplete request
    QQueue<Exchange> script;
    QList<Exchange> standing; ///< the exchanges of serve()
    int served = 0;
    Exchange current; ///< its pieces are the ones still to be sent
    QTimer sender;
};

/// Returns a port of 127.0.0.1 on which nobody listens.
quint16 freePort();
