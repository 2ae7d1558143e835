#include "simulator/commands/command.h"

namespace sim {
namespace {

using C = wire::Command;

/// Returns what keeps a user from being enrolled.
Status obstacle(const Device &device, DeviceMode mode, quint32 userId)
{
    const bool local = mode == DeviceMode::Enroll;
    if (userId == 0 || (!local && mode != DeviceMode::RemoteEnroll))
        return Status::WrongParameter;
    if (device.enrolling() && !(local && device.enrollingLocally(userId)))
        return Status::Busy;
    const auto user = device.state.users.find(userId);
    if (local && user == device.state.users.end())
        return Status::NoSuchUser;
    if (local && !user->second.hasRoomFor(Device::EnrolledFeatures))
        return Status::EnrollmentFull;
    return Status::Ok;
}

QByteArray setMode(Device &device, PayloadReader &reader)
{
    const quint8 code = reader.u8();
    if (reader.exact() && device.setMode(code))
        return statusReply(Status::Ok);
    const quint32 userId = reader.u32();
    const auto mode = static_cast<DeviceMode>(code);
    const Status status = reader.exact() ? obstacle(device, mode, userId) : Status::WrongParameter;
    if (status == Status::Ok)
        device.startEnrollment(mode, userId);
    return statusReply(status);
}

/// Refuses when there is nothing for the user or the index of the request.
QByteArray foundReply(const PayloadReader &reader, const QByteArray &data)
{
    const bool isFound = reader.exact() && !data.isEmpty();
    return isFound ? dataReply(data) : statusReply(Status::WrongParameter);
}

} // namespace

const QVector<Command> EnrollCommands{
    {C::SetMode, ReplyForm::Status, "setMode", setMode},
    {C::GetMode, ReplyForm::Plain, "getMode",
     [](Device &device, PayloadReader &) {
         return plainReply(bytesOf(static_cast<quint8>(device.mode())));
     }},
    {C::GetRemoteEnrollImages, ReplyForm::Status, "getRemoteEnrollImages",
     [](Device &device, PayloadReader &reader) {
         const quint32 userId = reader.u32();
         const int index = reader.u8();
         return foundReply(reader, device.enrolledPair(userId, index));
     }},
    {C::GetRemoteFeatures, ReplyForm::Status, "getRemoteFeatures",
     [](Device &device, PayloadReader &reader) {
         const quint32 userId = reader.u32();
         return foundReply(reader, device.enrolledFeatures(userId));
     }},
};

} // namespace sim
