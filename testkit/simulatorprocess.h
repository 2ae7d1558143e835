#pragma once

#include <QProcess>

/// A simulated terminal in a process of its own, on a free port. The destructor kills the process.
class SimulatorProcess
{
public:
    ~SimulatorProcess();

    /// Starts the simulator program in this program's folder. Returns false, with the reason on
    /// the standard error output, if it does not listen within 10 s.
    bool start();
    /// Lets the process end. Returns false, with the reason on the standard error output, if it
    /// does not end or returns an error.
    bool end();

    quint16 port() const { return listeningPort; }
    /// The port to which the terminal pushes its messages.
    quint16 messagePort() const { return pushPort; }

private:
    QProcess process;
    quint16 listeningPort = 0;
    quint16 pushPort = 0;
};
