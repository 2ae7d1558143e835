#pragma once

#include "simulator/state/records.h"

#include "link/wire.h"

#include <json/value.h>

namespace sim {

/// What differs from one terminal to the next.
struct DeviceOptions
{
    quint32 seed = 1;
    int index = 0;         ///< among the terminals of a program; serial number, name and records
    int maxUsers = 3000;   ///< 1 or more
    int maxQrCodes = 1000; ///< 1 or more
    int records = 60;      ///< access records of a new terminal, 0 or more
    int ring = 0;          ///< most access records, then the oldest go; 0: MaxRecords a month
    double passages = 0;   ///< new access records a minute
    int enrollMs = 3000;   ///< time that an enrollment takes, 0 or more
    bool importReplaces = false; ///< an import replaces the user's features instead of adding
};

/// The seed of what differs among the terminals of a program.
inline quint32 seedOf(const DeviceOptions &options)
{
    return options.seed + static_cast<quint32>(options.index);
}

/// Most features of one user, palm-vein and palmprint together.
constexpr int MaxFeatures = 12;
/// Bytes of a name, a department or a QR code's note.
constexpr int NameField = 32;
constexpr int QrDataField = 512;
constexpr int SerialLength = static_cast<int>(wire::SerialNumberSize);

/// Returns true when the text has no control characters, so that a message with it stays one line.
bool isOneLine(const QString &text);

struct User
{
    quint32 id = 0; ///< 1 or more
    quint32 cardId = 0;
    QString name;
    QString department;
    int veinCount = 0;        ///< palm-vein features stored
    int printCount = 0;       ///< palmprint features stored
    QByteArray features = {}; ///< imported blocks of wire::FeatureSize bytes, one after the other

    /// Returns true when `count` more features of each kind fit.
    bool hasRoomFor(int count) const { return veinCount + printCount + 2 * count <= MaxFeatures; }
    void addFeatures(int count);
    void removeFeatures();
};

/// Valid from `start` to `end`, which are wall clock times kept as UTC.
struct QrCode
{
    QString note;
    QString data;
    QDateTime start;
    QDateTime end;
};

/// Returns true when the texts are not empty and the times are real and in order.
bool isUsable(const QrCode &code);

struct Documents
{
    Json::Value output;
    Json::Value user;
    Json::Value vendor;
};

/// Returns the name of a mode in which a terminal stays; nullptr for any other mode, such as the
/// enrollments, which end by themselves.
const char *restingModeName(DeviceMode mode);

/// Returns true for the modes in which people are recognised and pass.
bool recognises(DeviceMode mode);

/// The persistent state of a terminal.
struct State
{
    /// The resting mode that was set last; restored after a reboot and at the next start.
    DeviceMode mode = DeviceMode::LocalRecognition;
    qint64 clockOffset = 0;  ///< milliseconds ahead of the host's clock
    int sensorBias = 0;      ///< mm
    quint32 enrollments = 0; ///< remote ones; each brings other features
    QString serialNumber;
    std::map<quint32, User> users; ///< by ID
    QVector<QrCode> qrCodes;
    RecordBook records;
    Documents documents;
};

/// Returns the state of a new terminal, with some users, QR codes and records.
State sampleState(const DeviceOptions &options);

/// Returns true for 15 ASCII letters and digits.
bool isSerialNumber(const QString &text);

} // namespace sim
