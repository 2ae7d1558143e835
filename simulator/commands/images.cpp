#include "simulator/commands/commands.h"

#include "simulator/state/device.h"

namespace sim {
namespace {

quint8 *bodyOf(QByteArray &reply)
{
    return reinterpret_cast<quint8 *>(reply.data()) + wire::HeadSize;
}

} // namespace

QByteArray getPalmprintImage(Device &device, const Request & /*request*/)
{
    QByteArray reply = unfilledReply(wire::FrameSize);
    device.capture(bodyOf(reply), nullptr);
    return reply;
}

QByteArray getPalmVeinImage(Device &device, const Request & /*request*/)
{
    QByteArray reply = unfilledReply(wire::FrameSize);
    device.capture(nullptr, bodyOf(reply));
    return reply;
}

QByteArray getDualImages(Device &device, const Request & /*request*/)
{
    QByteArray reply = unfilledReply(2 * wire::FrameSize);
    device.capture(bodyOf(reply), bodyOf(reply) + wire::FrameSize);
    return reply;
}

} // namespace sim
