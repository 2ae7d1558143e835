#include "testkit/scriptedpeer.h"

#include "testkit/drive.h"

#include <QNetworkProxy>
#include <QTcpSocket>

quint16 freePort()
{
    QTcpServer server;
    server.setProxy(QNetworkProxy::NoProxy);
    server.listen(QHostAddress::LocalHost);
    return server.serverPort();
}

ScriptedPeer::ScriptedPeer()
{
    server.setProxy(QNetworkProxy::NoProxy);
    sender.setSingleShot(true);
    connect(&server, SIGNAL(newConnection()), this, SLOT(takeConnection()));
    connect(&sender, SIGNAL(timeout()), this, SLOT(sendPiece()));
    if (!server.listen(QHostAddress::LocalHost))
        drive::fail(QStringLiteral("The scripted peer cannot listen."));
}

ScriptedPeer::~ScriptedPeer()
{
    if (!script.isEmpty())
        fail(script.head().request);
}

void ScriptedPeer::serve(const QByteArray &request, const QByteArray &answer)
{
    standing.append({request, {answer}});
}

void ScriptedPeer::send(const QByteArray &bytes)
{
    client->write(bytes);
    client->flush();
}

void ScriptedPeer::closeConnection()
{
    client->disconnectFromHost();
}

void ScriptedPeer::takeConnection()
{
    if (client)
        client->disconnect(this);
    sender.stop();
    arrived.clear();
    client = server.nextPendingConnection();
    client->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    connect(client, SIGNAL(readyRead()), this, SLOT(takeBytes()));
    ++connections;
}

void ScriptedPeer::takeBytes()
{
    arrived += client->readAll();
    Exchange next;
    if (sender.isActive()) {
        fail("silence before the answer");
    } else if (!findExchange(&next)) {
        fail(script.isEmpty() ? QByteArray() : script.head().request);
    } else if (arrived == next.request) {
        arrived.clear();
        current = next;
        if (!script.isEmpty() && script.head().request == next.request)
            script.dequeue();
        else
            ++served;
        if (!current.pieces.isEmpty() || current.closes)
            sender.start(current.delay);
    }
}

/// Finds the exchange whose request begins with the bytes that have arrived so far.
bool ScriptedPeer::findExchange(Exchange *exchange)
{
    const QList<Exchange> candidates = script.mid(0, 1) + standing;
    for (const Exchange &candidate : candidates) {
        if (candidate.request.startsWith(arrived)) {
            *exchange = candidate;
            return true;
        }
    }
    return false;
}

void ScriptedPeer::fail(const QByteArray &expected)
{
    drive::fail(QString::fromLatin1("expected request: " + expected.toHex(' ') +
                                    "\n   arrived bytes:    " + arrived.toHex(' ')));
    arrived.clear();
}

void ScriptedPeer::sendPiece()
{
    if (!current.pieces.isEmpty())
        send(current.pieces.takeFirst());
    if (!current.pieces.isEmpty())
        sender.start(0);
    else if (current.closes)
        closeConnection();
}
