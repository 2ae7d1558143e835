#include "tools/exchanges/recorder.h"

#include <QNetworkProxy>
#include <QTcpSocket>

#include <utility>

namespace {

void pass(QTcpSocket *from, QTcpSocket *to, QByteArray *kept)
{
    const QByteArray bytes = from->readAll();
    kept->append(bytes);
    to->write(bytes);
}

} // namespace

Recorder::Recorder(quint16 serverPort)
    : target(serverPort),
      server(new QTcpSocket(this))
{
    listener.setProxy(QNetworkProxy::NoProxy);
    server->setProxy(QNetworkProxy::NoProxy);
    connect(&listener, SIGNAL(newConnection()), this, SLOT(takeConnection()));
    connect(server, SIGNAL(readyRead()), this, SLOT(passReply()));
    listener.listen(QHostAddress::LocalHost);
}

QByteArray Recorder::takeRequest()
{
    return std::exchange(request, {});
}

QByteArray Recorder::takeReply()
{
    return std::exchange(reply, {});
}

void Recorder::takeConnection()
{
    client = listener.nextPendingConnection();
    connect(client, SIGNAL(readyRead()), this, SLOT(passRequest()));
    server->connectToHost(QHostAddress(QHostAddress::LocalHost), target);
}

void Recorder::passRequest()
{
    pass(client, server, &request);
}

void Recorder::passReply()
{
    pass(server, client, &reply);
}
