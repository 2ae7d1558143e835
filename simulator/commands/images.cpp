#include "simulator/commands/command.h"

namespace sim {
namespace {

using C = wire::Command;
constexpr int FrameSize = static_cast<int>(wire::FrameSize);

QByteArray capture(Device &device, bool hasPalmprint, bool hasVein)
{
    // The memory of a reply that has been sent is reused: pages that are new to the process cost
    // more than the picture in them.
    static QByteArray replies[2];
    const int more = hasPalmprint && hasVein ? 1 : 0;
    QByteArray &reply = replies[more];
    if (reply.isEmpty() || !reply.isDetached())
        reply = unfilledReply((1 + more) * FrameSize);
    auto *frame = reinterpret_cast<quint8 *>(reply.data()) + wire::HeadSize;
    device.capture(hasPalmprint ? frame : nullptr,
                   hasVein ? frame + ptrdiff_t{more} * FrameSize : nullptr);
    return reply;
}

} // namespace

const QVector<Command> ImageCommands{
    {C::GetPalmprintImage, ReplyForm::Plain, "getPalmprintImage",
     [](Device &device, PayloadReader &) { return capture(device, true, false); }},
    {C::GetPalmVeinImage, ReplyForm::Plain, "getPalmVeinImage",
     [](Device &device, PayloadReader &) { return capture(device, false, true); }},
    {C::GetDualImages, ReplyForm::Plain, "getDualImages",
     [](Device &device, PayloadReader &) { return capture(device, true, true); }},
};

} // namespace sim
