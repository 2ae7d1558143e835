#include "simulator/commands/commands.h"

#include "simulator/state/device.h"

namespace sim {
namespace {

/// What keeps a user from being enrolled at the terminal itself.
Status localObstacle(const Device &device, quint32 userId)
{
    const auto user = device.state.users.find(userId);
    if (user == device.state.users.end())
        return Status::NoSuchUser;
    return hasRoomFor(user->second, Device::EnrolledFeatures) ? Status::Ok : Status::EnrollmentFull;
}

Status obstacle(const Device &device, DeviceMode mode, quint32 userId)
{
    const bool local = mode == DeviceMode::Enroll;
    if (userId == 0 || (!local && mode != DeviceMode::RemoteEnroll))
        return Status::WrongParameter;
    if (device.enrolling() && !(local && device.enrollingLocally(userId)))
        return Status::Busy;
    return local ? localObstacle(device, userId) : Status::Ok;
}

QByteArray startEnrollment(Device &device, DeviceMode mode, quint32 userId)
{
    const Status status = obstacle(device, mode, userId);
    if (status == Status::Ok)
        device.startEnrollment(mode, userId);
    return statusReply(status);
}

/// No data: there is nothing for the user or the index asked for.
QByteArray foundReply(const QByteArray &data)
{
    return data.isEmpty() ? statusReply(Status::WrongParameter) : dataReply(data);
}

} // namespace

QByteArray setMode(Device &device, const Request &request)
{
    PayloadReader reader(request.payload);
    const quint8 mode = reader.u8();
    if (reader.exact() && device.setMode(mode))
        return statusReply(Status::Ok);
    const quint32 userId = reader.u32();
    if (!reader.exact())
        return statusReply(Status::WrongParameter);
    return startEnrollment(device, static_cast<DeviceMode>(mode), userId);
}

QByteArray getMode(Device &device, const Request & /*request*/)
{
    return plainReply(QByteArray(1, static_cast<char>(device.mode())));
}

QByteArray getRemoteEnrollImages(Device &device, const Request &request)
{
    PayloadReader reader(request.payload);
    const quint32 userId = reader.u32();
    const int index = reader.u8();
    return foundReply(reader.exact() ? device.enrolledPair(userId, index) : QByteArray());
}

QByteArray getRemoteFeatures(Device &device, const Request &request)
{
    PayloadReader reader(request.payload);
    const quint32 userId = reader.u32();
    return foundReply(reader.exact() ? device.enrolledFeatures(userId) : QByteArray());
}

} // namespace sim
