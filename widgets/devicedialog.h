#pragma once

#include <QDialog>

class CmdClient;
class QTextEdit;

/// A dialog that works on the terminal and tells of it in the window's log. Client and log are
/// borrowed and outlive the dialog.
class DeviceDialog : public QDialog
{
    Q_OBJECT

protected:
    DeviceDialog(CmdClient *client, QTextEdit *infoText, QWidget *parent);

    void log(const QString &line);

    CmdClient *client;
    QTextEdit *infoText;
};
