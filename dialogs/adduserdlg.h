#pragma once

#include "link/wire.h"
#include "widgets/devicedialog.h"

class QGridLayout;
class QLineEdit;
class QSpinBox;

/// Registers a user on the terminal.
class AddUserDlg : public DeviceDialog
{
    Q_OBJECT

public:
    AddUserDlg(CmdClient *client, QTextEdit *infoText, QWidget *parent);

private slots:
    void getEmptyUIDBtnClickAct();
    void createBtnClickAct();
    void cancelBtnClickAct();

private:
    QGridLayout *createGrid();
    QLayout *createButtonRow();
    /// Returns false and logs the reason when the name is missing or a text does not fit its field.
    bool fill(UserRecord *user);

    QSpinBox *userIdSpinBox;
    QLineEdit *userNameEdit;
    QLineEdit *cardEdit;
    QLineEdit *departmentEdit;
};
