#include "app/mainwindow.h"

#include "config/json.h"
#include "config/outputcfgdlg.h"
#include "config/vendorcfgdlg.h"
#include "dialogs/accessrecorddlg.h"
#include "dialogs/qrcodedialog.h"
#include "dialogs/setsysinfodlg.h"
#include "link/cmdclient.h"
#include "link/textlog.h"

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

std::optional<QString> latin1Text(const Json::Value &object, const char *key)
{
    const Json::Value *value = json::member(object, key);
    const std::optional<QByteArray> bytes = json::bytes(object, key);
    return bytes && !value->isNull() ? std::make_optional(QString::fromLatin1(*bytes))
                                     : std::nullopt;
}

/// Only what is a text in the document, up to a zero in it.
std::optional<QString> latin1CString(const Json::Value &object, const char *key)
{
    const Json::Value *value = json::member(object, key);
    return value && value->isString() ? std::make_optional(QString::fromLatin1(value->asCString()))
                                      : std::nullopt;
}

std::optional<QString> decimal(const Json::Value &object, const char *key)
{
    const Json::Value *value = json::member(object, key);
    const std::optional<quint32> number = json::unsignedNumber(object, key);
    return number && !value->isNull() ? std::make_optional(QString::number(*number)) : std::nullopt;
}

/// A member of the system information and its line in the log; passed over when it is not there
/// or cannot be read so.
struct SystemInfoRow
{
    const char *key;
    const char *line;
    std::optional<QString> (*read)(const Json::Value &object, const char *key);
};

constexpr SystemInfoRow SystemInfoRows[] = {
    {"dev_name", QT_TRANSLATE_NOOP("MainWindow", "Device Name：%1"), latin1Text},
    {"dev_serial", QT_TRANSLATE_NOOP("MainWindow", "Device Serial Number：%1"), latin1Text},
    {"fw_version", QT_TRANSLATE_NOOP("MainWindow", "Firmware Version：%1"), latin1Text},
    {"vein_alg_version", QT_TRANSLATE_NOOP("MainWindow", "Vein Algorithm Version：%1"), latin1Text},
    {"print_alg_version", QT_TRANSLATE_NOOP("MainWindow", "Print Algorithm Version：%1"),
     latin1Text},
    {"qrcode_alg_version", QT_TRANSLATE_NOOP("MainWindow", "QrCode Algorithm Version：%1"),
     latin1Text},
    {"max_user_num", QT_TRANSLATE_NOOP("MainWindow", "System User Volume：%1"), decimal},
    {"max_record_num", QT_TRANSLATE_NOOP("MainWindow", "System Record Volume：%1"), decimal},
    {"mac_address", QT_TRANSLATE_NOOP("MainWindow", "MAC Address：%1"), latin1CString},
};

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
    std::vector<char> text(CmdClient::DocumentCapacity);
    uint32_t length = 0;
    if (!client->getSystemInfo(text.data(), &length))
        return;
    log(tr("System info acquiring succeeded."));
    Json::Value root;
    if (!json::parseObject(text.data(), length, &root)) {
        log(tr("JSON parsing failed."));
        return;
    }
    QStringList lines;
    for (const SystemInfoRow &row : SystemInfoRows) {
        if (const std::optional<QString> value = row.read(root, row.key))
            lines.append(tr(row.line).arg(*value));
    }
    textlog::append(infoText, lines);
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
    // A cancelled prompt gives an empty key, which is a wrong one.
    const QString key = QInputDialog::getText(this, tr("Vendor secret key"), tr("secret key"));
    if (key != QLatin1String(VendorKey)) {
        log(tr("Wrong secret key."));
        return;
    }
    setSysInfoDlg dialog(client, infoText, nullptr);
    dialog.exec();
}
