#include "simulator/state/device.h"

#include <cmath>

namespace sim {

constexpr qint64 PreviewPause = 2000; // ms; a longer pause between frames ends a preview
// Passages within the shortest pause are recorded together.
constexpr double MinPassagePause = 10;        // ms
constexpr double MaxPassagePause = 3'600'000; // ms

Device::Device(const DeviceOptions &options, QObject *parent)
    : QObject(parent),
      state(sampleState(options)),
      settings(options),
      cameras(options.seed),
      random(seedOf(options))
{
    uptime.start();
    enrollTimer.setInterval(options.enrollMs / EnrollImages);
    connect(&enrollTimer, SIGNAL(timeout()), this, SLOT(takeImage()));
    passageClock.start();
    passageTimer.setSingleShot(true);
    connect(&passageTimer, SIGNAL(timeout()), this, SLOT(recordPassages()));
    if (options.passages > 0)
        recordPassages();
}

bool Device::setMode(quint8 code)
{
    const auto mode = static_cast<DeviceMode>(code);
    const char *name = restingModeName(mode);
    if (!name)
        return false;
    cancelEnrollment();
    state.mode = mode;
    changed(QStringLiteral("mode changed to %1").arg(name));
    return true;
}

void Device::startEnrollment(DeviceMode mode, quint32 userId)
{
    const bool isRemote = mode == DeviceMode::RemoteEnroll;
    if (isRemote) {
        enrolledPairs.clear();
        enrolledUser = userId;
    }
    enrollMode = mode;
    enrollUser = userId;
    enrollImages = 0;
    enrollTimer.start();
    announce(QStringLiteral("%1 enrollment of user %2: place the palm over the sensor")
                 .arg(isRemote ? "remote" : "local")
                 .arg(userId));
}

void Device::cancelEnrollment()
{
    if (!enrolling())
        return;
    enrollTimer.stop();
    announce(QStringLiteral("enrollment of user %1 cancelled").arg(enrollUser));
}

void Device::takeImage()
{
    if (enrollMode == DeviceMode::RemoteEnroll) {
        QByteArray pair(static_cast<int>(2 * wire::FrameSize), Qt::Uninitialized);
        auto *frames = reinterpret_cast<quint8 *>(pair.data());
        cameras.capture(frames, frames + wire::FrameSize);
        enrolledPairs.append(pair);
    }
    ++enrollImages;
    announce(QStringLiteral("palm image %1 of %2 taken").arg(enrollImages).arg(EnrollImages));
    if (enrollImages == EnrollImages)
        finishEnrollment();
}

void Device::finishEnrollment()
{
    enrollTimer.stop();
    const auto user = state.users.find(enrollUser);
    if (user != state.users.end() && user->second.hasRoomFor(EnrolledFeatures))
        user->second.addFeatures(EnrolledFeatures);
    state.enrollments += enrollMode == DeviceMode::RemoteEnroll ? 1 : 0;
    changed(QStringLiteral("user %1 enrolled").arg(enrollUser));
}

QByteArray Device::enrolledPair(quint32 userId, int index) const
{
    return hasEnrolled(userId) ? enrolledPairs.value(index) : QByteArray();
}

QByteArray Device::enrolledFeatures(quint32 userId) const
{
    if (!hasEnrolled(userId))
        return {};
    const quint32 seeds[] = {seedOf(settings), userId, state.enrollments};
    QRandomGenerator generator(seeds);
    QByteArray features(static_cast<int>(wire::FeatureSize), Qt::Uninitialized);
    generator.generate(features.begin(), features.end());
    return features;
}

QDateTime Device::clock() const
{
    const QDateTime time = QDateTime::currentDateTime().addMSecs(state.clockOffset);
    return qBound(QDateTime({1970, 1, 1}, {0, 0}), time, QDateTime({2225, 12, 31}, {23, 59, 59}));
}

quint16 Device::palmHeight() const
{
    // Swings by 36 mm in 9 s and trembles by 10 mm in 3.7 s.
    const double turns = 6.2831853 * static_cast<double>(uptime.elapsed()) / 1000;
    const double sensed = 98 + 36 * std::sin(turns / 9) + 10 * std::sin(turns / 3.7);
    return static_cast<quint16>(qBound(0, qRound(sensed) + state.sensorBias, 0xFFFF));
}

void Device::capture(quint8 *palmprint, quint8 *vein)
{
    if (!sinceCapture.isValid() || sinceCapture.elapsed() > PreviewPause)
        announce("preview started");
    sinceCapture.start();
    cameras.capture(palmprint, vein);
}

/// Nobody passes in a mode that does not recognise, during a reboot, or when the records are full.
/// The clock is read once for all passages, since reading it is what costs most.
void Device::recordPassages()
{
    const auto now = static_cast<double>(passageClock.elapsed());
    int passed = nextPassage > 0 ? 0 : -1; // the first call only draws the first pause
    for (; nextPassage <= now; ++passed)
        nextPassage -= std::log(1 - random.generateDouble()) * 60'000 / settings.passages;
    passageTimer.start(
        static_cast<int>(qBound(MinPassagePause, nextPassage - now, MaxPassagePause)));
    if (isRebooting || !recognises(mode()))
        return;
    QDateTime wall = clock();
    wall.setTimeSpec(Qt::UTC); // the same time on the wall
    int added = 0;
    while (added < passed && addPassage(state.records, wall))
        ++added;
    if (added == 0)
        return;
    keepNewest(state.records, settings.ring);
    emit stateChanged();
}

void Device::changed(const QString &event)
{
    announce(event);
    emit stateChanged();
}

void Device::reboot()
{
    isRebooting = true;
    cancelEnrollment();
    announce("rebooting");
    emit rebootAsked();
}

void Device::restart()
{
    isRebooting = false;
    enrolledPairs.clear();
    uptime.start();
    announce("restarted");
}

} // namespace sim
