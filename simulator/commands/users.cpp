#include "simulator/commands/commands.h"

#include "simulator/state/device.h"
#include "simulator/state/lists.h"

namespace sim {
namespace {

constexpr quint8 PalmFeatures = 0;  // the one kind of features that there is
constexpr int ImportedFeatures = 1; // of each kind, that an import adds

bool isFull(const Device &device)
{
    return device.state.users.size() >= static_cast<size_t>(device.options().maxUsers);
}

Status add(Device &device, const User &user)
{
    if (device.state.users.count(user.id) != 0)
        return Status::UserExists;
    if (isFull(device))
        return Status::Full;
    const auto added = device.state.users.emplace(user.id, user).first;
    if (!userListFits(device.state)) {
        device.state.users.erase(added);
        return Status::Full;
    }
    device.changed(QStringLiteral("user %1 added").arg(user.id));
    return Status::Ok;
}

/// Does `change` to the user that the whole request names; `event` tells of it.
template <class Change>
QByteArray changeUser(Device &device, const Request &request, const char *event, Change change)
{
    PayloadReader reader(request.payload);
    const quint32 id = reader.u32();
    if (!reader.exact() || id == 0)
        return statusReply(Status::WrongParameter);
    const auto user = device.state.users.find(id);
    if (user == device.state.users.end())
        return statusReply(Status::NoSuchUser);
    change(user);
    device.changed(QString::fromLatin1(event).arg(id));
    return statusReply(Status::Ok);
}

Status import(Device &device, quint32 id)
{
    const auto user = device.state.users.find(id);
    if (user == device.state.users.end())
        return Status::NoSuchUser;
    if (!hasRoomFor(user->second, ImportedFeatures))
        return Status::Full;
    user->second.veinCount += ImportedFeatures;
    user->second.printCount += ImportedFeatures;
    device.changed(QStringLiteral("features of user %1 imported").arg(id));
    return Status::Ok;
}

} // namespace

QByteArray clearUsers(Device &device, const Request & /*request*/)
{
    device.state.users.clear();
    device.changed(QStringLiteral("all users cleared"));
    return statusReply(Status::Ok);
}

QByteArray getUserList(Device &device, const Request & /*request*/)
{
    device.announce(QStringLiteral("user list read, %1 users").arg(device.state.users.size()));
    return dataReply(userListText(device.state));
}

QByteArray getEmptyUserId(Device &device, const Request & /*request*/)
{
    if (isFull(device))
        return statusReply(Status::Full);
    quint32 id = 1;
    for (const auto &user : device.state.users)
        if (user.first == id)
            ++id;
    return dataReply(bytesOf16(static_cast<quint16>(id >> 16U)) +
                     bytesOf16(static_cast<quint16>(id)));
}

QByteArray addUser(Device &device, const Request &request)
{
    PayloadReader reader(request.payload);
    User user;
    user.id = reader.u32();
    user.cardId = reader.u32();
    user.name = reader.text(NameField);
    user.department = reader.text(NameField);
    const bool named = isOneLine(user.name) && isOneLine(user.department);
    if (!reader.exact() || user.id == 0 || !named)
        return statusReply(Status::WrongParameter);
    return statusReply(add(device, user));
}

QByteArray deleteUser(Device &device, const Request &request)
{
    return changeUser(device, request, "user %1 deleted",
                      [&](auto user) { device.state.users.erase(user); });
}

QByteArray deleteUserFeatures(Device &device, const Request &request)
{
    return changeUser(device, request, "features of user %1 deleted", [](auto user) {
        user->second.veinCount = 0;
        user->second.printCount = 0;
    });
}

QByteArray importUserFeatures(Device &device, const Request &request)
{
    PayloadReader reader(request.payload);
    const quint8 kind = reader.u8();
    const quint32 id = reader.u32();
    reader.bytes(static_cast<int>(wire::FeatureSize));
    if (!reader.exact() || kind != PalmFeatures || id == 0)
        return statusReply(Status::WrongParameter);
    return statusReply(import(device, id));
}

} // namespace sim
