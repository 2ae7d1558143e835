#include "simulator/device.h"

#include "simulator/documents.h"
#include "simulator/samples.h"

#include <cmath>

namespace sim {
namespace {

constexpr int FactoryBias = 12;         // mm
constexpr qint64 PreviewPauseMs = 2000; // a longer pause between frames ends a preview
constexpr double HeightMiddle = 98;     // mm, as sensed without the bias
constexpr double HeightSwing = 36;      // mm, over HeightPeriod seconds
constexpr double HeightTremble = 10;    // mm, over TremblePeriod seconds
constexpr double HeightPeriod = 9.0;
constexpr double TremblePeriod = 3.7;

struct ModeName
{
    DeviceMode mode;
    const char *name;
};

constexpr ModeName ModeNames[] = {
    {DeviceMode::Idle, "idle"},
    {DeviceMode::Enroll, "enroll"},
    {DeviceMode::LocalRecognition, "local recognition"},
    {DeviceMode::RemoteRecognition, "remote recognition"},
    {DeviceMode::RemoteEnroll, "remote enroll"},
};

} // namespace

Device::Device(quint32 seed, QObject *parent)
    : QObject(parent),
      users(sampleUsers()),
      records(sampleRecords(users, QDateTime::currentDateTime(), seed)),
      qrCodes(sampleQrCodes(QDateTime::currentDateTime())),
      documents{factoryOutputDocument(), factoryUserDocument(), factoryVendorDocument()},
      serialNumber(QStringLiteral("KV2601SIM000001")),
      sensorBias(FactoryBias),
      m_cameras(seed)
{
    m_uptime.start();
}

bool Device::setMode(quint8 code)
{
    for (const ModeName &known : ModeNames)
        if (static_cast<quint8>(known.mode) == code) {
            m_mode = known.mode;
            announce(QStringLiteral("mode changed to ") + QString::fromLatin1(known.name));
            return true;
        }
    return false;
}

QDateTime Device::clock() const
{
    return QDateTime::currentDateTime().addMSecs(m_clockOffset);
}

void Device::setClock(const QDateTime &time)
{
    m_clockOffset = QDateTime::currentDateTime().msecsTo(time);
    announce(QStringLiteral("clock set"));
}

quint16 Device::palmHeight() const
{
    const double turns = 6.2831853 * static_cast<double>(m_uptime.elapsed()) / 1000;
    const double sensed = HeightMiddle + HeightSwing * std::sin(turns / HeightPeriod) +
                          HeightTremble * std::sin(turns / TremblePeriod);
    return static_cast<quint16>(qBound(0, qRound(sensed) + sensorBias, 0xFFFF));
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

} // namespace sim
