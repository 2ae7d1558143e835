#include "dialogs/adduserdlg.h"

#include "dialogs/textfield.h"
#include "link/cmdclient.h"
#include "widgets/controls.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QLineEdit>
#include <QRegExpValidator>
#include <QSpinBox>

namespace {

constexpr QSize DialogSize(300, 185);
constexpr QSize LabelSize(50, 25);
constexpr QSize FieldSize(100, 25);
constexpr QSize EmptyIdSize(80, 27);
constexpr QSize ButtonSize(80, 28);

constexpr int MaxTextLength = 31;
constexpr int MaxCardDigits = 10;

QLineEdit *createEdit(const char *name, int maxLength)
{
    auto *edit = controls::field(new QLineEdit, name, FieldSize);
    edit->setMaxLength(maxLength);
    return edit;
}

} // namespace

AddUserDlg::AddUserDlg(CmdClient *cmdClient, QTextEdit *log, QWidget *parent)
    : DeviceDialog(cmdClient, log, parent)
{
    setWindowTitle(tr("Add User"));
    setFixedSize(DialogSize);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(createGrid());
    layout->addLayout(createButtonRow());
}

QGridLayout *AddUserDlg::createGrid()
{
    userIdSpinBox = controls::field(new QSpinBox, "userIdSpinBox", FieldSize);
    userIdSpinBox->setRange(MinUserId, MaxUserId);
    userNameEdit = createEdit("userNameEdit", MaxTextLength);
    cardEdit = createEdit("cardEdit", MaxCardDigits);
    cardEdit->setValidator(new QRegExpValidator(QRegExp(QStringLiteral("[0-9]*")), cardEdit));
    departmentEdit = createEdit("departmentEdit", MaxTextLength);

    auto *grid = new QGridLayout;
    controls::addField(grid, 0, 0, tr("user ID："), LabelSize, userIdSpinBox);
    grid->addWidget(
        controls::button(tr("Get Empty ID"), EmptyIdSize, this, SLOT(getEmptyUIDBtnClickAct())), 0,
        2);
    controls::addField(grid, 1, 0, tr("usrname: "), LabelSize, userNameEdit);
    controls::addField(grid, 2, 0, tr("card："), LabelSize, cardEdit);
    controls::addField(grid, 3, 0, tr("dept："), LabelSize, departmentEdit);
    return grid;
}

QLayout *AddUserDlg::createButtonRow()
{
    QPushButton *create =
        controls::button(tr("Create"), ButtonSize, this, SLOT(createBtnClickAct()));
    create->setDefault(true);
    auto *row = new QHBoxLayout;
    row->addStretch(3);
    row->addWidget(create, 2);
    row->addStretch(0);
    row->addWidget(controls::button(tr("Exit"), ButtonSize, this, SLOT(cancelBtnClickAct())), 2);
    return row;
}

void AddUserDlg::getEmptyUIDBtnClickAct()
{
    uint32_t userId = 0;
    if (!client->getEmptyUserId(&userId))
        return;
    log(tr("Empty user ID getting succeeded."));
    userIdSpinBox->setValue(static_cast<int>(qMin<uint32_t>(userId, MaxUserId)));
}

void AddUserDlg::createBtnClickAct()
{
    UserRecord user;
    if (!fill(&user))
        return;
    if (client->addUser(&user)) {
        log(tr("User created."));
        close();
    } else {
        log(tr("User creating failed."));
    }
}

bool AddUserDlg::fill(UserRecord *user)
{
    if (userNameEdit->text().isEmpty()) {
        log(tr("Username can't be empty."));
        return false;
    }
    user->userId = static_cast<quint32>(userIdSpinBox->value());
    user->cardNumber = cardEdit->text().toUInt();
    if (!fillField(user->name, userNameEdit)) {
        log(tr("The username is too long."));
        return false;
    }
    if (!fillField(user->department, departmentEdit)) {
        log(tr("The department name is too long."));
        return false;
    }
    return true;
}

void AddUserDlg::cancelBtnClickAct()
{
    close();
}
