#pragma once

#include "config/configdialog.h"

/// "User Config": what the terminal recognises users by, its own address and its server's, which
/// make up the user configuration document.
class UserCfgDlg : public ConfigDialog
{
    Q_OBJECT

public:
    UserCfgDlg(CmdClient *client, QTextEdit *infoText, QWidget *parent);

private:
    static Document userDocument();
    static ConfigBlock userBlock();

    QGroupBox *createGroup(const QString &title, int grid, QSize labelSize);
};
