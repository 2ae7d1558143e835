#include "simulator/commands/command.h"
#include "simulator/state/documents.h"

#include <algorithm>

namespace sim {
namespace {

using C = wire::Command;

// The text by which codes are deleted, by the request's selector.
constexpr QString QrCode::*Selectable[] = {nullptr, &QrCode::note, &QrCode::data};

/// Century, year of the century, month, day, hour, minute, second; returns an invalid time when
/// there is no such moment.
QDateTime readTime(PayloadReader &reader)
{
    const int century = reader.u8();
    const int year = reader.u8();
    const int month = reader.u8();
    const QDate date(100 * century + year, month, reader.u8());
    const int hour = reader.u8();
    const int minute = reader.u8();
    const QTime time(hour, minute, reader.u8());
    const bool isReal = century < 100 && year < 100 && date.isValid() && time.isValid();
    return isReal ? QDateTime(date, time, Qt::UTC) : QDateTime();
}

QByteArray addQrCode(Device &device, PayloadReader &reader)
{
    QVector<QrCode> &codes = device.state.qrCodes;
    QrCode code;
    code.note = reader.text(NameField);
    code.start = readTime(reader);
    code.end = readTime(reader);
    code.data = reader.text(QrDataField);
    if (!reader.exact() || !isUsable(code))
        return statusReply(Status::WrongParameter);
    if (std::any_of(codes.begin(), codes.end(),
                    [&](const QrCode &known) { return known.data == code.data; }))
        return statusReply(Status::QrDataExists);
    if (codes.size() >= device.options().maxQrCodes)
        return statusReply(Status::QrCodesFull);
    codes.append(code);
    if (qrListFits(device.state))
        return changed(device, "QR code added: " + code.note);
    codes.removeLast();
    return statusReply(Status::QrCodesFull);
}

QByteArray deleteQrCode(Device &device, PayloadReader &reader)
{
    QVector<QrCode> &codes = device.state.qrCodes;
    const size_t selector = reader.u8();
    const QString key = reader.text(static_cast<int>(wire::QrKeySize));
    if (!reader.exact() || key.isEmpty() || selector == 0 || selector >= std::size(Selectable))
        return statusReply(Status::WrongParameter);
    const auto rest = std::remove_if(codes.begin(), codes.end(), [&](const QrCode &code) {
        return code.*Selectable[selector] == key;
    });
    if (rest == codes.end())
        return statusReply(Status::NoSuchQrCode);
    codes.erase(rest, codes.end());
    return changed(device, "QR code deleted");
}

} // namespace

const QVector<Command> QrCommands{
    {C::AddQrCode, ReplyForm::Status, "addQrCode", addQrCode},
    {C::DeleteQrCode, ReplyForm::Status, "deleteQrCode", deleteQrCode},
    {C::ClearQrCodes, ReplyForm::Status, "clearQrCodes",
     [](Device &device, PayloadReader &) {
         return cleared(device, device.state.qrCodes, "all QR codes cleared");
     }},
    {C::GetQrCodeList, ReplyForm::Status, "getQrCodeList",
     [](Device &device, PayloadReader &) { return dataReply(qrListText(device.state)); }},
};

} // namespace sim
