#pragma once

#include <QProcess>

/// A simulated terminal in a process of its own, on a free port; it ends with this object.
class SimulatorProcess
{
public:
    ~SimulatorProcess();

    /// Starts the program that stands beside this one; messages are pushed to `pushPort`. False,
    /// with the reason on the standard error output, if it does not listen within seconds.
    bool start(quint16 pushPort);
    /// Lets it end by itself. False, with the reason there, if it does not, or not in good order.
    bool end();

    quint16 port() const { return listeningPort; }

private:
    QProcess process;
    quint16 listeningPort = 0;
};
