#include "config/vendorcfgdlg.h"

#include "link/cmdclient.h"
#include "widgets/controls.h"

#include <QBoxLayout>
#include <QDateTime>
#include <QGridLayout>
#include <QGroupBox>
#include <QInputDialog>

namespace {

constexpr QSize DialogSize(1000, 320);
constexpr QSize LabelSize(60, 27);
constexpr QSize InfoControlSize(160, 27);
constexpr QSize ControlSize(120, 27);
constexpr QSize NarrowLabelSize(50, 27);
constexpr QSize NarrowControlSize(60, 27);
constexpr QSize OperationSize(100, 27);
constexpr QSize LoadSize(80, 27);
constexpr QSize ExportSize(80, 30);
constexpr int RowSpacing = 10;

constexpr int MaxTextLength = 32;
constexpr int MaxVolume = 31;
constexpr int ClockEpoch = 1970;

constexpr int FirstTofBias = 1;
constexpr int MinTofBias = -100;
constexpr int MaxTofBias = 200;

enum Grid { Info, Work };

/// Aligns the rows of groups that stand side by side.
void alignToTop(QGridLayout *grid)
{
    grid->setRowStretch(grid->rowCount(), 1);
}

} // namespace

vendorCfgDlg::vendorCfgDlg(CmdClient *cmdClient, QTextEdit *log, QWidget *parent)
    : ConfigDialog(vendorDocument(),
                   {infoBlock(), workBlock(), {nullptr, {{"sys set", {}, {}, control::null()}}}},
                   cmdClient, log, parent)
{
    setWindowTitle(tr("Device Info"));
    setFixedSize(DialogSize);
    auto *row = new QHBoxLayout;
    row->addWidget(createInfoGroup());
    row->addWidget(createWorkGroup());
    row->addWidget(createOperationGroup());

    auto *layout = new QVBoxLayout(this);
    layout->addStretch(1);
    layout->addLayout(row);
    layout->addStretch(1);
    layout->addLayout(createButtonRow(1, LoadSize, ExportSize,
                                      {SLOT(getCfgBtnClickAct()), SLOT(setCfgBtnClickAct()),
                                       SLOT(exportVendorJsonBtnClickAct()),
                                       SLOT(importVendorJsonBtnClickAct())}));
    layout->addStretch(1);
    controls::keepEnterFromButtons(this);
}

std::optional<ClockRecord> vendorCfgDlg::clockRecord(const QDateTime &time)
{
    const int year = time.date().year() - ClockEpoch;
    if (year != static_cast<quint8>(year))
        return std::nullopt;
    const auto byte = [](int number) { return static_cast<quint8>(number); };
    return ClockRecord{byte(year),
                       byte(time.date().month()),
                       byte(time.date().day()),
                       byte(time.time().hour()),
                       byte(time.time().minute()),
                       byte(time.time().second())};
}

ConfigDialog::Document vendorCfgDlg::vendorDocument()
{
    Document document;
    document.get = &CmdClient::getVendorConfig;
    document.set = &CmdClient::setVendorConfig;
    document.fileName = QStringLiteral("/zt415_vendor.cfg");
    document.loaded = tr("cfg file loaded：%1");
    document.notParsed = tr("json parsing failed.");
    document.issued = tr("Cfg data issued");
    document.saved = tr("File saved to %1");
    document.notSaved = tr("Fail to save file：%1");
    document.notOpened = tr("Fail to open file:%1");
    return document;
}

ConfigBlock vendorCfgDlg::infoBlock()
{
    using namespace control;
    return {
        "dev info",
        {
            {"manufacture name", {Info, 0}, tr("vendor："), text(MaxTextLength)},
            {"dev notes", {Info, 1}, tr("dev rmk："), text(MaxTextLength)},
            {"dev location desc", {Info, 2}, tr("dev point："), text(MaxTextLength)},
            {"user dev type", {Info, 3}, tr("dev type："), choice({tr("in"), tr("out")}, {0, 1})},
            {"sound volume",
             {Info, 4},
             tr("volume："),
             number({0, MaxVolume, 0}, {0, MaxVolume}),
             tr("Wrong volume data.")},
        }};
}

