#include "simulator/commands/command.h"
#include "simulator/state/documents.h"

#include <cstdio>

namespace sim {
namespace {

using C = wire::Command;

constexpr int RecordsPerPage = static_cast<int>(wire::RecordsPerPage);
// Widths of a record's fields: its type with three reserved bytes, then four texts.
constexpr int TypeField = 4;
constexpr int ShortField = 16;
constexpr int LongField = 32;
static_assert(TypeField + 2 * ShortField + 2 * LongField == int{wire::RecordSize});

/// Writes its digits without Qt's date formats, because a page of 3000 records must be quick.
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
    return QString::asprintf("record_%04d_%02d.dat", month.first, month.second);
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

QByteArray getRecordFileList(Device &device, PayloadReader & /*reader*/)
{
    Json::Value document;
    Json::Value &files = document["record_files"] = Json::arrayValue;
    for (const auto &month : device.state.records.months)
        files.append(fileName(month.first).toStdString());
    return dataReply(toText(document));
}

QByteArray deleteMonthRecords(Device &device, PayloadReader &reader)
{
    const Month month = readMonth(reader);
    if (!reader.exact() || !isMonth(month))
        return statusReply(Status::WrongParameter);
    device.state.records.months.erase(month);
    return changed(device, fileName(month) + " deleted");
}

QByteArray getMonthRecords(Device &device, PayloadReader &reader)
{
    const Month month = readMonth(reader);
    const quint32 start = reader.u32();
    if (!reader.exact() || !isMonth(month))
        return statusReply(Status::WrongParameter);
    const int count = recordCount(device.state.records, month);
    const int first = static_cast<int>(qMin(start, static_cast<quint32>(count)));
    const int end = qMin(count, first + RecordsPerPage);
    QByteArray payload = bytesOf(static_cast<quint16>(end - first));
    payload.reserve(payload.size() + (end - first) * int{wire::RecordSize});
    for (int i = first; i < end; ++i)
        appendRecord(payload, recordAt(device.state.records, month, i));
    return dataReply(payload);
}

} // namespace

const QVector<Command> RecordCommands{
    {C::GetRecordFileList, ReplyForm::Status, "getRecordFileList", getRecordFileList},
    {C::DeleteMonthRecords, ReplyForm::Status, "deleteMonthRecords", deleteMonthRecords},
    {C::ClearRecords, ReplyForm::Status, "clearRecords",
     [](Device &device, PayloadReader &) {
         return cleared(device, device.state.records.months, "all records cleared");
     }},
    {C::GetMonthRecords, ReplyForm::Status, "getMonthRecords", getMonthRecords},
};

} // namespace sim
