#pragma once

#include <QDialog>

#include <vector>

class CmdClient;
class QTextEdit;

/// Runs a remote enrollment and keeps what it brought as files in remote/ beside the program, a
/// folder that must exist. Client and log are borrowed and outlive the dialog.
class RemoteEnrollDlg : public QDialog
{
    Q_OBJECT

public:
    RemoteEnrollDlg(CmdClient *client, QTextEdit *infoText, QWidget *parent);

private slots:
    void startBtnClickAct();
    void readBtnClickAct();

private:
    void log(const QString &line);
    /// False when an image could not be written; one that the terminal refuses is passed over.
    bool readImage(int index, std::vector<uint8_t> *pair);
    void readFeatures(std::vector<uint8_t> *buffer);

    CmdClient *client;
    QTextEdit *infoText;
    quint32 userId;
};
