#pragma once

#include "config/configdialog.h"
#include "link/wire.h"

class QDateTime;

/// "Device Info": the vendor configuration document with the terminal's identity and network
/// settings, and the settings of its clock and distance sensor.
class vendorCfgDlg : public ConfigDialog
{
    Q_OBJECT

public:
    vendorCfgDlg(CmdClient *client, QTextEdit *infoText, QWidget *parent);

    /// Returns the time in the format of the terminal's clock, or nothing when the year is outside
    /// the clock's range 1970 to 2225.
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
