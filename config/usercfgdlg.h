#pragma once

#include "config/configdialog.h"

/// "User Config": the user configuration document with the terminal's recognition mode, its address
/// and that of its server.
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
