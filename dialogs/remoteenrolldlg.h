#pragma once

#include "widgets/devicedialog.h"

#include <vector>

/// Runs a remote enrollment and saves its images and features in remote/ beside the program. The
/// folder must exist.
class RemoteEnrollDlg : public DeviceDialog
{
    Q_OBJECT

public:
    RemoteEnrollDlg(CmdClient *client, QTextEdit *infoText, QWidget *parent);

private slots:
    void startBtnClickAct();
    void readBtnClickAct();

private:
    /// Returns false when an image could not be written. Skips an image that the terminal refuses.
    bool readImage(int index, std::vector<uint8_t> *pair);
    void readFeatures(std::vector<uint8_t> *buffer);

    /// Sees to it that no late reply is taken for the next one, as long as the terminal answers.
    void resynchronize();

    quint32 userId;
    bool isReachable = true;
};
