#pragma once

#include "link/cmdclient.h"

#include <QByteArray>

/// Fetches a text of at most `capacity` bytes with one of the client's commands. Returns false and
/// leaves `text` unchanged if the command fails; the reason is in the log then.
template <class Unit>
bool fetchText(CmdClient *client, bool (CmdClient::*get)(Unit *out, uint32_t *outLen, size_t),
               size_t capacity, QByteArray *text)
{
    QByteArray buffer(static_cast<int>(capacity), Qt::Uninitialized);
    uint32_t length = 0;
    if (!(client->*get)(reinterpret_cast<Unit *>(buffer.data()), &length, capacity))
        return false;
    buffer.truncate(static_cast<int>(length));
    *text = buffer;
    return true;
}
