#include "link/cmdclient.h"

namespace {

// The distance stands where other replies have their status.
constexpr size_t DistanceOffset = wire::HeadSize;
constexpr size_t DistanceReplySize = DistanceOffset + 2;

constexpr size_t AddressSize = 4;

} // namespace

bool CmdClient::getTofDistance(uint16_t *out)
{
    recvBuffer.clear();
    if (!exchange(request(wire::Command::GetTofDistance), {Wait::Ack, DistanceReplySize, true}))
        return false;
    *out = reply().u16(DistanceOffset);
    return true;
}

bool CmdClient::setDebugAddress(const uint8_t ip[4], uint16_t port)
{
    const PacketWriter packet =
        request(wire::Command::SetDebugAddress).bytes(ip, AddressSize).u16(port);
    return exchange(packet, {Wait::Ack, wire::AckSize, true}) &&
           accepted({QT_TR_NOOP("Fail to set Debug address：%1"), Refusal::Character});
}
