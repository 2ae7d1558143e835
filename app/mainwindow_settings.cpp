#include "app/mainwindow.h"

#include <QGridLayout>
#include <QGroupBox>

namespace {

constexpr QSize ButtonSize(100, 30);
constexpr int ButtonColumns = 3;

} // namespace

QGroupBox *MainWindow::createSettingsGroup()
{
    auto *group = new QGroupBox(tr("Settings"));
    group->setLayout(createButtonGrid(
        {
            {QT_TR_NOOP("Get Settings"), SLOT(getSysInfoBtnClickAct())},
            {QT_TR_NOOP("Device Config"), SLOT(devCfgAct())},
            {QT_TR_NOOP("User Config"), SLOT(restartBtnClickAct())},
            {QT_TR_NOOP("System Config"), SLOT(sysCfgBtnClickAct())},
            {QT_TR_NOOP("Record Manage"), SLOT(recordBtnClickAct())},
            {QT_TR_NOOP("Reboot Device"), SLOT(rebootBtnClickAct())},
            {QT_TR_NOOP("Factory Config"), SLOT(manuCfgBtnClickAct())},
            {QT_TR_NOOP("QRCode Manage"), SLOT(qrcodeBtnClickAct())},
            {QT_TR_NOOP("Get Work-Mode"), SLOT(getModeBtnClickAct())},
        },
        ButtonColumns, ButtonSize));
    return group;
}

void MainWindow::restartBtnClickAct()
{
    notSupported();
}

void MainWindow::getSysInfoBtnClickAct()
{
    notSupported();
}

void MainWindow::devCfgAct()
{
    notSupported();
}

void MainWindow::sysCfgBtnClickAct()
{
    notSupported();
}

void MainWindow::recordBtnClickAct()
{
    notSupported();
}

void MainWindow::rebootBtnClickAct()
{
    notSupported();
}

void MainWindow::manuCfgBtnClickAct()
{
    notSupported();
}

void MainWindow::qrcodeBtnClickAct()
{
    notSupported();
}

void MainWindow::getModeBtnClickAct()
{
    notSupported();
}
