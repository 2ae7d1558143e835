#include "simulator/commands.h"

#include "simulator/device.h"
#include "simulator/json.h"

namespace sim {
namespace {

constexpr int RecordsPerPage = 3000;
// Widths of a record's fields: its type with three reserved bytes, then four texts.
constexpr int TypeField = 4;
constexpr int ShortField = 16;
constexpr int LongField = 32;

QByteArray recordBytes(const AccessRecord &record)
{
    QByteArray bytes(TypeField, '\0');
    bytes[0] = static_cast<char>(record.type);
    bytes += textField(record.time.toString(QStringLiteral("yyyy-MM-dd")), ShortField);
    bytes += textField(record.time.toString(QStringLiteral("hh:mm:ss")), ShortField);
    bytes += textField(record.userName, LongField);
    bytes += textField(record.department, LongField);
    return bytes;
}

QString fileName(const Month &month)
{
    return QStringLiteral("record_%1_%2.dat")
        .arg(month.first)
        .arg(month.second, 2, 10, QLatin1Char('0'));
}

std::string timeText(const QDateTime &time)
{
    return time.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")).toStdString();
}

Json::Value listEntry(const QrCode &code)
{
    Json::Value entry;
    entry["name"] = code.note.toStdString();
    entry["st"] = timeText(code.start);
    entry["et"] = timeText(code.end);
    entry["QR"] = code.data.toStdString();
    return entry;
}

QVector<AccessRecord> recordsOf(const Device &device, const Month &month)
{
    const auto found = device.records.find(month);
    return found == device.records.end() ? QVector<AccessRecord>() : found->second;
}

} // namespace

QByteArray getRecordFileList(Device &device, const Request & /*request*/)
{
    Json::Value document;
    Json::Value &files = document["record_files"] = Json::arrayValue;
    for (const auto &month : device.records)
        files.append(fileName(month.first).toStdString());
    return dataReply(toText(document));
}

QByteArray clearRecords(Device &device, const Request & /*request*/)
{
    device.records.clear();
    device.announce(QStringLiteral("all records cleared"));
    return statusReply(Status::Ok);
}

QByteArray getMonthRecords(Device &device, const Request &request)
{
    PayloadReader reader(request.payload);
    const int year = reader.u16();
    const int month = reader.u8();
    const quint32 start = reader.u32();
    if (!reader.exact())
        return statusReply(Status::WrongParameter);
    const QVector<AccessRecord> all = recordsOf(device, {year, month});
    const int first = static_cast<int>(qMin(start, static_cast<quint32>(all.size())));
    const QVector<AccessRecord> page = all.mid(first, RecordsPerPage);
    QByteArray payload = bytesOf16(static_cast<quint16>(page.size()));
    for (const AccessRecord &record : page)
        payload += recordBytes(record);
    return dataReply(payload);
}

QByteArray clearQrCodes(Device &device, const Request & /*request*/)
{
    device.qrCodes.clear();
    device.announce(QStringLiteral("all QR codes cleared"));
    return statusReply(Status::Ok);
}

QByteArray getQrCodeList(Device &device, const Request & /*request*/)
{
    Json::Value document;
    Json::Value &list = document["qrcode data"] = Json::arrayValue;
    for (const QrCode &code : qAsConst(device.qrCodes))
        list.append(listEntry(code));
    return dataReply(toText(document));
}

} // namespace sim
