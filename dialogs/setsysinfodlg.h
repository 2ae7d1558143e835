#pragma once

#include <QDialog>

class CmdClient;
class QLineEdit;
class QTextEdit;

/// Gives the terminal its serial number. Client and log are borrowed and outlive the dialog.
class setSysInfoDlg : public QDialog
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
    void log(const QString &line);

    CmdClient *client;
    QTextEdit *infoText;
    QLineEdit *serialEdit;
    QLineEdit *firmwareEdit;
};
