#include "simulator/commands/commands.h"

#include "simulator/state/device.h"
#include "simulator/state/documents.h"
#include "simulator/state/json.h"

namespace sim {
namespace {

constexpr int FirstYear = 1970; // carried as year - 1970
constexpr int SerialField = 16; // a zero byte behind the serial number

void appendByte(QByteArray &bytes, int value)
{
    bytes.append(static_cast<char>(value));
}

QByteArray clockRecord(const QDateTime &time)
{
    QByteArray bytes;
    appendByte(bytes, time.date().year() - FirstYear);
    appendByte(bytes, time.date().month());
    appendByte(bytes, time.date().day());
    appendByte(bytes, time.time().hour());
    appendByte(bytes, time.time().minute());
    appendByte(bytes, time.time().second());
    return bytes;
}

QDateTime readClockRecord(PayloadReader &reader)
{
    const int year = FirstYear + reader.u8();
    const int month = reader.u8();
    const QDate date(year, month, reader.u8());
    const int hour = reader.u8();
    const int minute = reader.u8();
    return {date, QTime(hour, minute, reader.u8())};
}

QByteArray changeDocument(Device &device, Json::Value &document, const Request &request)
{
    Json::Value update;
    if (!parseObject(request.payload, &update))
        return statusReply(Status::WrongParameter);
    Json::Value changed = document;
    mergeKnown(changed, update);
    if (toText(changed).size() > LongestDocument)
        return statusReply(Status::WrongParameter);
    document = changed;
    device.changed(QStringLiteral("configuration changed"));
    return statusReply(Status::Ok);
}

} // namespace

QByteArray getTofDistance(Device &device, const Request & /*request*/)
{
    return plainReply(bytesOf16(device.palmHeight()));
}

QByteArray getRtcTime(Device &device, const Request & /*request*/)
{
    return plainReply(clockRecord(device.clock()));
}

QByteArray setRtcTime(Device &device, const Request &request)
{
    PayloadReader reader(request.payload);
    const QDateTime time = readClockRecord(reader);
    if (!reader.exact() || !time.isValid())
        return statusReply(Status::WrongParameter);
    device.setClock(time);
    return statusReply(Status::Ok);
}

QByteArray setDebugAddress(Device &device, const Request &request)
{
    PayloadReader reader(request.payload);
    const QHostAddress address(reader.u32());
    const quint16 port = reader.u16();
    if (!reader.exact())
        return statusReply(Status::WrongParameter);
    device.setDebugAddress(address, port);
    return statusReply(Status::Ok);
}

QByteArray setTofBias(Device &device, const Request &request)
{
    PayloadReader reader(request.payload);
    const int bias = reader.u16() - wire::TofBiasOffset;
    if (!reader.exact())
        return statusReply(Status::WrongParameter);
    device.state.sensorBias = bias;
    device.changed(QStringLiteral("distance sensor bias set to %1 mm").arg(bias));
    return statusReply(Status::Ok);
}

QByteArray getTofBias(Device &device, const Request & /*request*/)
{
    return plainReply(
        bytesOf16(static_cast<quint16>(device.state.sensorBias + wire::TofBiasOffset)));
}

QByteArray setUserConfig(Device &device, const Request &request)
{
    return changeDocument(device, device.state.documents.user, request);
}

QByteArray getUserConfig(Device &device, const Request & /*request*/)
{
    return dataReply(toText(device.state.documents.user));
}

QByteArray getSystemInfo(Device &device, const Request & /*request*/)
{
    return dataReply(
        toText(systemInfoDocument(device.state.serialNumber, device.options().maxUsers)));
}

QByteArray getVendorConfig(Device &device, const Request & /*request*/)
{
    return dataReply(toText(device.state.documents.vendor));
}

QByteArray setVendorConfig(Device &device, const Request &request)
{
    return changeDocument(device, device.state.documents.vendor, request);
}

QByteArray getOutputConfig(Device &device, const Request & /*request*/)
{
    return dataReply(toText(device.state.documents.output));
}

QByteArray setOutputConfig(Device &device, const Request &request)
{
    return changeDocument(device, device.state.documents.output, request);
}

QByteArray setSerialNumber(Device &device, const Request &request)
{
    const QString serial = QString::fromLatin1(request.payload.left(SerialLength));
    if (request.payload.size() != SerialField || request.payload.back() != '\0' ||
        !isSerialNumber(serial))
        return statusReply(Status::WrongParameter);
    device.state.serialNumber = serial;
    device.changed(QStringLiteral("serial number written"));
    return statusReply(Status::Ok);
}

QByteArray rebootDevice(Device &device, const Request & /*request*/)
{
    device.reboot();
    return statusReply(Status::Ok);
}

} // namespace sim
