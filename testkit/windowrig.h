#pragma once

#include "testkit/console.h"
#include "testkit/dialogrig.h"

/// A camera's frame whose neighbouring pixels differ; the shift makes different frames.
QByteArray frame(int shift);

/// The real window and a scripted terminal, whose address is in the window's fields.
class WindowRig : public Console
{
public:
    WindowRig();

    /// Connects the window to the peer, starts the listener on a free port and clears both logs.
    void connectToPeer();
    /// Lets the peer answer each request for pictures: frame(1) is the palmprint's, frame(4) the
    /// palm vein's.
    void servePictures();
    /// Lets the peer expect the address that the window announces when it starts listening.
    void expectAnnouncement();

    /// Titles of the usable groups in alphabetical order.
    QStringList enabledGroups() const;

    ScriptedPeer peer;
};

/// Makes the main window for a DialogRig: connected to the link's peer, with empty logs.
std::unique_ptr<QWidget> makeConnectedWindow(Link *link);
