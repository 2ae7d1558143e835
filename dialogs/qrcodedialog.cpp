#include "dialogs/qrcodedialog.h"

#include "data/qrcodes.h"
#include "dialogs/textfield.h"
#include "dialogs/ui_qrcodedialog.h"
#include "link/cmdclient.h"
#include "widgets/textlog.h"

#include <QInputDialog>
#include <QMessageBox>

#include <algorithm>
#include <functional>

namespace {

void fillTime(quint8 (&field)[7], const QDateTime &time)
{
    const QDate date = time.date();
    const QTime clock = time.time();
    const int parts[7] = {date.year() / 100, date.year() % 100, date.month(),  date.day(),
                          clock.hour(),      clock.minute(),    clock.second()};
    std::copy(std::begin(parts), std::end(parts), field);
}

/// Sets the time edit to UTC. The terminal has no time zone, so an hour that this computer skips
/// for summer time must stay available.
void useTimeWithoutZone(QDateTimeEdit *edit)
{
    const auto sameInUtc = [](const QDateTime &time) {
        return QDateTime(time.date(), time.time(), Qt::UTC);
    };
    const QDateTime value = sameInUtc(edit->dateTime());
    const QDateTime minimum = sameInUtc(edit->minimumDateTime());
    const QDateTime maximum = sameInUtc(edit->maximumDateTime());
    edit->setTimeSpec(Qt::UTC);
    edit->setDateTimeRange(minimum, maximum);
    edit->setDateTime(value);
}

} // namespace

QRCodeDialog::QRCodeDialog(CmdClient *cmdClient, QTextEdit *log, QWidget *parent)
    : DeviceDialog(cmdClient, log, parent),
      ui(std::make_unique<Ui::QRCodeDialog>())
{
    ui->setupUi(this);
    useTimeWithoutZone(ui->start_time_edit);
    useTimeWithoutZone(ui->end_time_edit);
}

QRCodeDialog::~QRCodeDialog() = default;

void QRCodeDialog::on_add_btn_clicked()
{
    QrEntry entry;
    const QString problem = fill(&entry);
    if (!problem.isEmpty())
        log(problem);
    else if (client->addQrCode(&entry))
        log(tr("QR code added."));
}

QString QRCodeDialog::fill(QrEntry *entry)
{
    if (ui->qr_note_line->text().trimmed().isEmpty())
        return tr("Empty QR code remarks.");
    if (!fillField(entry->remark, ui->qr_note_line))
        return tr("The QR code remarks are too long.");
    if (ui->qr_data_line->text().trimmed().isEmpty())
        return tr("Empty QR code data.");
    if (!fillField(entry->data, ui->qr_data_line))
        return tr("The QR code data is too long.");
    const QDateTime start = ui->start_time_edit->dateTime();
    const QDateTime end = ui->end_time_edit->dateTime();
    if (start >= end)
        return tr("There is an error in the expiration date data.");
    fillTime(entry->startTime, start);
    fillTime(entry->endTime, end);
    return QString();
}

void QRCodeDialog::on_readBtn_clicked()
{
    QByteArray text;
    if (!fetchQrCodeList(client, &text))
        return;
    log(tr("data loaded：%1").arg(text.size()));
    const std::optional<ListDocument<QrCode>> codes = readQrCodes(text);
    if (!codes)
        log(tr("json parsing failed."));
    else if (codes->isPresent)
        list(codes->entries);
}

void QRCodeDialog::list(const std::vector<QrCode> &codes)
{
    QStringList lines(tr("QR code record count：%1").arg(codes.size()));
    const QString line = tr("[%1][%2 %3]: %4");
    for (const QrCode &code : codes)
        lines.append(line.arg(code.remark, code.start, code.end, code.data));
    textlog::append(infoText, lines);
}

void QRCodeDialog::on_del_by_note_btn_clicked()
{
    askAndDelete(&CmdClient::deleteQrCodeByRemark, tr("QR remark："));
}

void QRCodeDialog::on_del_by_data_btn_clicked()
{
    askAndDelete(&CmdClient::deleteQrCodeByData, tr("QR info："));
}

void QRCodeDialog::askAndDelete(bool (CmdClient::*command)(const char *text), const QString &label)
{
    bool chosen = false;
    const QString text =
        QInputDialog::getText(this, tr("del QR"), label, QLineEdit::Normal, QString(), &chosen);
    if (chosen && std::invoke(command, client, text.toUtf8().constData()))
        log(tr("QR code deleted."));
}

void QRCodeDialog::on_clear_btn_clicked()
{
    const auto answer = QMessageBox::warning(this, tr("warn"), tr("sure to clear QR code data?"),
                                             QMessageBox::Yes | QMessageBox::No);
    if (answer != QMessageBox::No && client->clearQrCodes())
        log(tr("QR code data cleared."));
}
