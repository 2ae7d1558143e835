#include "app/mainwindow.h"

#include "link/cmdclient.h"
#include "widgets/busycursor.h"
#include "widgets/controls.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QEvent>
#include <QGridLayout>
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
constexpr double MicrosecondsPerMillisecond = 1000;

// The caption of the Connect button after a disconnect, in every language.
const QString UnconnectedCaption = QStringLiteral("Connect");

/// Names of the states, indexed by QAbstractSocket::SocketState.
constexpr const char *SocketStates[] = {
    QT_TRANSLATE_NOOP("MainWindow", "not connected"),
    QT_TRANSLATE_NOOP("MainWindow", "looking up the address"),
    QT_TRANSLATE_NOOP("MainWindow", "connecting"),
    QT_TRANSLATE_NOOP("MainWindow", "connected"),
    QT_TRANSLATE_NOOP("MainWindow", "bound to an address"),
    QT_TRANSLATE_NOOP("MainWindow", "listening"),
    QT_TRANSLATE_NOOP("MainWindow", "closing"),
};

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
    auto *linkCombo = controls::field(new QComboBox, "connectionModeCombo", FieldSize);
    linkCombo->addItem(tr("Ethernet"), QStringLiteral("Net"));
    linkCombo->addItem(tr("USB"), QStringLiteral("USB"));
    linkCombo->addItem(tr("Serial Port"), QStringLiteral("Uart"));

    hostEdit =
        controls::field(new QLineEdit(QStringLiteral("192.168.31.5")), "hostEdit", FieldSize);

    portSpinBox = controls::field(new QSpinBox, "portSpinBox", FieldSize);
    portSpinBox->setRange(0, std::numeric_limits<quint16>::max());
    portSpinBox->setValue(DefaultPort);

    auto *grid = new QGridLayout;
    controls::addField(grid, 0, 0, tr("Mode："), LabelSize, linkCombo);
    controls::addField(grid, 1, 0, tr("IP:"), LabelSize, hostEdit);
    controls::addField(grid, 2, 0, tr("Port："), LabelSize, portSpinBox);
    return grid;
}

bool MainWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ToolTip && watched == openBtn)
        openBtn->setToolTip(connectionTip());
    return QMainWindow::eventFilter(watched, event);
}

QString MainWindow::connectionTip() const
{
    const qint64 time = client->lastReplyTime();
    const QString reply =
        time < 0
            ? tr("none yet")
            : tr("%1 ms").arg(static_cast<double>(time) / MicrosecondsPerMillisecond, 0, 'f', 1);
    return tr("Socket: %1\nLast reply: %2").arg(tr(SocketStates[client->socketState()]), reply);
}

void MainWindow::openBtnClickAct()
{
    if (openBtn->text() == tr("Refresh Connect") && preview.isRunning())
        preview.stop();

    BusyCursor cursor;
    cursor.show();
    const QByteArray host = hostEdit->text().trimmed().toLocal8Bit();
    const auto port = static_cast<quint16>(portSpinBox->text().toUInt());
    if (!client->connectToDevice(host.constData(), port)) {
        log(tr("Fail to connect the device."));
        return;
    }
    enableConnection(true);
    log(tr("Device connected."));
    controls::setCaption(openBtn, tr("Refresh Connect"));
    // Two clicks: a listener that runs stops, starts and announces its address again; one that is
    // stopped announces its address and stops again.
    openWatchBtnClickAct();
    openWatchBtnClickAct();
}

void MainWindow::closeBtnClickAct()
{
    if (openBtn->text() == tr("Connect") || openBtn->text() == UnconnectedCaption)
        return;
    if (preview.isRunning())
        preview.stop();
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
