#include "app/mainwindow.h"

#include "link/cmdclient.h"
#include "widgets/controls.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QSpinBox>

#include <limits>

namespace {

constexpr QSize LabelSize(70, 25);
constexpr QSize FieldSize(100, 25);
constexpr QSize ButtonSize(120, 45);
constexpr int DefaultPort = 20086;

// What the Connect button reads after a connection, in every language.
const QString UnconnectedCaption = QStringLiteral("Connect");

} // namespace

QGroupBox *MainWindow::createConnectionGroup()
{
    auto *group = new QGroupBox(tr("Device Connect"));
    auto *layout = new QHBoxLayout(group);
    layout->addLayout(createConnectionGrid());
    layout->addStretch();

    openBtn = controls::button(tr("Connect"), ButtonSize, this, SLOT(openBtnClickAct()));
    openBtn->installEventFilter(this);
    auto *buttons = new QVBoxLayout;
    buttons->addWidget(openBtn);
    buttons->addWidget(
        controls::button(tr("Disconnect"), ButtonSize, this, SLOT(closeBtnClickAct())));
    layout->addLayout(buttons);
    connectOnEnter(hostEdit);
    connectOnEnter(portSpinBox);
    return group;
}

void MainWindow::connectOnEnter(QWidget *field)
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *shortcut = new QShortcut(key, field);
        shortcut->setContext(Qt::WidgetShortcut);
        shortcut->setAutoRepeat(false);
        connect(shortcut, SIGNAL(activated()), openBtn, SLOT(click()));
    }
}

QGridLayout *MainWindow::createConnectionGrid()
{
    auto *linkCombo = controls::sized(new QComboBox, FieldSize);
    linkCombo->setObjectName(QStringLiteral("connectionModeCombo"));
    linkCombo->addItem(tr("Ethernet"), QStringLiteral("Net"));
    linkCombo->addItem(tr("USB"), QStringLiteral("USB"));
    linkCombo->addItem(tr("Serial Port"), QStringLiteral("Uart"));

    hostEdit = controls::sized(new QLineEdit(QStringLiteral("192.168.31.5")), FieldSize);
    hostEdit->setObjectName(QStringLiteral("hostEdit"));

    portSpinBox = controls::sized(new QSpinBox, FieldSize);
    portSpinBox->setObjectName(QStringLiteral("portSpinBox"));
    portSpinBox->setRange(0, std::numeric_limits<quint16>::max());
    portSpinBox->setValue(DefaultPort);

    auto *grid = new QGridLayout;
    grid->addWidget(controls::label(tr("Mode："), LabelSize, linkCombo), 0, 0);
    grid->addWidget(linkCombo, 0, 1);
    grid->addWidget(controls::label(tr("IP:"), LabelSize, hostEdit), 1, 0);
    grid->addWidget(hostEdit, 1, 1);
    grid->addWidget(controls::label(tr("Port："), LabelSize, portSpinBox), 2, 0);
    grid->addWidget(portSpinBox, 2, 1);
    return grid;
}

void MainWindow::openBtnClickAct()
{
    if (openBtn->text() == tr("Refresh Connect") && imgUpdateState != Idle)
        stopCollecting();

    const QByteArray host = hostEdit->text().trimmed().toLocal8Bit();
    const auto port = static_cast<quint16>(portSpinBox->text().toUInt());
    if (!client->connectToDevice(host.constData(), port)) {
        log(tr("Fail to connect the device."));
        return;
    }
    enableConnection(true);
    log(tr("Device connected."));
    controls::setCaption(openBtn, tr("Refresh Connect"));
    // Twice: a running listener announces itself anew, a stopped one is stopped again afterwards.
    openWatchBtnClickAct();
    openWatchBtnClickAct();
}

void MainWindow::closeBtnClickAct()
{
    if (openBtn->text() == tr("Connect") || openBtn->text() == UnconnectedCaption)
        return;
    if (imgUpdateState != Idle)
        stopCollecting();
    if (openWatchBtn->text() == tr("Stop Listening"))
        openWatchBtnClickAct();
    enableConnection(false);
    client->disconnectFromDevice();
    controls::setCaption(openBtn, UnconnectedCaption);
    log(tr("The connection has been abandoned."));
}

void MainWindow::enableConnAct()
{
    enableConnection(true);
}

void MainWindow::disableConnAct()
{
    enableConnection(false);
}

void MainWindow::enableConnection(bool enabled)
{
    for (QGroupBox *group : qAsConst(connectionGroups))
        group->setEnabled(enabled);
}
