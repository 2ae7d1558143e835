#pragma once

#include "link/cmdclient.h"

#include <functional>
#include <vector>

/// Calls a command. `result` gets the bytes that it wrote; after a failure it shows whether an
/// output was changed.
using Call = std::function<bool(CmdClient &client, QByteArray *result)>;

/// A command with arguments, and its exchange when it succeeds.
struct CommandCase
{
    const char *name;
    Call call;
    QByteArray request;
    QByteArray reply;
    QByteArray result;
    bool silent; ///< a timeout is not logged
};

/// Every command once, in an order in which a terminal accepts each of them.
const std::vector<CommandCase> &commandCases();
const CommandCase &commandCase(const QByteArray &name);
