#pragma once

#include "simulator/faults/fault.h"
#include "simulator/state/device.h"
#include "simulator/state/store.h"
#include "simulator/wire/connection.h"
#include "simulator/wire/pusher.h"

#include <QTcpServer>

namespace sim {

struct TerminalOptions : DeviceOptions
{
    quint16 pushPort = 0;      ///< replaces the announced port unless 0
    int pushIntervalMs = 5000; ///< 1 or more
    int rebootMs = 10000;      ///< time that a reboot takes, 0 or more
    bool oneClient = false;    ///< accepts a connection only when the last one has ended
    FaultPlan faults;
    Log log; ///< gets one line per command
};

/// A simulated terminal that answers on a TCP port. Everything happens in the event loop of the
/// thread that created it, and nothing there blocks.
class Terminal : public QObject
{
    Q_OBJECT
public:
    explicit Terminal(const TerminalOptions &options = {}, QObject *parent = nullptr);

    /// Port 0 picks a free one. Returns false, with errorString() set, when the port is not
    /// available. A terminal that listens already changes its port.
    bool listen(const QHostAddress &address, quint16 wantedPort);
    quint16 port() const { return listeningPort; }
    QString errorString() const { return server.errorString(); }

    /// Reads the state from the file and keeps it there from now on; creates the file when there is
    /// none. Returns false, with the reason, when that fails; the file is unchanged then.
    bool keepState(const QString &path, QString *error);

    Device &device() { return simulated; }

    /// Replaces the plan and counts anew; a reply that is under way stays as it is.
    void setFaults(const FaultPlan &plan) { faults.setPlan(plan); }

private slots:
    void acceptConnections();
    void pauseAccepting();
    void resumeAccepting();
    void goDown();
    void comeBack();

private:
    TerminalOptions settings;
    Device simulated;
    FaultInjector faults;
    std::unique_ptr<Store> store;
    Pusher pusher;
    QTcpServer server;
    QHostAddress listeningAddress;
    quint16 listeningPort = 0;
    QObject connections; ///< their parent; destroyed before what they use
};

} // namespace sim
