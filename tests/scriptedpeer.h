#pragma once

#include "testkit/bytes.h"

#include <QList>
#include <QObject>
#include <QQueue>
#include <QTcpServer>
#include <QTimer>

class QTcpSocket;

/// The terminal's side of a conversation, played from a script in the thread of the test. What the
/// script does not foresee fails the running test: another request, one that comes before the last
/// one's answer is out, and a script that is not played to its end.
class ScriptedPeer : public QObject
{
    Q_OBJECT

public:
    struct Exchange
    {
        QByteArray request;
        QList<QByteArray> pieces; ///< of the answer, each sent on its own; none: silence
        bool closes = false;      ///< after the last piece
        int delay = 0;            ///< ms before the first piece
    };

    ScriptedPeer();
    ~ScriptedPeer() override;

    quint16 port() const { return server.serverPort(); }
    int connectionCount() const { return connections; }
    bool isDone() const { return script.isEmpty() && arrived.isEmpty() && !sender.isActive(); }

    void expect(const Exchange &exchange) { script.enqueue(exchange); }
    /// Answers this request as often as it comes without being the script's next.
    void serve(const QByteArray &request, const QByteArray &answer);
    /// How many requests serve() has answered.
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
    QByteArray arrived; ///< of a request that is not complete yet
    QQueue<Exchange> script;
    QList<Exchange> standing;
    int served = 0;
    Exchange current; ///< its pieces are those still to be sent
    QTimer sender;
};

/// A port of 127.0.0.1 that nobody listens on.
quint16 freePort();
