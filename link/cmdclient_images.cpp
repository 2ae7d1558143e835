#include "link/cmdclient.h"

namespace {

// Frames follow the head directly; these replies have no status.
constexpr size_t FirstFrameOffset = wire::HeadSize;
constexpr size_t SecondFrameOffset = FirstFrameOffset + wire::FrameSize;

} // namespace

bool CmdClient::getPalmprintImage(uint8_t *out)
{
    return getImage(wire::Command::GetPalmprintImage, out);
}

bool CmdClient::getPalmVeinImage(uint8_t *out)
{
    return getImage(wire::Command::GetPalmVeinImage, out);
}

bool CmdClient::getDualImages(uint8_t *palmprint, uint8_t *vein)
{
    constexpr size_t ReplySize = SecondFrameOffset + wire::FrameSize;
    return exchange(request(wire::Command::GetDualImages), {Wait::Ack, ReplySize, true}) &&
           reply().declaredTotal() == ReplySize &&
           reply().copy(FirstFrameOffset, wire::FrameSize, palmprint) &&
           reply().copy(SecondFrameOffset, wire::FrameSize, vein);
}

bool CmdClient::getImage(wire::Command command, uint8_t *out)
{
    constexpr size_t ReplySize = FirstFrameOffset + wire::FrameSize;
    return exchange(request(command), {Wait::Ack, ReplySize, true}) &&
           reply().declaredTotal() == ReplySize &&
           reply().copy(FirstFrameOffset, wire::FrameSize, out);
}
