#include "data/systeminfo.h"

#include "data/json.h"
#include "link/cmdclient.h"

namespace {

std::optional<QString> latin1Text(const Json::Value &object, const char *key)
{
    const Json::Value *value = json::member(object, key);
    const std::optional<QByteArray> bytes = json::bytes(object, key);
    return bytes && !value->isNull()
               ? std::make_optional(QString::fromLatin1(bytes->constData(), bytes->size()))
               : std::nullopt;
}

/// Reads a member only if it is a text, up to the first zero in it.
std::optional<QString> latin1CString(const Json::Value &object, const char *key)
{
    const Json::Value *value = json::member(object, key);
    return value && value->isString() ? std::make_optional(QString::fromLatin1(value->asCString()))
                                      : std::nullopt;
}

std::optional<quint32> number(const Json::Value &object, const char *key)
{
    const Json::Value *value = json::member(object, key);
    return value && !value->isNull() ? json::unsignedNumber(object, key) : std::nullopt;
}

} // namespace

bool fetchSystemInfo(CmdClient *client, QByteArray *text)
{
    QByteArray buffer(CmdClient::DocumentCapacity, Qt::Uninitialized);
    uint32_t length = 0;
    if (!client->getSystemInfo(buffer.data(), &length))
        return false;
    *text = buffer.left(static_cast<int>(length));
    return true;
}

std::optional<SystemInfo> readSystemInfo(const QByteArray &text)
{
    Json::Value root;
    if (!json::parseObject(text.constData(), static_cast<size_t>(text.size()), &root))
        return std::nullopt;
    SystemInfo info;
    info.name = latin1Text(root, "dev_name");
    info.serial = latin1Text(root, "dev_serial");
    info.firmwareVersion = latin1Text(root, "fw_version");
    info.veinAlgorithmVersion = latin1Text(root, "vein_alg_version");
    info.printAlgorithmVersion = latin1Text(root, "print_alg_version");
    info.qrCodeAlgorithmVersion = latin1Text(root, "qrcode_alg_version");
    info.maxUsers = number(root, "max_user_num");
    info.maxRecords = number(root, "max_record_num");
    info.macAddress = latin1CString(root, "mac_address");
    return info;
}
