#pragma once

#include "link/clienthost.h"

class QTextEdit;

/// The window as the host of its client: lines are appended to its log. During a wait the window is
/// painted, and input is delayed.
class WindowHost : public ClientHost
{
public:
    /// The log is borrowed.
    explicit WindowHost(QTextEdit *infoText)
        : log(infoText)
    {
    }

    void say(const QString &line) override;
    /// Each round takes about a millisecond.
    bool wait(const std::function<bool()> &complete, int rounds) override;

private:
    QTextEdit *log;
};
