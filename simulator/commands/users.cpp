#include "simulator/commands/command.h"
#include "simulator/state/documents.h"

namespace sim {
namespace {

using C = wire::Command;

constexpr quint8 PalmFeatures = 0;  // the only kind of features
constexpr int ImportedFeatures = 1; // of each camera, that an import adds

bool isFull(const Device &device)
{
    return device.state.users.size() >= static_cast<size_t>(device.options().maxUsers);
}

QByteArray getEmptyUserId(Device &device, PayloadReader & /*reader*/)
{
    if (isFull(device))
        return statusReply(Status::Full);
    quint32 id = 1;
    for (const auto &user : device.state.users)
        if (user.first == id)
            ++id;
    return dataReply(bytesOf(id));
}

QByteArray addUser(Device &device, PayloadReader &reader)
{
    std::map<quint32, User> &users = device.state.users;
    User user;
    user.id = reader.u32();
    user.cardId = reader.u32();
    user.name = reader.text(NameField);
    user.department = reader.text(NameField);
    if (!reader.exact() || user.id == 0 || !isOneLine(user.name) || !isOneLine(user.department))
        return statusReply(Status::WrongParameter);
    if (users.count(user.id) != 0)
        return statusReply(Status::UserExists);
    if (isFull(device))
        return statusReply(Status::Full);
    users[user.id] = user;
    if (userListFits(device.state))
        return changed(device, QStringLiteral("user %1 added").arg(user.id));
    users.erase(user.id);
    return statusReply(Status::Full);
}

/// Changes the user whose ID is the whole request, and announces `event` with the ID.
template <class Change>
QByteArray changeUser(Device &device, PayloadReader &reader, const char *event, Change change)
{
    const quint32 id = reader.u32();
    if (!reader.exact() || id == 0)
        return statusReply(Status::WrongParameter);
    const auto user = device.state.users.find(id);
    if (user == device.state.users.end())
        return statusReply(Status::NoSuchUser);
    change(user);
    return changed(device, QString(event).arg(id));
}

QByteArray importUserFeatures(Device &device, PayloadReader &reader)
{
    const quint8 kind = reader.u8();
    const quint32 id = reader.u32();
    const QByteArray block = reader.bytes(static_cast<int>(wire::FeatureSize));
    if (!reader.exact() || kind != PalmFeatures || id == 0)
        return statusReply(Status::WrongParameter);
    const auto found = device.state.users.find(id);
    if (found == device.state.users.end())
        return statusReply(Status::NoSuchUser);
    User &user = found->second;
    if (device.options().importReplaces)
        user.removeFeatures();
    if (!user.hasRoomFor(ImportedFeatures))
        return statusReply(Status::Full);
    user.addFeatures(ImportedFeatures);
    user.features += block;
    return changed(device, QStringLiteral("features of user %1 imported").arg(id));
}

} // namespace

const QVector<Command> UserCommands{
    {C::ClearUsers, ReplyForm::Exclusive, "clearUsers",
     [](Device &device, PayloadReader &) {
         return cleared(device, device.state.users, "all users cleared");
     }},
    {C::GetUserList, ReplyForm::Status, "getUserList",
     [](Device &device, PayloadReader &) {
         const size_t count = device.state.users.size();
         device.announce(QStringLiteral("user list read, %1 users").arg(count));
         return dataReply(userListText(device.state));
     }},
    {C::GetEmptyUserId, ReplyForm::Exclusive, "getEmptyUserId", getEmptyUserId},
    {C::AddUser, ReplyForm::Exclusive, "addUser", addUser},
    {C::DeleteUser, ReplyForm::Exclusive, "deleteUser",
     [](Device &device, PayloadReader &reader) {
         return changeUser(device, reader, "user %1 deleted",
                           [&](auto user) { device.state.users.erase(user); });
     }},
    {C::DeleteUserFeatures, ReplyForm::Exclusive, "deleteUserFeatures",
     [](Device &device, PayloadReader &reader) {
         return changeUser(device, reader, "features of user %1 deleted",
                           [](auto user) { user->second.removeFeatures(); });
     }},
    {C::ImportUserFeatures, ReplyForm::Exclusive, "importUserFeatures", importUserFeatures},
};

} // namespace sim
