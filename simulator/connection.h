#pragma once

#include "simulator/packets.h"

#include <QObject>

#include <functional>

class QTcpSocket;

namespace sim {

class Device;
struct Command;

using Log = std::function<void(const QString &line)>; ///< may be empty

/// One console's connection: answers its requests in their order and deletes itself when the
/// console has gone. Holds at most one unfinished request, and reads no further requests while
/// the console leaves too many replies unread.
class Connection : public QObject
{
    Q_OBJECT
public:
    /// Takes the socket over; `device` must outlive the connection.
    Connection(QTcpSocket *socket, Device &device, Log log, QObject *parent);

private slots:
    void readRequests();

private:
    bool roomForReplies() const;
    /// False when no whole request is there, or none will ever come.
    bool nextRequest(Request *request);
    void closeBroken();
    void answer(const Request &request);
    void logAnswer(const Command *command, const Request &request, const QByteArray &reply) const;

    QTcpSocket *m_socket; ///< child
    Device &m_device;
    Log m_log;
    QString m_peer;
    RequestSplitter m_splitter;
    bool m_broken = false;
};

} // namespace sim
