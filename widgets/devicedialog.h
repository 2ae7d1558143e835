#pragma once

#include <QDialog>

class CmdClient;
class QTextEdit;

/// A dialog that sends commands to the terminal and reports in the window's log. Client and log are
/// borrowed and must outlive the dialog.
class DeviceDialog : public QDialog
{
    Q_OBJECT

protected:
    DeviceDialog(CmdClient *client, QTextEdit *infoText, QWidget *parent);

    void log(const QString &line);

    CmdClient *client;
    QTextEdit *infoText;
};
