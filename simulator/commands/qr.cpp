#include "simulator/commands/commands.h"

#include "simulator/state/device.h"
#include "simulator/state/lists.h"

#include <algorithm>

namespace sim {
namespace {

constexpr int KeyField = static_cast<int>(wire::QrKeySize);

// The texts by which codes are deleted, and the selectors that stand for them.
using Text = QString QrCode::*;
constexpr Text Selectable[] = {nullptr, &QrCode::note, &QrCode::data};

/// Century, year of the century, month, day, hour, minute, second; invalid if there is none such.
QDateTime readTime(PayloadReader &reader)
{
    const int century = reader.u8();
    const int year = reader.u8();
    const int month = reader.u8();
    const QDate date(100 * century + year, month, reader.u8());
    const int hour = reader.u8();
    const int minute = reader.u8();
    const QTime time(hour, minute, reader.u8());
    const bool real = century < 100 && year < 100 && date.isValid() && time.isValid();
    return real ? QDateTime(date, time, Qt::UTC) : QDateTime();
}

Status add(Device &device, const QrCode &code)
{
    QVector<QrCode> &codes = device.state.qrCodes;
    if (std::any_of(codes.begin(), codes.end(),
                    [&](const QrCode &known) { return known.data == code.data; }))
        return Status::QrDataExists;
    if (codes.size() >= device.options().maxQrCodes)
        return Status::QrCodesFull;
    codes.append(code);
    if (!qrListFits(device.state)) {
        codes.removeLast();
        return Status::QrCodesFull;
    }
    device.changed(QStringLiteral("QR code added: ") + code.note);
    return Status::Ok;
}

Status remove(Device &device, Text text, const QString &key)
{
    QVector<QrCode> &codes = device.state.qrCodes;
    const auto rest = std::remove_if(codes.begin(), codes.end(),
                                     [&](const QrCode &code) { return code.*text == key; });
    if (rest == codes.end())
        return Status::NoSuchQrCode;
    codes.erase(rest, codes.end());
    device.changed(QStringLiteral("QR code deleted"));
    return Status::Ok;
}

} // namespace

QByteArray addQrCode(Device &device, const Request &request)
{
    PayloadReader reader(request.payload);
    QrCode code;
    code.note = reader.text(NameField);
    code.start = readTime(reader);
    code.end = readTime(reader);
    code.data = reader.text(QrDataField);
    if (!reader.exact() || !isUsable(code))
        return statusReply(Status::WrongParameter);
    return statusReply(add(device, code));
}

QByteArray deleteQrCode(Device &device, const Request &request)
{
    PayloadReader reader(request.payload);
    const size_t selector = reader.u8();
    const QString key = reader.text(KeyField);
    if (!reader.exact() || key.isEmpty() || selector == 0 || selector >= std::size(Selectable))
        return statusReply(Status::WrongParameter);
    return statusReply(remove(device, Selectable[selector], key));
}

QByteArray clearQrCodes(Device &device, const Request & /*request*/)
{
    device.state.qrCodes.clear();
    device.changed(QStringLiteral("all QR codes cleared"));
    return statusReply(Status::Ok);
}

QByteArray getQrCodeList(Device &device, const Request & /*request*/)
{
    return dataReply(qrListText(device.state));
}

} // namespace sim
