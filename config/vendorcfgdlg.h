#pragma once

#include "config/configdialog.h"

/// "Device Info": the terminal's identity and network settings, which make up the vendor
/// configuration document, and its upkeep: clock and distance sensor.
class vendorCfgDlg : public ConfigDialog
{
    Q_OBJECT

public:
    vendorCfgDlg(CmdClient *client, QTextEdit *infoText, QWidget *parent);

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
