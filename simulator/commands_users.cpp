#include "simulator/commands.h"

#include "simulator/device.h"
#include "simulator/json.h"

#include <algorithm>

namespace sim {
namespace {

Json::Value listEntry(const User &user)
{
    Json::Value entry;
    entry["id"] = std::to_string(user.id);
    entry["card_id"] = std::to_string(user.cardId);
    entry["user_name"] = user.name.toStdString();
    entry["vein_cnt"] = user.veinCount;
    entry["print_cnt"] = user.printCount;
    return entry;
}

bool hasUser(const QVector<User> &users, quint32 id)
{
    return std::any_of(users.begin(), users.end(), [&](const User &user) { return user.id == id; });
}

} // namespace

QByteArray clearUsers(Device &device, const Request & /*request*/)
{
    device.users.clear();
    device.announce(QStringLiteral("all users cleared"));
    return statusReply(Status::Ok);
}

QByteArray getUserList(Device &device, const Request & /*request*/)
{
    Json::Value document;
    Json::Value &list = document["user_list"] = Json::arrayValue;
    for (const User &user : qAsConst(device.users))
        list.append(listEntry(user));
    device.announce(QStringLiteral("user list read, %1 users").arg(device.users.size()));
    return dataReply(toText(document));
}

QByteArray getEmptyUserId(Device &device, const Request & /*request*/)
{
    quint32 id = 1;
    while (hasUser(device.users, id))
        ++id;
    return dataReply(bytesOf16(static_cast<quint16>(id >> 16U)) +
                     bytesOf16(static_cast<quint16>(id)));
}

} // namespace sim
