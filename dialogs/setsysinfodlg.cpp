#include "dialogs/setsysinfodlg.h"

#include "link/cmdclient.h"
#include "widgets/controls.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QDate>
#include <QFileDialog>
#include <QLineEdit>
#include <QLocale>
#include <QRegExpValidator>
#include <QTime>

namespace {

constexpr QSize DialogSize(440, 100);
constexpr QSize LabelSize(50, 25);
constexpr QSize FieldSize(160, 25);
constexpr QSize ButtonSize(80, 25);

constexpr int SerialLength = static_cast<int>(wire::SerialNumberSize);

bool isLetterOrDigit(int c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

QLatin1Char randomCharacter()
{
    int c = 0;
    do {
        c = qrand() & 0xFF;
    } while (!isLetterOrDigit(c));
    return QLatin1Char(static_cast<char>(c));
}

} // namespace

setSysInfoDlg::setSysInfoDlg(CmdClient *cmdClient, QTextEdit *log, QWidget *parent)
    : DeviceDialog(cmdClient, log, parent)
{
    setWindowTitle(tr("System Settings"));
    setFixedSize(DialogSize);
    auto *layout = new QVBoxLayout(this);
    layout->addStretch(0);
    layout->addLayout(createSerialRow());
    layout->addStretch(0);
    layout->addLayout(createFirmwareRow());
    layout->addStretch(0);
    // Enter in a field must neither generate nor send a serial number.
    controls::keepEnterFromButtons(this);
}

QLayout *setSysInfoDlg::createSerialRow()
{
    serialEdit = controls::field(new QLineEdit, "serialEdit", FieldSize);
    serialEdit->setValidator(
        new QRegExpValidator(QRegExp(QStringLiteral("[A-Za-z0-9]*")), serialEdit));
    serialEdit->setMaxLength(SerialLength);

    auto *row = new QHBoxLayout;
    row->addWidget(controls::label(tr("serial number："), LabelSize, serialEdit), 1);
    row->addWidget(serialEdit, 1);
    row->addWidget(
        controls::button(tr("Rnd generate"), ButtonSize, this, SLOT(randomSerialBtnClickAct())), 2);
    row->addWidget(controls::button(tr("set"), ButtonSize, this, SLOT(setSerialBtnClickAct())), 2);
    return row;
}

QLayout *setSysInfoDlg::createFirmwareRow()
{
    firmwareEdit = controls::field(new QLineEdit, "firmwareEdit", FieldSize);
    firmwareEdit->setReadOnly(true);

    auto *row = new QHBoxLayout;
    row->addWidget(controls::label(tr("OTA file："), LabelSize, firmwareEdit));
    row->addWidget(firmwareEdit);
    row->addWidget(
        controls::button(tr("select file"), ButtonSize, this, SLOT(selectOtaFileBtnClickAct())), 2);
    row->addWidget(controls::button(tr("OTA upgrade"), ButtonSize, this, SLOT(otaBtnClickAct())));
    return row;
}

void setSysInfoDlg::randomSerialBtnClickAct()
{
    serialEdit->clear();
    qsrand(static_cast<uint>(QTime::currentTime().msecsSinceStartOfDay()));
    QString serial =
        QStringLiteral("KV") + QLocale::c().toString(QDate::currentDate(), QStringLiteral("yyMM"));
    while (serial.size() < SerialLength)
        serial.append(randomCharacter());
    serialEdit->setText(serial);
}

void setSysInfoDlg::setSerialBtnClickAct()
{
    const QByteArray serial = serialEdit->text().toLatin1();
    if (serial.size() < SerialLength || !serialEdit->hasAcceptableInput()) {
        log(tr("Wrong format of serial number."));
        return;
    }
    if (client->setSerialNumber(serial.constData(), static_cast<uint32_t>(serial.size())))
        log(tr("Serial number set succeded."));
}

void setSysInfoDlg::selectOtaFileBtnClickAct()
{
    const QString path =
        QFileDialog::getOpenFileName(this, tr("select fw"), QCoreApplication::applicationDirPath())
            .trimmed();
    if (!path.isEmpty())
        firmwareEdit->setText(path);
}

void setSysInfoDlg::otaBtnClickAct()
{
    log(tr("Not supported for now."));
}