ConfigBlock vendorCfgDlg::workBlock()
{
    using namespace control;
    const QStringList closeOpen{tr("close"), tr("open")};
    return {"work param",
            {
                {"local ip", {Work, 0}, tr("dev addr："), address(Typing::ShortDigitsAndDots)},
                {"local port",
                 {Work, 0, 1},
                 tr("port："),
                 shownNumber({1000, 65535, 1000}, {1, 65535})},
                {"gateway ip", {Work, 1}, tr("gateway："), address(Typing::ShortDigitsAndDots)},
                {"auto reboot", {Work, 2}, tr("auto re："), choice(closeOpen, {0, 1}, 1)},
                {"auto reboot time", {Work, 2, 1}, tr("time："), timeOfDay({4, 30})},
                {"remote enroll func", {Work, 3}, tr("rmt enrol："), onOff(closeOpen)},
            }};
}

QGroupBox *vendorCfgDlg::createInfoGroup()
{
    QGroupBox *group = createLockedGroup(tr("Device Info"));
    group->setLayout(createGrid(Info, {{LabelSize, InfoControlSize}}, RowSpacing));
    return group;
}

QGroupBox *vendorCfgDlg::createWorkGroup()
{
    QGroupBox *group = createLockedGroup(tr("Basic Settings"));
    QGridLayout *grid = createGrid(
        Work, {{LabelSize, ControlSize}, {NarrowLabelSize, NarrowControlSize}}, RowSpacing);
    alignToTop(grid);
    group->setLayout(grid);
    return group;
}

QGroupBox *vendorCfgDlg::createOperationGroup()
{
    auto *grid = new QGridLayout;
    grid->setVerticalSpacing(RowSpacing);
    const auto addRow = [&](int row, const QString &label,
                            std::initializer_list<controls::ButtonRow> buttons) {
        grid->addWidget(controls::label(label, NarrowLabelSize), row, 0);
        int column = 0;
        for (const auto &[caption, slot] : buttons)
            grid->addWidget(controls::button(caption, OperationSize, this, slot), row, ++column);
    };
    addRow(0, tr("RTC："),
           {{tr("get RTC time"), SLOT(getRtcBtnClickAct())},
            {tr("sync RTC time"), SLOT(setRtcBtnClickAct())}});
    addRow(1, tr("TOF："),
           {{tr("get TOF corr"), SLOT(getTofBiasBtnClickAct())},
            {tr("corr TOF bias"), SLOT(calibTofBtnClickAct())}});
    addRow(2, tr("settings："),
           {{tr("export logs"), SLOT(exportLogBtnClickAct())},
            {tr("reset"), SLOT(resetSysBtnClickAct())}});
    alignToTop(grid);
    auto *group = new QGroupBox(tr("System Operation"));
    group->setLayout(grid);
    return group;
}

void vendorCfgDlg::setCfgBtnClickAct()
{
    setBtnClickAct();
}

void vendorCfgDlg::getCfgBtnClickAct()
{
    getBtnClickAct();
}

void vendorCfgDlg::setRtcBtnClickAct()
{
    const std::optional<ClockRecord> time = clockRecord(QDateTime::currentDateTime());
    log(time && client->setRtcTime(&*time) ? tr("RTC time set succeeded.")
                                           : tr("RTC time set failed."));
}

void vendorCfgDlg::getRtcBtnClickAct()
{
    ClockRecord time;
    if (!client->getRtcTime(&time)) {
        log(tr("Fail to get RTC."));
        return;
    }
    log(tr("RTC time：%1-%2-%3 %4:%5:%6")
            .arg(time.year + ClockEpoch)
            .arg(time.month)
            .arg(time.day)
            .arg(time.hour)
            .arg(time.minute)
            .arg(time.second));
}

void vendorCfgDlg::calibTofBtnClickAct()
{
    bool chosen = false;
    const int bias = QInputDialog::getInt(this, tr("TOF corrected value"), tr("Tof Bias："),
                                          FirstTofBias, MinTofBias, MaxTofBias, 1, &chosen);
    if (!chosen)
        return;
    log(client->setTofBias(static_cast<int16_t>(bias)) ? tr("TOF bias corrected.")
                                                       : tr("TOF bias correct failed."));
}

void vendorCfgDlg::getTofBiasBtnClickAct()
{
    int32_t bias = 0;
    if (client->getTofBias(&bias))
        log(tr("TOF corrected value：%1").arg(bias));
}

void vendorCfgDlg::resetSysBtnClickAct()
{
    log(tr("Not supported for now."));
}

void vendorCfgDlg::exportLogBtnClickAct()
{
    log(tr("Not supported for now."));
}

void vendorCfgDlg::exportVendorJsonBtnClickAct()
{
    exportBtnClickAct();
}

void vendorCfgDlg::importVendorJsonBtnClickAct()
{
    importBtnClickAct();
}
