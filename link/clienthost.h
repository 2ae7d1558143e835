#pragma once

#include <functional>

class QString;

/// The program that a CmdClient runs in: it shows the client's lines, and it decides how to wait.
class ClientHost
{
public:
    virtual ~ClientHost() = default;

    /// Shows one line to the operator.
    virtual void say(const QString &line) = 0;
    /// Processes socket events until `complete` returns true or the timeout, in milliseconds, has
    /// passed. Returns whether it is complete. A timeout of 0 returns false at once.
    virtual bool wait(const std::function<bool()> &complete, int milliseconds) = 0;
};
