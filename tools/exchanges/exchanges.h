#pragma once

#include <QByteArray>

#include <vector>

/// What a command and its answer look like on the wire.
struct Exchange
{
    const char *command;
    QByteArray request;
    QByteArray reply;
};

/// One exchange for each command, in an order in which every one succeeds. Empty, with the reason
/// on the standard error output, if one does not.
std::vector<Exchange> recordExchanges();
