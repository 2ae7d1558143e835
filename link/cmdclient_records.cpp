#include "link/cmdclient.h"

namespace {

constexpr size_t MaxPageReply = 320000;

// A page has its status, the number of its records, then the records.
constexpr size_t CountOffset = wire::PayloadOffset;
constexpr uint32_t BytesBeforeRecords = 3;

} // namespace

bool CmdClient::getRecordFileList(char *out, uint32_t *outLen, size_t capacity)
{
    return getDocument(wire::Command::GetRecordFileList, out, outLen, capacity);
}

bool CmdClient::deleteMonthRecords(uint16_t year, uint8_t month)
{
    return command(request(wire::Command::DeleteMonthRecords).u16(year).u8(month), StatusWait,
                   UnknownError);
}

bool CmdClient::clearRecords()
{
    return command(request(wire::Command::ClearRecords), StatusWait, UnknownError);
}

bool CmdClient::getMonthRecords(uint16_t year, uint8_t month, uint8_t *out, size_t capacity,
                                uint32_t startIndex, uint32_t *outCount, int rounds)
{
    if (!exchange(request(wire::Command::GetMonthRecords).u16(year).u8(month).u32(startIndex),
                  {Wait::Reply, MaxPageReply, false, rounds}))
        return false;
    // A page that announces more records than it has is refused.
    const uint32_t count = reply().u16(CountOffset);
    uint32_t length = 0;
    if (!acceptedData(UnknownErrorNumber, BytesBeforeRecords, out, &length, capacity,
                      count * wire::RecordSize))
        return false;
    *outCount = count;
    log(tr("The loaded data count：%1").arg(reply().declaredLength()));
    return true;
}
