#pragma once

#include "link/clienthost.h"

class QTextEdit;

/// The window as the host of its client: lines go to its log, and during a wait the window is
/// painted, while input waits.
class WindowHost : public ClientHost
{
public:
    /// The log is borrowed.
    explicit WindowHost(QTextEdit *infoText)
        : log(infoText)
    {
    }

    void say(const QString &line) override;
    /// Waits in rounds of a millisecond.
    bool wait(const std::function<bool()> &complete, int rounds) override;

private:
    QTextEdit *log;
};
