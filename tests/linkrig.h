#pragma once

#include "link/cmdclient.h"
#include "scriptedpeer.h"

#include <QTextEdit>

/// A client that is connected to a scripted terminal, its log still empty.
struct Link
{
    Link()
    {
        client.connectToDevice("127.0.0.1", peer.port());
        log.clear();
    }

    ScriptedPeer peer;
    QTextEdit log;
    CmdClient client{&log, nullptr};
};
