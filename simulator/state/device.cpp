#include "simulator/state/device.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace sim {
namespace {

constexpr qint64 PreviewPauseMs = 2000; // a longer pause between frames ends a preview
constexpr double HeightMiddle = 98;     // mm, as sensed without the bias
constexpr double HeightSwing = 36;      // mm, over HeightPeriod seconds
constexpr double HeightTremble = 10;    // mm, over TremblePeriod seconds
constexpr double HeightPeriod = 9.0;
constexpr double TremblePeriod = 3.7;

} // namespace

Device::Device(const DeviceOptions &options, QObject *parent)
    : QObject(parent),
      state(sampleState(options)),
      m_options(options),
      m_cameras(options.seed),
      m_enrollment(options.enrollMs)
{
    m_uptime.start();
    connect(&m_enrollment, SIGNAL(said(QString)), this, SIGNAL(happened(QString)));
    connect(&m_enrollment, SIGNAL(looked()), this, SLOT(keepLook()));
    connect(&m_enrollment, SIGNAL(done()), this, SLOT(finishEnrollment()));
}

DeviceMode Device::mode() const
{
    return enrolling() ? m_enrollment.mode() : state.mode;
}

bool Device::setMode(quint8 code)
{
    const auto mode = static_cast<DeviceMode>(code);
    const char *name = restingModeName(mode);
    if (!name)
        return false;
    m_enrollment.cancel();
    state.mode = mode;
    changed(QStringLiteral("mode changed to ") + QString::fromLatin1(name));
    return true;
}

bool Device::enrollingLocally(quint32 userId) const
{
    return mode() == DeviceMode::Enroll && m_enrollment.userId() == userId;
}

void Device::startEnrollment(DeviceMode mode, quint32 userId)
{
    if (mode == DeviceMode::RemoteEnroll) {
        m_enrolledPairs.clear();
        m_enrolledUser = userId;
    }
    m_enrollment.start(mode, userId);
}

void Device::keepLook()
{
    if (m_enrollment.mode() != DeviceMode::RemoteEnroll)
        return;
    QByteArray pair(static_cast<int>(2 * wire::FrameSize), Qt::Uninitialized);
    auto *frames = reinterpret_cast<quint8 *>(pair.data());
    m_cameras.capture(frames, frames + wire::FrameSize);
    m_enrolledPairs.push_back(pair);
}

void Device::finishEnrollment()
{
    const quint32 id = m_enrollment.userId();
    const auto user = state.users.find(id);
    if (user != state.users.end() && hasRoomFor(user->second, EnrolledFeatures)) {
        user->second.veinCount += EnrolledFeatures;
        user->second.printCount += EnrolledFeatures;
    }
    changed(QStringLiteral("user %1 enrolled").arg(id));
}

bool Device::hasEnrolled(quint32 userId) const
{
    return m_enrolledUser == userId && m_enrolledPairs.size() == Enrollment::Looks;
}

QByteArray Device::enrolledPair(quint32 userId, int index) const
{
    const bool known = hasEnrolled(userId) && index >= 0 && index < Enrollment::Looks;
    return known ? m_enrolledPairs.at(static_cast<size_t>(index)) : QByteArray();
}

QByteArray Device::enrolledFeatures(quint32 userId) const
{
    if (!hasEnrolled(userId))
        return {};
    std::seed_seq seeds{m_options.seed, userId};
    std::mt19937 random(seeds);
    QByteArray features(static_cast<int>(wire::FeatureSize), Qt::Uninitialized);
    std::generate(features.begin(), features.end(),
                  [&] { return static_cast<char>(random() & 0xFFU); });
    return features;
}

QDateTime Device::clock() const
{
    const QDateTime time = QDateTime::currentDateTime().addMSecs(state.clockOffset);
    return qBound(QDateTime({1970, 1, 1}, {0, 0}), time, QDateTime({2225, 12, 31}, {23, 59, 59}));
}

void Device::setClock(const QDateTime &time)
{
    state.clockOffset = QDateTime::currentDateTime().msecsTo(time);
    changed(QStringLiteral("clock set"));
}

quint16 Device::palmHeight() const
{
    const double turns = 6.2831853 * static_cast<double>(m_uptime.elapsed()) / 1000;
    const double sensed = HeightMiddle + HeightSwing * std::sin(turns / HeightPeriod) +
                          HeightTremble * std::sin(turns / TremblePeriod);
    return static_cast<quint16>(qBound(0, qRound(sensed) + state.sensorBias, 0xFFFF));
}

qint64 Device::uptimeSeconds() const
{
    return m_uptime.elapsed() / 1000;
}

void Device::capture(quint8 *palmprint, quint8 *vein)
{
    if (!m_sinceCapture.isValid() || m_sinceCapture.elapsed() > PreviewPauseMs)
        announce(QStringLiteral("preview started"));
    m_sinceCapture.start();
    m_cameras.capture(palmprint, vein);
}

void Device::setDebugAddress(const QHostAddress &address, quint16 port)
{
    emit debugAddressSet(address, port);
}

void Device::announce(const QString &event)
{
    emit happened(event);
}

void Device::changed(const QString &event)
{
    announce(event);
    emit stateChanged();
}

void Device::reboot()
{
    m_rebooting = true;
    m_enrollment.cancel();
    announce(QStringLiteral("rebooting"));
    emit rebootAsked();
}

void Device::restart()
{
    m_rebooting = false;
    m_enrolledPairs.clear();
    m_uptime.start();
    announce(QStringLiteral("restarted"));
}

} // namespace sim
