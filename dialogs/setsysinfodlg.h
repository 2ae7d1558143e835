#pragma once

#include "widgets/devicedialog.h"

class QLineEdit;

/// "System Settings": sets the terminal's serial number.
class setSysInfoDlg : public DeviceDialog
{
    Q_OBJECT

public:
    setSysInfoDlg(CmdClient *client, QTextEdit *infoText, QWidget *parent);

private slots:
    void setSerialBtnClickAct();
    void randomSerialBtnClickAct();
    void selectOtaFileBtnClickAct();
    void otaBtnClickAct();

private:
    QLayout *createSerialRow();
    QLayout *createFirmwareRow();

    QLineEdit *serialEdit;
    QLineEdit *firmwareEdit;
};
