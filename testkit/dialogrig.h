#pragma once

#include "link/cmdclient.h"
#include "testkit/drive.h"
#include "testkit/scriptedpeer.h"

#include <QTextEdit>

#include <memory>

/// A client that is connected to a scripted terminal; its log is empty.
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

using MakeWindow = std::unique_ptr<QWidget> (*)(Link *link);
Q_DECLARE_METATYPE(MakeWindow)

template <class Dialog> std::unique_ptr<QWidget> makeDialog(Link *link)
{
    return std::make_unique<Dialog>(&link->client, &link->log, nullptr);
}

/// A dialog that uses a connected client.
struct DialogRig : Link
{
    explicit DialogRig(MakeWindow make)
        : dialog(make(this))
    {
        dialog->show();
    }

    template <class Widget> Widget *find(const QByteArray &name) const
    {
        return drive::find<Widget>(dialog.get(), name);
    }
    QVariant value(const QString &control) const
    {
        return drive::value(dialog.get(), control.toLatin1());
    }
    void setValue(const QString &control, const QVariant &value) const
    {
        drive::setValue(dialog.get(), control.toLatin1(), value);
    }
    void click(const QByteArray &button) const { drive::click(dialog.get(), button); }
    /// Returns the lines of the link's log, or those of the log that the main window has.
    QStringList lines() const
    {
        const auto *own = dialog->findChild<QTextEdit *>("infoText");
        return drive::lines(own ? own : &log);
    }
    /// Clicks the button with this caption and returns the new log lines, joined with "|".
    QString press(const QString &button)
    {
        log.clear();
        drive::clickCaption(dialog.get(), button);
        return lines().join('|');
    }
    /// The same for a button that sends this request.
    QString press(const QString &button, const QByteArray &request, const QByteArray &reply)
    {
        peer.expect({request, {reply}});
        return press(button);
    }

    std::unique_ptr<QWidget> dialog;
};
