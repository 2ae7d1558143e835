#include "testkit/windowrig.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QSpinBox>

namespace {

void announce(ScriptedPeer *peer)
{
    peer->expect({hex("EAC5 000007 08 7F000001 EAB6"), {hex("EAC5 000001 00")}});
}

void setAddress(const QWidget *window, quint16 port)
{
    drive::find<QLineEdit>(window, "hostEdit")->setText("127.0.0.1");
    drive::find<QSpinBox>(window, "portSpinBox")->setValue(port);
    drive::find<QLineEdit>(window, "watchPortEdit")->setText("0");
}

void connectWindow(const QWidget *window, ScriptedPeer *peer)
{
    announce(peer);
    for (const char *button :
         {"openBtnClickAct", "clearInfoTextBtnClickAct", "clearWatchTextBtnClickAct"})
        drive::click(window, button);
}

} // namespace

QByteArray frame(int shift)
{
    QByteArray bytes(388800, '\0');
    for (int i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i % 251 + shift);
    return bytes;
}

WindowRig::WindowRig()
{
    setAddress(&window, peer.port());
}

void WindowRig::connectToPeer()
{
    connectWindow(&window, &peer);
}

void WindowRig::servePictures()
{
    peer.serve(hex("EAC5 000001 01"), head(388800) + frame(1));
    peer.serve(hex("EAC5 000001 02"), head(388800) + frame(4));
    peer.serve(hex("EAC5 000001 03"), head(777600) + frame(1) + frame(4));
}

void WindowRig::expectAnnouncement()
{
    announce(&peer);
}

QStringList WindowRig::enabledGroups() const
{
    QStringList titles;
    for (const QGroupBox *group : window.findChildren<QGroupBox *>()) {
        if (group->isEnabled() && !group->title().isEmpty())
            titles.append(group->title());
    }
    titles.sort();
    return titles;
}

std::unique_ptr<QWidget> makeConnectedWindow(Link *link)
{
    auto window = std::make_unique<MainWindow>();
    setAddress(window.get(), link->peer.port());
    connectWindow(window.get(), &link->peer);
    return window;
}
