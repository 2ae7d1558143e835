#include "config/usercfgdlg.h"

#include "link/cmdclient.h"
#include "widgets/controls.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QGroupBox>

namespace {

constexpr QSize DialogSize(860, 240);
constexpr QSize ButtonSize(80, 30);
constexpr QSize LabelSize(70, 27);
constexpr QSize LongLabelSize(105, 27);
constexpr QSize ControlSize(120, 27);
constexpr QSize PortLabelSize(50, 27);
constexpr QSize PortSize(60, 27);
constexpr int RowSpacing = 10;

enum Grid { Recognition, Network, Device };

} // namespace

UserCfgDlg::UserCfgDlg(CmdClient *cmdClient, QTextEdit *log, QWidget *parent)
    : ConfigDialog(userDocument(), {userBlock()}, cmdClient, log, parent)
{
    setWindowTitle(tr("User Config"));
    setFixedSize(DialogSize);
    auto *row = new QHBoxLayout;
    row->addWidget(createGroup(tr("Recognition"), Recognition, LongLabelSize));
    row->addWidget(createGroup(tr("Network"), Network, LabelSize));
    row->addWidget(createGroup(tr("Device"), Device, LabelSize));

    auto *layout = new QVBoxLayout(this);
    layout->addStretch(1);
    layout->addLayout(row);
    layout->addStretch(1);
    layout->addLayout(createButtonRow(1, ButtonSize, ButtonSize));
    layout->addStretch(1);
    controls::keepEnterFromButtons(this);
}

ConfigDialog::Document UserCfgDlg::userDocument()
{
    Document document;
    document.get = &CmdClient::getUserConfig;
    document.set = &CmdClient::setUserConfig;
    document.fileName = QStringLiteral("/zt415_user.cfg");
    document.loaded = tr("Cfg file loaded：%1");
    document.notParsed = tr("json parsing failed");
    document.issued = tr("Cfg data issued.");
    document.saved = tr("File saved to %1");
    document.notSaved = tr("Fail to save file：%1");
    document.notOpened = tr("Fail to open file:%1");
    return document;
}

ConfigBlock UserCfgDlg::userBlock()
{
    using namespace control;
    const QStringList closeOpen{tr("close"), tr("open")};
    return {
        nullptr,
        {
            {"recg mode",
             {Recognition, 0},
             tr("recognit mode："),
             choice({tr("palm vein"), tr("palmprint"), tr("vein & print"), tr("vein or print")},
                    {0, 3}),
             tr("Wrong authentication mode data")},
            {"use qrcode",
             {Recognition, 1},
             tr("QR code："),
             choice({tr("close"), tr("open"), tr("pass-through")}, {0, 2}),
             tr("Wrong QR code parameter data")},
            {"local ip", {Network, 0}, tr("dev addr："), address(Typing::DigitsAndDots)},
            {"local port", {Network, 0, 1}, tr("port："), number({1, 65535, 20086}, {1, 65535})},
            {"gateway ip", {Network, 1}, tr("gateway："), address(Typing::DigitsAndDots)},
            {"remote ip", {Network, 2}, tr("Bkgd Addr："), address(Typing::DigitsAndDots)},
            {"remote port", {Network, 2, 1}, tr("port："), number({1, 65535, 18080}, {1, 65535})},
            {"user dev type", {Device, 0}, tr("dev type："), choice({tr("in"), tr("out")}, {0, 1})},
            {"auto reboot", {Device, 1}, tr("auto re："), choice(closeOpen, {0, 1})},
            {"auto reboot time", {Device, 2}, tr("time："), timeOfDay({4, 30})},
            {"detect similar hand",
             {Recognition, 2},
             tr("similar recognit："),
             choice(closeOpen, {0, 1})},
        }};
}

QGroupBox *UserCfgDlg::createGroup(const QString &title, int grid, QSize labelSize)
{
    auto *group = new QGroupBox(title);
    group->setLayout(
        createGrid(grid, {{labelSize, ControlSize}, {PortLabelSize, PortSize}}, RowSpacing));
    return group;
}
