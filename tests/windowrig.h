#pragma once

#include "app/mainwindow.h"
#include "scriptedpeer.h"

#include <QStringList>

/// A camera's frame in which neighbours differ, other than one with another shift.
QByteArray frame(int shift);

/// The console's window and a scripted terminal for it. Widgets are found by their object names, a
/// button's being that of its slot.
class WindowRig
{
public:
    WindowRig();

    /// Connects the window to the peer, the listener on a port of the system's choice, and clears
    /// both logs.
    void connectToPeer();
    /// Lets the peer answer each request for pictures: frame(1) is the palmprint's, frame(4) the
    /// palm vein's.
    void servePictures();
    /// Lets the peer expect the address that is announced whenever listening starts.
    void expectAnnouncement();

    template <class Widget> Widget *find(const QByteArray &name) const
    {
        return window.findChild<Widget *>(QString::fromLatin1(name));
    }
    void click(const QByteArray &button) const;
    QString caption(const QByteArray &button) const;
    QStringList lines(const QByteArray &log) const;
    /// Titles of the usable groups in alphabetical order.
    QStringList enabledGroups() const;

    ScriptedPeer peer;
    MainWindow window;
};
