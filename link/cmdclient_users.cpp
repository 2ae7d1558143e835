#include "link/cmdclient.h"

namespace {

constexpr size_t MaxUserListReply = 800000;

} // namespace

bool CmdClient::getUserList(uint8_t *out, uint32_t *outLen, size_t outCapacity)
{
    const Refusal refusal{QT_TR_NOOP("Unknown error: %1"), Refusal::Decimal};
    if (!exchange(request(wire::Command::GetUserList), {Wait::Reply, MaxUserListReply}) ||
        !acceptedData(refusal, 1, out, outLen, outCapacity))
        return false;
    log(tr("The loaded data count：%1").arg(reply().declaredLength()));
    return true;
}
