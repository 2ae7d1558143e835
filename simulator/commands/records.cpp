#include "simulator/commands/commands.h"

#include "simulator/state/device.h"
#include "simulator/state/json.h"

#include <cstdio>

namespace sim {
namespace {

constexpr int RecordsPerPage = static_cast<int>(wire::RecordsPerPage);
// Widths of a record's fields: its type with three reserved bytes, then four texts.
constexpr int TypeField = 4;
constexpr int ShortField = 16;
constexpr int LongField = 32;
static_assert(TypeField + 2 * ShortField + 2 * LongField == int{wire::RecordSize});

/// A page of them is asked for at a time, so that each must be quick.
void appendRecord(QByteArray &bytes, const AccessRecord &record)
{
    const QDate date = record.time.date();
    const QTime time = record.time.time();
    char day[ShortField] = {};
    std::snprintf(day, sizeof day, "%04d-%02d-%02d", date.year(), date.month(), date.day());
    char hour[ShortField] = {};
    std::snprintf(hour, sizeof hour, "%02d:%02d:%02d", time.hour(), time.minute(), time.second());

    bytes += static_cast<char>(record.type);
    bytes.append(TypeField - 1, '\0');
    bytes.append(day, ShortField);
    bytes.append(hour, ShortField);
    bytes += textField(record.userName, LongField);
    bytes += textField(record.department, LongField);
}

QString fileName(const Month &month)
{
    return QStringLiteral("record_%1_%2.dat")
        .arg(month.first, 4, 10, QLatin1Char('0'))
        .arg(month.second, 2, 10, QLatin1Char('0'));
}

Month readMonth(PayloadReader &reader)
{
    const int year = reader.u16();
    return {year, reader.u8()};
}

bool isMonth(const Month &month)
{
    return month.second >= 1 && month.second <= 12;
}

} // namespace

QByteArray getRecordFileList(Device &device, const Request & /*request*/)
{
    Json::Value document;
    Json::Value &files = document["record_files"] = Json::arrayValue;
    for (const auto &month : device.state.records.counts)
        files.append(fileName(month.first).toStdString());
    return dataReply(toText(document));
}

QByteArray deleteMonthRecords(Device &device, const Request &request)
{
    PayloadReader reader(request.payload);
    const Month month = readMonth(reader);
    if (!reader.exact() || !isMonth(month))
        return statusReply(Status::WrongParameter);
    device.state.records.counts.erase(month);
    device.changed(fileName(month) + QStringLiteral(" deleted"));
    return statusReply(Status::Ok);
}

QByteArray clearRecords(Device &device, const Request & /*request*/)
{
    device.state.records.counts.clear();
    device.changed(QStringLiteral("all records cleared"));
    return statusReply(Status::Ok);
}

QByteArray getMonthRecords(Device &device, const Request &request)
{
    PayloadReader reader(request.payload);
    const Month month = readMonth(reader);
    const quint32 start = reader.u32();
    if (!reader.exact() || !isMonth(month))
        return statusReply(Status::WrongParameter);
    const int count = recordCount(device.state.records, month);
    const int first = static_cast<int>(qMin(start, static_cast<quint32>(count)));
    const int end = qMin(count, first + RecordsPerPage);
    QByteArray payload = bytesOf16(static_cast<quint16>(end - first));
    payload.reserve(payload.size() + (end - first) * int{wire::RecordSize});
    for (int i = first; i < end; ++i)
        appendRecord(payload, recordAt(device.state.records, month, i));
    return dataReply(payload);
}

} // namespace sim
