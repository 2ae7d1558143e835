#pragma once

#include "simulator/state/records.h"

#include "link/wire.h"

#include <QDateTime>
#include <QString>
#include <QVector>

#include <json/value.h>

#include <map>

namespace sim {

/// What differs from one terminal to the next.
struct DeviceOptions
{
    quint32 seed = 1;
    int maxUsers = 3000;   ///< 1 or more
    int maxQrCodes = 1000; ///< 1 or more
    int records = 60;      ///< access records when first switched on, 0 or more
    int enrollMs = 3000;   ///< time that an enrollment takes, 0 or more
};

/// Features that a terminal can hold for one user, palm-vein and palmprint together.
constexpr int FeatureCapacity = 12;
/// Bytes of a name, a department or a QR code's note.
constexpr int NameField = 32;
constexpr int QrDataField = 512;
constexpr int SerialLength = static_cast<int>(wire::SerialNumberSize);

/// Without control characters, so that a message that tells it stays one line.
bool isOneLine(const QString &text);

struct User
{
    quint32 id = 0; ///< 1 or more
    quint32 cardId = 0;
    QString name;
    QString department;
    int veinCount = 0;  ///< palm-vein features stored
    int printCount = 0; ///< palmprint features stored
};

/// Whether `count` more features of each kind find room.
bool hasRoomFor(const User &user, int count);

/// Valid from `start` to `end`; times as on the wall, kept as UTC.
struct QrCode
{
    QString note;
    QString data;
    QDateTime start;
    QDateTime end;
};

/// Its texts are not empty, its times are real and in order.
bool isUsable(const QrCode &code);

struct Documents
{
    Json::Value output;
    Json::Value user;
    Json::Value vendor;
};

Documents factoryDocuments();

/// The name of a mode that a terminal stays in; nullptr for any other, as for the enrollments,
/// which end by themselves.
const char *restingModeName(DeviceMode mode);

/// What a terminal holds, and keeps when it is switched off.
struct State
{
    /// A resting one. The one that was set last is there again after a reboot, and when the
    /// program starts anew.
    DeviceMode mode = DeviceMode::LocalRecognition;
    qint64 clockOffset = 0; ///< milliseconds ahead of the host's clock
    int sensorBias = 0;     ///< mm
    QString serialNumber;
    std::map<quint32, User> users; ///< by ID
    QVector<QrCode> qrCodes;
    RecordBook records;
    Documents documents;
};

/// As the terminal leaves the factory, with some users, QR codes and records.
State sampleState(const DeviceOptions &options);

/// 15 letters and digits of ASCII.
bool isSerialNumber(const QString &text);

/// The least and the greatest bias that the wire carries, mm.
constexpr int LeastBias = -1000;
constexpr int GreatestBias = 64535;

} // namespace sim
