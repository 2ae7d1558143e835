#include "windowrig.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTextEdit>

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

void WindowRig::expectAnnouncement()
{
    peer.expect({hex("EAC5 000007 08 7F000001 EAB6"), {hex("EAC5 000001 00")}});
}

void WindowRig::click(const QByteArray &button) const
{
    find<QPushButton>(button)->click();
}

QString WindowRig::caption(const QByteArray &button) const
{
    return find<QPushButton>(button)->text();
}

QStringList WindowRig::lines(const QByteArray &log) const
{
    return find<QTextEdit>(log)->toPlainText().split('\n', Qt::SkipEmptyParts);
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
