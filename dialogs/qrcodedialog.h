#pragma once

#include "link/wire.h"
#include "widgets/devicedialog.h"

#include <memory>
#include <vector>

struct QrCode;

namespace Ui {
class QRCodeDialog;
}

/// "QR Code Recognit": adds, lists and removes the QR codes that the terminal accepts.
class QRCodeDialog : public DeviceDialog
{
    Q_OBJECT

public:
    QRCodeDialog(CmdClient *client, QTextEdit *infoText, QWidget *parent);
    ~QRCodeDialog() override;

private slots:
    void on_add_btn_clicked();
    void on_readBtn_clicked();
    void on_del_by_note_btn_clicked();
    void on_del_by_data_btn_clicked();
    void on_clear_btn_clicked();

private:
    /// Returns what is wrong with the texts or the times, or an empty string.
    QString fill(QrEntry *entry);
    void list(const std::vector<QrCode> &codes);
    void askAndDelete(bool (CmdClient::*command)(const char *text), const QString &label);

    std::unique_ptr<Ui::QRCodeDialog> ui;
};
