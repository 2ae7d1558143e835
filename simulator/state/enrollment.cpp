#include "simulator/state/enrollment.h"

namespace sim {

Enrollment::Enrollment(int durationMs)
{
    m_timer.setInterval(durationMs / Looks);
    connect(&m_timer, SIGNAL(timeout()), this, SLOT(look()));
}

void Enrollment::start(DeviceMode mode, quint32 userId)
{
    m_mode = mode;
    m_userId = userId;
    m_looks = 0;
    m_timer.start();
    const bool remote = mode == DeviceMode::RemoteEnroll;
    emit said(QStringLiteral("%1 enrollment of user %2: place the palm over the sensor")
                  .arg(remote ? QStringLiteral("remote") : QStringLiteral("local"))
                  .arg(userId));
}

void Enrollment::cancel()
{
    if (!active())
        return;
    m_timer.stop();
    emit said(QStringLiteral("enrollment of user %1 cancelled").arg(m_userId));
}

void Enrollment::look()
{
    emit looked();
    ++m_looks;
    emit said(QStringLiteral("palm image %1 of %2 taken").arg(m_looks).arg(Looks));
    if (m_looks < Looks)
        return;
    m_timer.stop();
    emit done();
}

} // namespace sim
