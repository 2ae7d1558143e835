#include "app/mainwindow.h"

#include "app/watchserver.h"
#include "link/cmdclient.h"
#include "widgets/controls.h"
#include "widgets/textlog.h"

#include <QBoxLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTextEdit>

namespace {

constexpr QSize LabelSize(90, 25);
constexpr QSize FieldSize(80, 25);
constexpr QSize ButtonSize(110, 25);

// The port that the terminal is asked to connect to, whatever the field holds.
constexpr quint16 AnnouncedPort = 60086;

} // namespace

QGroupBox *MainWindow::createListenerGroup()
{
    watchPortEdit =
        controls::field(new QLineEdit(QString::number(AnnouncedPort)), "watchPortEdit", FieldSize);
    openWatchBtn =
        controls::button(tr("Start Listening"), ButtonSize, this, SLOT(openWatchBtnClickAct()));

    auto *row = new QHBoxLayout;
    row->addWidget(controls::label(QStringLiteral("Listening Port:"), LabelSize, watchPortEdit));
    row->addWidget(watchPortEdit);
    row->addStretch();
    row->addWidget(openWatchBtn);

    auto *group = new QGroupBox(tr("Message Listening"));
    watchText->setAccessibleName(group->title());
    auto *layout = new QVBoxLayout(group);
    layout->addLayout(row);
    addLogWithClear(layout, watchText, SLOT(clearWatchTextBtnClickAct()));
    return group;
}

void MainWindow::clearWatchTextBtnClickAct()
{
    watchText->clear();
}

void MainWindow::openWatchBtnClickAct()
{
    if (openWatchBtn->text().trimmed() != tr("Start Listening")) {
        watchServer->stopListen();
        controls::setCaption(openWatchBtn, tr("Start Listening"));
        return;
    }
    watchServer->startListen(static_cast<quint16>(watchPortEdit->text().toInt()));

    quint8 ip[4] = {};
    WatchServer::findLocalAddress(ip, hostEdit->text().trimmed());
    textlog::append(watchText,
                    tr("Local Address：%1.%2.%3.%4: %5")
                        .arg(QString::number(ip[0]), QString::number(ip[1]), QString::number(ip[2]),
                             QString::number(ip[3]), QString::number(AnnouncedPort)));
    client->setDebugAddress(ip, AnnouncedPort);
    controls::setCaption(openWatchBtn, tr("Stop Listening"));
}
