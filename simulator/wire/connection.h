#pragma once

#include "simulator/wire/outbox.h"
#include "simulator/wire/packets.h"

#include <functional>

class QTcpSocket;

namespace sim {

class Device;
class FaultInjector;
struct Command;

using Log = std::function<void(const QString &line)>; ///< may be empty

/// One console's connection. Answers its requests in their order, and deletes itself when the
/// console has gone. Holds at most one unfinished request, and reads no further requests while a
/// reply takes its time or the console leaves too many replies unread.
class Connection : public QObject
{
    Q_OBJECT
public:
    /// Takes the socket over; the terminal's device and faults must outlive the connection.
    Connection(QTcpSocket *console, Device &simulated, FaultInjector &injector, const Log &lines,
               QObject *parent);

    /// Reads no more requests and closes once the reply under way is sent.
    void close();

private slots:
    void readRequests();
    void goOn();

private:
    bool isReady() const;
    void answer(const Request &request);
    /// `reply` is the one before the faults struck it.
    void logAnswer(const Command *command, const Request &request, const QByteArray &reply,
                   const QStringList &faultNames) const;

    QTcpSocket *socket; ///< child
    Device &device;
    FaultInjector &faults;
    Log log;
    QString peer;
    Outbox outbox;
    bool isClosing = false;
};

} // namespace sim
