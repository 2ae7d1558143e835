#include "link/cmdclient.h"

#include <cstring>

namespace {

constexpr size_t MaxQrListReply = 614400;
constexpr int QrListRounds = 2000;

constexpr uint8_t ByRemark = 1;
constexpr uint8_t ByData = 2;

constexpr StatusText AddTexts[] = {
    {30, QT_TRANSLATE_NOOP("CmdClient", "The QR code database is full.")},
    {31, QT_TRANSLATE_NOOP("CmdClient", "Duplicate QR code data.")},
    {2, QT_TRANSLATE_NOOP("CmdClient", "Wrong parameter.")},
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "Unknown error.")},
};
constexpr StatusText DeleteByRemarkTexts[] = {
    {2, QT_TRANSLATE_NOOP("CmdClient", "Wrong parameter.")},
    {32, QT_TRANSLATE_NOOP("CmdClient", "QR code doesn't exist.")},
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "Unknown error.")},
};
constexpr StatusText DeleteByDataTexts[] = {
    {2, QT_TRANSLATE_NOOP("CmdClient", "Wrong parameter.")},
    {32, QT_TRANSLATE_NOOP("CmdClient", "QR code doesn't exist.")},
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "unknown error.")},
};

} // namespace

bool CmdClient::addQrCode(const QrEntry *entry)
{
    return command(request(wire::Command::AddQrCode)
                       .bytes(entry->remark, sizeof entry->remark)
                       .bytes(entry->startTime, sizeof entry->startTime)
                       .bytes(entry->endTime, sizeof entry->endTime)
                       .bytes(entry->data, sizeof entry->data),
                   StatusWait, AddTexts);
}

bool CmdClient::clearQrCodes()
{
    return command(request(wire::Command::ClearQrCodes), StatusWait, UnknownError);
}

bool CmdClient::deleteQrCodeByRemark(const char *text)
{
    return deleteQrCode(ByRemark, text, tr("参数错误"), DeleteByRemarkTexts);
}

bool CmdClient::deleteQrCodeByData(const char *text)
{
    return deleteQrCode(ByData, text, tr("Wrong parameter."), DeleteByDataTexts);
}

bool CmdClient::deleteQrCode(uint8_t selector, const char *text, const QString &tooLong,
                             const StatusText *texts)
{
    const size_t length = std::strlen(text);
    if (length > wire::QrKeySize) {
        log(tooLong);
        return false;
    }
    return command(
        request(wire::Command::DeleteQrCode).u8(selector).padded(text, length, wire::QrKeySize),
        StatusWait, texts);
}

bool CmdClient::getQrCodeList(char *out, uint32_t *outLen, size_t capacity)
{
    return getText(wire::Command::GetQrCodeList, {Wait::Reply, MaxQrListReply, false, QrListRounds},
                   UnknownError, out, outLen, capacity);
}
