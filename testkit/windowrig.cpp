#include "testkit/windowrig.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QSpinBox>

QByteArray frame(int shift)
{
    QByteArray bytes(388800, '\0');
    for (int i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i % 251 + shift);
    return bytes;
}

WindowRig::WindowRig()
{
    find<QLineEdit>("hostEdit")->setText("127.0.0.1");
    find<QSpinBox>("portSpinBox")->setValue(peer.port());
    find<QLineEdit>("watchPortEdit")->setText("0");
}

void WindowRig::connectToPeer()
{
    expectAnnouncement();
    click("openBtnClickAct");
    click("clearInfoTextBtnClickAct");
    click("clearWatchTextBtnClickAct");
}

void WindowRig::servePictures()
{
    peer.serve(hex("EAC5 000001 01"), head(388800) + frame(1));
    peer.serve(hex("EAC5 000001 02"), head(388800) + frame(4));
    peer.serve(hex("EAC5 000001 03"), head(777600) + frame(1) + frame(4));
}

void WindowRig::expectAnnouncement()
{
    peer.expect({hex("EAC5 000007 08 7F000001 EAB6"), {hex("EAC5 000001 00")}});
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
