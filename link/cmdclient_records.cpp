#include "link/cmdclient.h"

namespace {

constexpr size_t MaxPageReply = 320000;

// Behind a page's status: the number of its records, then the records.
constexpr size_t CountOffset = wire::PayloadOffset;
constexpr uint32_t BytesBeforeRecords = 3;

constexpr StatusText ChangeTexts[] = {
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "Unknown error.")},
};
constexpr StatusText PageTexts[] = {
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "Unknown error: %1"),
     StatusText::Decimal},
};

} // namespace

bool CmdClient::deleteMonthRecords(uint16_t year, uint8_t month)
{
    return command(request(wire::Command::DeleteMonthRecords).u16(year).u8(month), StatusWait,
                   ChangeTexts);
}

bool CmdClient::clearRecords()
{
    return command(request(wire::Command::ClearRecords), StatusWait, ChangeTexts);
}

bool CmdClient::getMonthRecords(uint16_t year, uint8_t month, uint8_t *out, size_t capacity,
                                uint32_t startIndex, uint32_t *outCount)
{
    if (!exchange(request(wire::Command::GetMonthRecords).u16(year).u8(month).u32(startIndex),
                  {Wait::Reply, MaxPageReply}))
        return false;
    // A page that counts more records than it brings is none.
    const uint32_t count = reply().u16(CountOffset);
    uint32_t length = 0;
    if (!acceptedData(PageTexts, BytesBeforeRecords, out, &length, capacity,
                      count * wire::RecordSize))
        return false;
    *outCount = count;
    log(tr("The loaded data count：%1").arg(reply().declaredLength()));
    return true;
}
