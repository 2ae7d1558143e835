#include "simulator/state/chatter.h"

#include "simulator/state/device.h"
#include "simulator/state/documents.h"

#include <iterator>

namespace sim {
namespace {

bool recognises(DeviceMode mode)
{
    return mode == DeviceMode::LocalRecognition || mode == DeviceMode::RemoteRecognition;
}

} // namespace

Chatter::Chatter(const Device &device, quint32 seed)
    : m_device(device),
      m_random(seed)
{
}

QString Chatter::greeting() const
{
    return QStringLiteral("%1 %2 online, %3 users")
        .arg(deviceName(), m_device.state.serialNumber)
        .arg(m_device.state.users.size());
}

QString Chatter::nextLine()
{
    using Line = QString (Chatter::*)();
    constexpr Line Lines[] = {&Chatter::palmSeen, &Chatter::temperature, &Chatter::heartbeat,
                              &Chatter::userRecognised, &Chatter::doorRelay};
    constexpr quint32 LinesOfAnyMode = 3; // the others need a recognition
    const quint32 count = recognises(m_device.mode()) ? quint32(std::size(Lines)) : LinesOfAnyMode;
    return (this->*Lines[m_random.bounded(count)])();
}

QString Chatter::palmSeen()
{
    return QStringLiteral("palm seen at %1 mm").arg(m_device.palmHeight());
}

QString Chatter::userRecognised()
{
    const std::map<quint32, User> &users = m_device.state.users;
    if (users.empty())
        return QStringLiteral("palm not recognised");
    const User &user =
        std::next(users.begin(), m_random.bounded(static_cast<int>(users.size())))->second;
    return QStringLiteral("user %1 %2 recognised, score %3")
        .arg(QString::number(user.id), user.name, QString::number(m_random.bounded(82, 100)));
}

QString Chatter::doorRelay()
{
    return QStringLiteral("door relay closed for %1 ms").arg(m_random.bounded(2, 7) * 500);
}

QString Chatter::temperature()
{
    return QStringLiteral("board temperature %1 °C").arg(38 + m_random.bounded(6.0), 0, 'f', 1);
}

QString Chatter::heartbeat()
{
    return QStringLiteral("heartbeat, up %1 s").arg(m_device.uptimeSeconds());
}

} // namespace sim
