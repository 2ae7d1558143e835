#pragma once

#include "simulator/wire/outbox.h"
#include "simulator/wire/packets.h"

#include <QObject>

#include <functional>

class QTcpSocket;

namespace sim {

class Device;
class FaultInjector;
struct Command;

using Log = std::function<void(const QString &line)>; ///< may be empty

/// One console's connection: answers its requests in their order and deletes itself when the
/// console has gone. Holds at most one unfinished request, and reads no further requests while
/// a reply takes its time or the console leaves too many of them unread.
class Connection : public QObject
{
    Q_OBJECT
public:
    /// Takes the socket over; `device` and `faults` must outlive the connection.
    Connection(QTcpSocket *socket, Device &device, FaultInjector &faults, Log log, QObject *parent);

    /// Reads no more requests and closes once the reply under way is out.
    void close();

private slots:
    void readRequests();
    void goOn();

private:
    bool roomForReplies() const;
    /// False when no whole request is there, or none will ever come.
    bool nextRequest(Request *request);
    void closeBroken();
    void answer(const Request &request);
    /// `reply` as it was before it suffered `faults`.
    void logAnswer(const Command *command, const Request &request, const QByteArray &reply,
                   const QStringList &faults) const;

    QTcpSocket *m_socket; ///< child
    Device &m_device;
    FaultInjector &m_faults;
    Log m_log;
    QString m_peer;
    RequestSplitter m_splitter;
    Outbox m_outbox;
    bool m_closing = false;
};

} // namespace sim
