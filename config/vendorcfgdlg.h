#pragma once

#include "config/configdialog.h"
#include "link/wire.h"

class QDateTime;

/// "Device Info": the terminal's identity and network settings, which make up the vendor
/// configuration document, and its upkeep: clock and distance sensor.
class vendorCfgDlg : public ConfigDialog
{
    Q_OBJECT

public:
    vendorCfgDlg(CmdClient *client, QTextEdit *infoText, QWidget *parent);

    /// What the terminal's clock is set to; none when the year is not one of its 1970 to 2225.
    static std::optional<ClockRecord> clockRecord(const QDateTime &time);

private slots:
    void setCfgBtnClickAct();
    void getCfgBtnClickAct();
    void setRtcBtnClickAct();
    void getRtcBtnClickAct();
    void calibTofBtnClickAct();
    void getTofBiasBtnClickAct();
    void resetSysBtnClickAct();
    void exportLogBtnClickAct();
    void exportVendorJsonBtnClickAct();
    void importVendorJsonBtnClickAct();

private:
    static Document vendorDocument();
    static ConfigBlock infoBlock();
    static ConfigBlock workBlock();

    QGroupBox *createInfoGroup();
    QGroupBox *createWorkGroup();
    QGroupBox *createOperationGroup();
};
