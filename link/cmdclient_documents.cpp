#include "link/cmdclient.h"

namespace {

constexpr size_t MaxDocumentReply = 2500;

} // namespace

bool CmdClient::getUserConfig(char *out, uint32_t *outLen, size_t capacity)
{
    return getDocument(wire::Command::GetUserConfig, out, outLen, capacity);
}

bool CmdClient::setUserConfig(const char *json, uint32_t length)
{
    return setDocument(wire::Command::SetUserConfig, json, length);
}

bool CmdClient::getVendorConfig(char *out, uint32_t *outLen, size_t capacity)
{
    return getDocument(wire::Command::GetVendorConfig, out, outLen, capacity);
}

bool CmdClient::setVendorConfig(const char *json, uint32_t length)
{
    return setDocument(wire::Command::SetVendorConfig, json, length);
}

bool CmdClient::getOutputConfig(char *out, uint32_t *outLen, size_t capacity)
{
    return getDocument(wire::Command::GetOutputConfig, out, outLen, capacity);
}

bool CmdClient::setOutputConfig(const char *json, uint32_t length)
{
    return setDocument(wire::Command::SetOutputConfig, json, length);
}

bool CmdClient::getSystemInfo(char *out, uint32_t *outLen)
{
    return getDocument(wire::Command::GetSystemInfo, out, outLen, DocumentCapacity);
}

bool CmdClient::getDocument(wire::Command command, char *out, uint32_t *outLen, size_t capacity)
{
    return getText(command, {Wait::Reply, MaxDocumentReply}, UnknownError, out, outLen, capacity);
}

bool CmdClient::setDocument(wire::Command code, const char *json, uint32_t length)
{
    return command(request(code).bytes(json, length), StatusWait, UnknownError);
}
