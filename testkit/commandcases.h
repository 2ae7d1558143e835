#pragma once

#include "link/cmdclient.h"

#include <functional>
#include <vector>

/// Calls a command; on success `result` gets the bytes that it put out, on failure what shows that
/// an output was touched.
using Call = std::function<bool(CmdClient &client, QByteArray *result)>;

/// A command with chosen arguments, and its exchange when all goes well.
struct CommandCase
{
    const char *name;
    Call call;
    QByteArray request;
    QByteArray reply;
    QByteArray result;
    bool silent; ///< leaves no line on a time-out
};

/// Every command once, in an order in which a terminal carries out each.
const std::vector<CommandCase> &commandCases();
const CommandCase &commandCase(const QByteArray &name);

/// A command that puts nothing out. What pointers point to must last.
template <class... Wanted, class... Given>
Call plainCall(bool (CmdClient::*command)(Wanted...), Given... given)
{
    return [=](CmdClient &client, QByteArray *) {
        return (client.*command)(static_cast<Wanted>(given)...);
    };
}

/// Buffers end with a guard byte behind this capacity.
Call textCall(bool (CmdClient::*get)(char *, uint32_t *, size_t), size_t capacity);
Call userListCall(size_t capacity);
Call recordPageCall(size_t capacity);
