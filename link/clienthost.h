#pragma once

#include <functional>

class QString;

/// What a CmdClient needs of the program that it runs in: a place for its lines, and a way to wait
/// that suits the program.
class ClientHost
{
public:
    virtual ~ClientHost() = default;

    /// Shows one line to the operator.
    virtual void say(const QString &line) = 0;
    /// Lets the client's socket work until `complete` returns true or the time, in milliseconds, is
    /// over. Returns whether it is complete. With no time it returns false at once.
    virtual bool wait(const std::function<bool()> &complete, int milliseconds) = 0;
};
