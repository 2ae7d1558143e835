#include "simulator/wire/connection.h"

#include "simulator/commands/commands.h"
#include "simulator/faults/faultinjector.h"
#include "simulator/state/device.h"

#include <QHostAddress>
#include <QTcpSocket>

#include <utility>

namespace sim {
namespace {

constexpr qint64 PieceSize = 65536;              // bytes read at once
constexpr qint64 MostPendingReplies = 4'000'000; // bytes that wait to be written

} // namespace

Connection::Connection(QTcpSocket *socket, Device &device, FaultInjector &faults, Log log,
                       QObject *parent)
    : QObject(parent),
      m_socket(socket),
      m_device(device),
      m_faults(faults),
      m_log(std::move(log)),
      m_peer(QStringLiteral("%1:%2").arg(socket->peerAddress().toString()).arg(socket->peerPort())),
      m_outbox(socket)
{
    m_socket->setParent(this);
    m_socket->setReadBufferSize(PieceSize);
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    connect(m_socket, SIGNAL(readyRead()), this, SLOT(readRequests()));
    connect(m_socket, SIGNAL(bytesWritten(qint64)), this, SLOT(readRequests()));
    connect(&m_outbox, SIGNAL(done()), this, SLOT(goOn()));
    connect(m_socket, SIGNAL(disconnected()), this, SLOT(deleteLater()));
}

void Connection::close()
{
    m_closing = true;
    if (m_outbox.idle())
        m_socket->disconnectFromHost();
}

void Connection::goOn()
{
    if (m_closing)
        close();
    else
        readRequests();
}

void Connection::readRequests()
{
    Request request;
    while (!m_device.rebooting() && roomForReplies() && nextRequest(&request))
        answer(request);
}

bool Connection::roomForReplies() const
{
    return m_outbox.idle() && m_socket->bytesToWrite() <= MostPendingReplies;
}

bool Connection::nextRequest(Request *request)
{
    while (!m_closing) {
        const RequestSplitter::Result result = m_splitter.next(request);
        if (result == RequestSplitter::Result::Request)
            return true;
        if (result == RequestSplitter::Result::Broken) {
            closeBroken();
            return false;
        }
        const QByteArray piece = m_socket->read(PieceSize);
        if (piece.isEmpty())
            return false;
        m_splitter.append(piece);
    }
    return false;
}

void Connection::closeBroken()
{
    if (m_log)
        m_log(m_peer + QStringLiteral(" sent no request, connection closed"));
    close();
}

void Connection::answer(const Request &request)
{
    const Command *command = findCommand(request.code);
    const QByteArray reply =
        command ? command->answer(m_device, request) : statusReply(Status::WrongParameter);
    const Delivery delivery = m_faults.deliver(request.code, reply);
    m_outbox.setRate(m_faults.bytesPerSecond());
    m_outbox.send(delivery);
    if (m_log)
        logAnswer(command, request, reply, delivery.faults);
}

void Connection::logAnswer(const Command *command, const Request &request, const QByteArray &reply,
                           const QStringList &faults) const
{
    const QString name =
        command ? QString::fromLatin1(command->name)
                : QStringLiteral("unknown 0x%1").arg(request.code, 2, 16, QLatin1Char('0'));
    const bool plain = command && command->form == ReplyForm::Plain;
    const int status = static_cast<quint8>(reply.at(static_cast<int>(wire::StatusOffset)));
    m_log(QStringLiteral("%1 %2: request %3 bytes, %4reply %5 bytes%6")
              .arg(m_peer, name)
              .arg(static_cast<int>(wire::PayloadOffset) + request.payload.size())
              .arg(plain ? QString() : QStringLiteral("status %1, ").arg(status))
              .arg(reply.size())
              .arg(faults.isEmpty() ? QString()
                                    : QStringLiteral(", but ") + faults.join(QLatin1Char('+'))));
}

} // namespace sim
