#pragma once

#include "simulator/camera.h"

#include "link/wire.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QHostAddress>
#include <QObject>
#include <QVector>

#include <json/value.h>

#include <map>
#include <utility>

namespace sim {

struct User
{
    quint32 id = 0;
    quint32 cardId = 0;
    QString name;
    QString department;
    int veinCount = 0;  ///< palm-vein features stored
    int printCount = 0; ///< palmprint features stored
};

struct AccessRecord
{
    enum class Type : quint8 { Palm = 0, Card = 1 };

    Type type = Type::Palm;
    QDateTime time;
    QString userName;
    QString department;
};

struct QrCode
{
    QString note;
    QString data;
    QDateTime start;
    QDateTime end;
};

/// Year and month (1-12).
using Month = std::pair<int, int>;
using Records = std::map<Month, QVector<AccessRecord>>;

struct Documents
{
    Json::Value output;
    Json::Value user;
    Json::Value vendor;
};

/// What the simulated terminal holds and senses. The data members are free to the command
/// answers; what needs a rule or announces something goes through a function.
class Device : public QObject
{
    Q_OBJECT
public:
    /// The same seed gives the same pictures, users, codes and course of records.
    explicit Device(quint32 seed, QObject *parent = nullptr);

    DeviceMode mode() const { return m_mode; }
    /// False, and nothing changed, when there is no mode of that code.
    bool setMode(quint8 code);

    QDateTime clock() const;
    void setClock(const QDateTime &time);

    /// Palm height in mm, bias included; moves smoothly.
    quint16 palmHeight() const;
    qint64 uptimeSeconds() const;

    /// See Cameras::capture; a capture after a pause is announced as the start of a preview.
    void capture(quint8 *palmprint, quint8 *vein);

    /// From now on messages are to be pushed there.
    void setDebugAddress(const QHostAddress &address, quint16 port);

    void announce(const QString &event);

    QVector<User> users;
    Records records;
    QVector<QrCode> qrCodes;
    Documents documents;
    QString serialNumber;
    int sensorBias; ///< mm

signals:
    /// One line without its end.
    void happened(const QString &event);
    void debugAddressSet(const QHostAddress &address, quint16 port);

private:
    Cameras m_cameras;
    DeviceMode m_mode = DeviceMode::LocalRecognition;
    qint64 m_clockOffset = 0; ///< milliseconds ahead of the host's clock
    QElapsedTimer m_uptime;
    QElapsedTimer m_sinceCapture;
};

} // namespace sim
