#pragma once

#include "simulator/connection.h"
#include "simulator/device.h"
#include "simulator/pusher.h"

#include <QTcpServer>

namespace sim {

struct TerminalOptions
{
    quint16 pushPort = 0;      ///< used in place of the announced port unless 0
    int pushIntervalMs = 5000; ///< 1 or more
    quint32 seed = 1;
    Log log; ///< gets one line per command
};

/// A simulated terminal that answers on a TCP port. Everything happens in the event loop of the
/// thread that made it, and nothing there waits.
class Terminal : public QObject
{
    Q_OBJECT
public:
    explicit Terminal(const TerminalOptions &options = {}, QObject *parent = nullptr);
    /// Closes all connections.
    ~Terminal() override;

    /// Port 0 picks a free one. False, with errorString() set, when it cannot be had.
    bool listen(const QHostAddress &address, quint16 port);
    quint16 port() const { return m_server.serverPort(); }
    QString errorString() const { return m_server.errorString(); }

    Device &device() { return m_device; }

private slots:
    void acceptConnections();

private:
    Log m_log;
    Device m_device;
    Pusher m_pusher;
    QTcpServer m_server;
    QObject m_connections; ///< parent of them all; goes before what they use
};

} // namespace sim
