#pragma once

#include "link/wire.h"

#include <QDialog>

class CmdClient;
class QGridLayout;
class QLineEdit;
class QSpinBox;
class QTextEdit;

/// Registers a user on the terminal. Client and log are borrowed and outlive the dialog.
class AddUserDlg : public QDialog
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
    void log(const QString &line);
    /// False, with a line in the log, when the name is missing or a text does not fit its field.
    bool fill(UserRecord *user);

    CmdClient *client;
    QTextEdit *infoText;
    QSpinBox *userIdSpinBox;
    QLineEdit *userNameEdit;
    QLineEdit *cardEdit;
    QLineEdit *departmentEdit;
};
