#pragma once

#include "widgets/devicedialog.h"

#include <vector>

/// Runs a remote enrollment and keeps what it brought as files in remote/ beside the program, a
/// folder that must exist.
class RemoteEnrollDlg : public DeviceDialog
{
    Q_OBJECT

public:
    RemoteEnrollDlg(CmdClient *client, QTextEdit *infoText, QWidget *parent);

private slots:
    void startBtnClickAct();
    void readBtnClickAct();

private:
    /// False when an image could not be written; one that the terminal refuses is passed over.
    bool readImage(int index, std::vector<uint8_t> *pair);
    void readFeatures(std::vector<uint8_t> *buffer);

    /// Sees to it that no late reply is taken for the next one, as long as the terminal answers.
    void resynchronize();

    quint32 userId;
    bool isReachable = true;
};
