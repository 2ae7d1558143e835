#include "simulator/wire/connection.h"

#include "simulator/commands/command.h"
#include "simulator/faults/fault.h"

#include <QHostAddress>
#include <QTcpSocket>

namespace sim {

constexpr qint64 MaxPendingReplies = 4'000'000; // bytes that wait to be written

Connection::Connection(QTcpSocket *console, Device &simulated, FaultInjector &injector,
                       const Log &lines, QObject *parent)
    : QObject(parent),
      socket(console),
      device(simulated),
      faults(injector),
      log(lines),
      peer(QStringLiteral("%1:%2").arg(socket->peerAddress().toString()).arg(socket->peerPort())),
      outbox(socket)
{
    socket->setParent(this);
    socket->setReadBufferSize(wire::SendCapacity); // the longest request
    socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    connect(socket, SIGNAL(readyRead()), this, SLOT(readRequests()));
    connect(socket, SIGNAL(bytesWritten(qint64)), this, SLOT(readRequests()));
    connect(&outbox, SIGNAL(done()), this, SLOT(goOn()));
    connect(socket, SIGNAL(disconnected()), this, SLOT(deleteLater()));
}

void Connection::close()
{
    isClosing = true;
    if (outbox.isIdle())
        socket->disconnectFromHost();
}

void Connection::goOn()
{
    isClosing ? close() : readRequests();
}

void Connection::readRequests()
{
    Request request;
    Arrival arrival = Arrival::Whole;
    while (arrival == Arrival::Whole && isReady()) {
        arrival = takeRequest(*socket, &request);
        if (arrival == Arrival::Whole)
            answer(request);
    }
    if (arrival != Arrival::Broken)
        return;
    if (log)
        log(peer + " sent no request, connection closed");
    close();
}

bool Connection::isReady() const
{
    return !isClosing && !device.rebooting() && outbox.isIdle() &&
           socket->bytesToWrite() <= MaxPendingReplies;
}

void Connection::answer(const Request &request)
{
    const Command *command = findCommand(request.code);
    const QByteArray reply = answerTo(command, device, request.payload);
    const Delivery delivery = faults.deliver(request.code, reply);
    outbox.send(delivery);
    if (log)
        logAnswer(command, request, reply, delivery.faults);
}

void Connection::logAnswer(const Command *command, const Request &request, const QByteArray &reply,
                           const QStringList &faultNames) const
{
    const QString name = command ? QString::fromLatin1(command->name)
                                 : QString::asprintf("unknown 0x%02x", request.code);
    const bool isPlain = command && command->form == ReplyForm::Plain;
    const int status = static_cast<quint8>(reply.at(static_cast<int>(wire::StatusOffset)));
    log(QStringLiteral("%1 %2: request %3 bytes, %4reply %5 bytes%6")
            .arg(peer, name)
            .arg(static_cast<int>(wire::PayloadOffset) + request.payload.size())
            .arg(isPlain ? QString() : QStringLiteral("status %1, ").arg(status))
            .arg(reply.size())
            .arg(faultNames.isEmpty() ? QString() : ", but " + faultNames.join('+')));
}

} // namespace sim
