#include "link/cmdclient.h"

#include <QDebug>

namespace {

constexpr size_t ImagePairSize = 2 * wire::FrameSize;
constexpr size_t UserIdSize = 4;

constexpr StatusText EnrollTexts[] = {
    {2, QT_TRANSLATE_NOOP("CmdClient", "Wrong parameter.")},
    {1, QT_TRANSLATE_NOOP("CmdClient", "The device is busy.")},
    {21, QT_TRANSLATE_NOOP("CmdClient", "User ID doesn't exist.")},
    {24, QT_TRANSLATE_NOOP("CmdClient", "The current user feature buffer is full.")},
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "Device prompts failed：%1"),
     StatusText::SignedDecimal},
};
constexpr StatusText RemoteEnrollTexts[] = {
    {2, QT_TRANSLATE_NOOP("CmdClient", "Wrong parameter.")},
    {1, QT_TRANSLATE_NOOP("CmdClient", "The device is busy.")},
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "Device prompts failed：%1"),
     StatusText::SignedDecimal},
};
constexpr StatusText ClearTexts[] = {
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "Fail to clear users：%1"),
     StatusText::Character},
};
constexpr StatusText RemoteDataTexts[] = {
    {2, QT_TRANSLATE_NOOP("CmdClient", "Wrong parameter.")},
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "Unknown error.")},
};
// The import uses the wording of a deletion, on purpose.
constexpr StatusText ImportTexts[] = {
    {1, QT_TRANSLATE_NOOP("CmdClient", "The device is processing tasks, the deletion is failed.")},
    {21, QT_TRANSLATE_NOOP("CmdClient", "User doesn't exist.")},
    {2, QT_TRANSLATE_NOOP("CmdClient", "Wrong parameter.")},
    {22, QT_TRANSLATE_NOOP("CmdClient", "The user feature buffer is full.")},
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "Unknown error.")},
};
constexpr StatusText AddTexts[] = {
    {1, QT_TRANSLATE_NOOP("CmdClient", "The system is busy.")},
    {20, QT_TRANSLATE_NOOP("CmdClient", "User ID exists.")},
    {22, QT_TRANSLATE_NOOP("CmdClient", "The user database is full.")},
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "Unknown error: %1"),
     StatusText::Decimal},
};
constexpr StatusText DeleteTexts[] = {
    {1, QT_TRANSLATE_NOOP("CmdClient", "The device is processing tasks, the deletion is failed.")},
    {21, QT_TRANSLATE_NOOP("CmdClient", "User doesn't exist.")},
    {2, QT_TRANSLATE_NOOP("CmdClient", "Wrong parameter.")},
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "Unknown error.")},
};
constexpr StatusText EmptyIdTexts[] = {
    {1, QT_TRANSLATE_NOOP("CmdClient", "The system is busy.")},
    {22, QT_TRANSLATE_NOOP("CmdClient", "The user database is full.")},
    {StatusText::AnyOther, QT_TRANSLATE_NOOP("CmdClient", "unknown error.")},
};

/// Size of a reply that has a block behind its status.
constexpr size_t replyWith(size_t blockSize)
{
    return wire::PayloadOffset + blockSize;
}

} // namespace

bool CmdClient::startEnroll(uint32_t userId)
{
    return enroll(DeviceMode::Enroll, userId, EnrollTexts);
}

bool CmdClient::startRemoteEnroll(uint32_t userId)
{
    return enroll(DeviceMode::RemoteEnroll, userId, RemoteEnrollTexts);
}

bool CmdClient::enroll(DeviceMode mode, uint32_t userId, const StatusText *texts)
{
    qDebug().nospace() << "user id: " << userId;
    return command(request(wire::Command::SetMode).u8(static_cast<uint8_t>(mode)).u32(userId),
                   SilentStatusWait, texts);
}

bool CmdClient::clearUsers()
{
    return command(request(wire::Command::ClearUsers), SilentStatusWait, ClearTexts);
}

bool CmdClient::getUserList(uint8_t *out, uint32_t *outLen, size_t outCapacity)
{
    if (!exchange(request(wire::Command::GetUserList), {Wait::Reply, wire::MaxUserListReply}) ||
        !acceptedData(UnknownErrorNumber, 1, out, outLen, outCapacity))
        return false;
    log(tr("The loaded data count：%1").arg(reply().declaredLength()));
    return true;
}

bool CmdClient::getRemoteEnrollImages(uint8_t *out, size_t capacity, uint32_t userId, uint8_t index)
{
    return exchange(request(wire::Command::GetRemoteEnrollImages).u32(userId).u8(index),
                    {Wait::Reply, replyWith(ImagePairSize)}) &&
           acceptedBlock(RemoteDataTexts, ImagePairSize, out, capacity);
}

bool CmdClient::getRemoteFeatures(uint8_t *out, size_t capacity, uint32_t userId)
{
    return exchange(request(wire::Command::GetRemoteFeatures).u32(userId),
                    {Wait::Reply, replyWith(wire::FeatureSize)}) &&
           acceptedBlock(RemoteDataTexts, wire::FeatureSize, out, capacity);
}

bool CmdClient::importUserFeatures(uint32_t userId, uint8_t kind, const uint8_t *data,
                                   uint32_t length)
{
    return command(
        request(wire::Command::ImportUserFeatures).u8(kind).u32(userId).bytes(data, length),
        StatusWait, ImportTexts);
}

bool CmdClient::addUser(const UserRecord *user)
{
    return command(request(wire::Command::AddUser)
                       .u32(user->userId)
                       .u32(user->cardNumber)
                       .bytes(user->name, sizeof user->name)
                       .bytes(user->department, sizeof user->department),
                   StatusWait, AddTexts);
}

bool CmdClient::deleteUser(uint32_t userId)
{
    return command(request(wire::Command::DeleteUser).u32(userId), StatusWait, DeleteTexts);
}

bool CmdClient::deleteUserFeatures(uint32_t userId)
{
    return command(request(wire::Command::DeleteUserFeatures).u32(userId), StatusWait, DeleteTexts);
}

bool CmdClient::getEmptyUserId(uint32_t *out)
{
    if (!exchange(request(wire::Command::GetEmptyUserId), {Wait::Reply, replyWith(UserIdSize)}))
        return false;
    const quint8 status = declaredStatus();
    if (status != wire::StatusOk || reply().declaredLength() == 0 ||
        reply().received() < replyWith(UserIdSize))
        return refuse(EmptyIdTexts, status);
    *out = reply().u32(wire::PayloadOffset);
    return true;
}
