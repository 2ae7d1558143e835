#pragma once

#include "simulator/faults/faultinjector.h"
#include "simulator/state/device.h"
#include "simulator/state/store.h"
#include "simulator/wire/connection.h"
#include "simulator/wire/pusher.h"

#include <QTcpServer>
#include <QTimer>

#include <memory>

namespace sim {

struct TerminalOptions : DeviceOptions
{
    quint16 pushPort = 0;      ///< used in place of the announced port unless 0
    int pushIntervalMs = 5000; ///< 1 or more
    int rebootMs = 10000;      ///< time until it is there again, 0 or more
    FaultPlan faults;
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
    quint16 port() const { return m_port; }
    QString errorString() const { return m_server.errorString(); }

    /// Takes over the state that the file holds and keeps it there from now on; without a file, a
    /// new one is begun. False, with the reason, when that cannot be; the file stays as it is.
    bool keepState(const QString &path, QString *error);

    Device &device() { return m_device; }

    /// Takes the place of the plan so far, counting anew; a reply that is on its way stays as it
    /// is.
    void setFaults(const FaultPlan &plan) { m_faults.setPlan(plan); }

private slots:
    void acceptConnections();
    void pauseAccepting();
    void resumeAccepting();
    void goDown();
    void comeBack();

private:
    Log m_log;
    int m_rebootMs;
    Device m_device;
    FaultInjector m_faults;
    std::unique_ptr<Store> m_store;
    Pusher m_pusher;
    QTcpServer m_server;
    QHostAddress m_address;
    quint16 m_port = 0;
    QTimer m_acceptPause;  ///< runs while no console can be accepted
    QTimer m_comeback;     ///< runs during a reboot
    QObject m_connections; ///< parent of them all; goes before what they use
};

} // namespace sim
