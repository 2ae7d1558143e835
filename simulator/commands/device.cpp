#include "simulator/commands/command.h"
#include "simulator/state/documents.h"

namespace sim {
namespace {

using C = wire::Command;
using D = Documents;

constexpr int FirstYear = 1970; // carried as year - 1970

QByteArray getRtcTime(Device &device, PayloadReader & /*reader*/)
{
    const QDateTime now = device.clock();
    const QDate date = now.date();
    const QTime time = now.time();
    QByteArray record;
    for (const int part : {date.year() - FirstYear, date.month(), date.day(), time.hour(),
                           time.minute(), time.second()})
        record += static_cast<char>(part);
    return plainReply(record);
}

QByteArray setRtcTime(Device &device, PayloadReader &reader)
{
    const int year = FirstYear + reader.u8();
    const int month = reader.u8();
    const QDate date(year, month, reader.u8());
    const int hour = reader.u8();
    const int minute = reader.u8();
    const QDateTime time(date, QTime(hour, minute, reader.u8()));
    if (!reader.exact() || !time.isValid())
        return statusReply(Status::WrongParameter);
    device.setClock(time);
    return changed(device, "clock set");
}

QByteArray setDebugAddress(Device &device, PayloadReader &reader)
{
    const QHostAddress address(reader.u32());
    const quint16 port = reader.u16();
    if (!reader.exact())
        return statusReply(Status::WrongParameter);
    emit device.debugAddressSet(address, port);
    return statusReply(Status::Ok);
}

QByteArray setTofBias(Device &device, PayloadReader &reader)
{
    const int bias = reader.u16() - wire::TofBiasOffset;
    if (!reader.exact())
        return statusReply(Status::WrongParameter);
    device.state.sensorBias = bias;
    return changed(device, QStringLiteral("distance sensor bias set to %1 mm").arg(bias));
}

template <Json::Value Documents::*document>
QByteArray getDocument(Device &device, PayloadReader & /*reader*/)
{
    return dataReply(toText(device.state.documents.*document));
}

template <Json::Value Documents::*document>
QByteArray setDocument(Device &device, PayloadReader &reader)
{
    Json::Value update;
    Json::Value merged = device.state.documents.*document;
    if (!parseObject(reader.remainder(), &update))
        return statusReply(Status::WrongParameter);
    mergeKnown(merged, update);
    if (toText(merged).size() > LongestDocument)
        return statusReply(Status::WrongParameter);
    device.state.documents.*document = merged;
    return changed(device, "configuration changed");
}

QByteArray setSerialNumber(Device &device, PayloadReader &reader)
{
    const QString serial = QString::fromLatin1(reader.bytes(SerialLength));
    const bool isTerminated = reader.u8() == 0;
    if (!reader.exact() || !isTerminated || !isSerialNumber(serial))
        return statusReply(Status::WrongParameter);
    device.state.serialNumber = serial;
    return changed(device, "serial number written");
}

} // namespace

const QVector<Command> DeviceCommands{
    {C::GetTofDistance, ReplyForm::Plain, "getTofDistance",
     [](Device &device, PayloadReader &) { return plainReply(bytesOf(device.palmHeight())); }},
    {C::GetRtcTime, ReplyForm::Plain, "getRtcTime", getRtcTime},
    {C::SetRtcTime, ReplyForm::Status, "setRtcTime", setRtcTime},
    {C::SetDebugAddress, ReplyForm::Status, "setDebugAddress", setDebugAddress},
    {C::SetTofBias, ReplyForm::Status, "setTofBias", setTofBias},
    {C::GetTofBias, ReplyForm::Plain, "getTofBias",
     [](Device &device, PayloadReader &) {
         return plainReply(
             bytesOf(static_cast<quint16>(device.state.sensorBias + wire::TofBiasOffset)));
     }},
    {C::GetSystemInfo, ReplyForm::Status, "getSystemInfo",
     [](Device &device, PayloadReader &) {
         return dataReply(toText(systemInfoDocument(device.options(), device.state.serialNumber)));
     }},
    {C::SetUserConfig, ReplyForm::Status, "setUserConfig", setDocument<&D::user>},
    {C::GetUserConfig, ReplyForm::Status, "getUserConfig", getDocument<&D::user>},
    {C::SetVendorConfig, ReplyForm::Status, "setVendorConfig", setDocument<&D::vendor>},
    {C::GetVendorConfig, ReplyForm::Status, "getVendorConfig", getDocument<&D::vendor>},
    {C::SetOutputConfig, ReplyForm::Status, "setOutputConfig", setDocument<&D::output>},
    {C::GetOutputConfig, ReplyForm::Status, "getOutputConfig", getDocument<&D::output>},
    {C::SetSerialNumber, ReplyForm::Status, "setSerialNumber", setSerialNumber},
    {C::Reboot, ReplyForm::Status, "rebootDevice",
     [](Device &device, PayloadReader &) {
         device.reboot();
         return statusReply(Status::Ok);
     }},
};

} // namespace sim
