#include "link/cmdclient.h"

namespace {

// Replies with a value have it in the place of the status.
constexpr size_t ValueOffset = wire::HeadSize;

constexpr size_t AddressSize = 4;

constexpr StatusText ModeTexts[] = {
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "Mode set failed: %1"),
     StatusText::Character},
};
constexpr StatusText RtcTexts[] = {
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "Fail to set RTC time：%1"),
     StatusText::Character},
};
constexpr StatusText DebugAddressTexts[] = {
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "Fail to set Debug address：%1"),
     StatusText::Character},
};
constexpr StatusText TofBiasTexts[] = {
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "Fail to set TOF correct value：%1"),
     StatusText::Character},
};
constexpr StatusText RebootTexts[] = {
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "Fail to reboot the system：%1"),
     StatusText::Character},
};
constexpr StatusText SerialTexts[] = {
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "Unknown error:%1"), StatusText::Decimal},
};

} // namespace

bool CmdClient::getTofDistance(uint16_t *out)
{
    if (!getValue(wire::Command::GetTofDistance, sizeof *out))
        return false;
    *out = reply().u16(ValueOffset);
    return true;
}

bool CmdClient::setMode(uint8_t mode)
{
    return command(request(wire::Command::SetMode).u8(mode), SilentStatusWait, ModeTexts);
}

bool CmdClient::getMode(uint8_t *out)
{
    if (!getValue(wire::Command::GetMode, sizeof *out))
        return false;
    *out = reply().u8(ValueOffset);
    return true;
}

bool CmdClient::getRtcTime(ClockRecord *out)
{
    if (!getValue(wire::Command::GetRtcTime, sizeof *out))
        return false;
    return reply().copy(ValueOffset, sizeof *out, reinterpret_cast<uint8_t *>(out));
}

bool CmdClient::setRtcTime(const ClockRecord *time)
{
    return command(request(wire::Command::SetRtcTime).bytes(time, sizeof *time), SilentStatusWait,
                   RtcTexts);
}

bool CmdClient::setDebugAddress(const uint8_t ip[4], uint16_t port)
{
    return command(request(wire::Command::SetDebugAddress).bytes(ip, AddressSize).u16(port),
                   SilentStatusWait, DebugAddressTexts);
}

bool CmdClient::setTofBias(int16_t bias)
{
    const auto carried = static_cast<uint16_t>(bias + wire::TofBiasOffset);
    return command(request(wire::Command::SetTofBias).u16(carried), SilentStatusWait, TofBiasTexts);
}

bool CmdClient::getTofBias(int32_t *out)
{
    if (!getValue(wire::Command::GetTofBias, sizeof(uint16_t)))
        return false;
    *out = reply().u16(ValueOffset) - wire::TofBiasOffset;
    return true;
}

bool CmdClient::setSerialNumber(const char *serial, uint32_t length)
{
    return command(request(wire::Command::SetSerialNumber)
                       .padded(serial, length, wire::SerialNumberSize)
                       .u8(0),
                   StatusWait, SerialTexts);
}

bool CmdClient::rebootDevice()
{
    return command(request(wire::Command::Reboot), StatusWait, RebootTexts);
}

bool CmdClient::getValue(wire::Command command, size_t size)
{
    return exchange(request(command), {Wait::Ack, ValueOffset + size, true});
}
