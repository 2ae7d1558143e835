#include "app/mainwindow.h"

#include "app/documentlines.h"
#include "config/outputcfgdlg.h"
#include "config/vendorcfgdlg.h"
#include "dialogs/accessrecorddlg.h"
#include "dialogs/qrcodedialog.h"
#include "dialogs/setsysinfodlg.h"
#include "link/cmdclient.h"
#include "widgets/controls.h"
#include "widgets/textlog.h"

#include <QDebug>
#include <QGridLayout>
#include <QGroupBox>
#include <QInputDialog>
#include <QMessageBox>

#include <algorithm>
#include <iterator>

namespace {

constexpr QSize ButtonSize(100, 30);
constexpr int ButtonColumns = 3;

const char VendorKey[] = "qrabel274";

constexpr int AnyOtherMode = -1;

struct ModeName
{
    int mode;
    const char *text;
};

constexpr ModeName ModeNames[] = {
    {static_cast<int>(DeviceMode::Idle), QT_TRANSLATE_NOOP("MainWindow", "Empty")},
    {static_cast<int>(DeviceMode::Enroll), QT_TRANSLATE_NOOP("MainWindow", "Enroll")},
    {static_cast<int>(DeviceMode::LocalRecognition),
     QT_TRANSLATE_NOOP("MainWindow", "Local Recognition")},
    {static_cast<int>(DeviceMode::RemoteRecognition),
     QT_TRANSLATE_NOOP("MainWindow", "Remote Recognition")},
    {AnyOtherMode, QT_TRANSLATE_NOOP("MainWindow", "other mode")},
};

} // namespace

QGroupBox *MainWindow::createSettingsGroup()
{
    auto *group = new QGroupBox(tr("Settings"));
    group->setLayout(controls::buttonGrid({{tr("Get Settings"), SLOT(getSysInfoBtnClickAct())},
                                           {tr("Device Config"), SLOT(devCfgAct())},
                                           {tr("User Config"), SLOT(restartBtnClickAct())},
                                           {tr("System Config"), SLOT(sysCfgBtnClickAct())},
                                           {tr("Record Manage"), SLOT(recordBtnClickAct())},
                                           {tr("Reboot Device"), SLOT(rebootBtnClickAct())},
                                           {tr("Factory Config"), SLOT(manuCfgBtnClickAct())},
                                           {tr("QRCode Manage"), SLOT(qrcodeBtnClickAct())},
                                           {tr("Get Work-Mode"), SLOT(getModeBtnClickAct())}},
                                          ButtonColumns, ButtonSize, this));
    return group;
}

void MainWindow::restartBtnClickAct()
{
    notSupported();
}

void MainWindow::devCfgAct()
{
    runDialog<vendorCfgDlg>();
}

void MainWindow::sysCfgBtnClickAct()
{
    runDialog<OutputCfgDlg>();
}

void MainWindow::recordBtnClickAct()
{
    runDialog<AccessRecordDlg>();
}

void MainWindow::qrcodeBtnClickAct()
{
    runDialog<QRCodeDialog>();
}

void MainWindow::getSysInfoBtnClickAct()
{
    QByteArray text;
    if (!fetchSystemInfo(client, &text))
        return;
    log(tr("System info acquiring succeeded."));
    const std::optional<SystemInfo> info = readSystemInfo(text);
    textlog::append(infoText,
                    info ? systemInfoLines(*info) : QStringList(tr("JSON parsing failed.")));
}

void MainWindow::getModeBtnClickAct()
{
    uint8_t mode = 0;
    if (!client->getMode(&mode)) {
        log(tr("Fail to get mode."));
        return;
    }
    const auto *name = std::find_if(std::begin(ModeNames), std::end(ModeNames) - 1,
                                    [mode](const ModeName &row) { return row.mode == mode; });
    if (name->mode == AnyOtherMode)
        qDebug().nospace() << "mode data:" << mode;
    log(tr("Current mode：%1").arg(tr(name->text)));
}

void MainWindow::rebootBtnClickAct()
{
    const auto answer = QMessageBox::warning(this, tr("warning"), tr("Sure to reboot the system?"),
                                             QMessageBox::Yes | QMessageBox::No);
    if (answer != QMessageBox::No && client->rebootDevice())
        log(tr("The system will restart after 10 seconds."));
}

void MainWindow::manuCfgBtnClickAct()
{
    // A cancelled prompt returns an empty key, which is wrong.
    const QString key = QInputDialog::getText(this, tr("Vendor secret key"), tr("secret key"));
    if (key != QLatin1String(VendorKey)) {
        log(tr("Wrong secret key."));
        return;
    }
    setSysInfoDlg dialog(client, infoText, nullptr);
    dialog.exec();
}
