#include "simulator/state/state.h"

#include "simulator/state/documents.h"

#include <QRegularExpression>

namespace sim {

void User::addFeatures(int count)
{
    veinCount += count;
    printCount += count;
}

void User::removeFeatures()
{
    veinCount = 0;
    printCount = 0;
    features.clear();
}

bool isUsable(const QrCode &code)
{
    return !code.note.isEmpty() && isOneLine(code.note) && !code.data.isEmpty() &&
           code.start.isValid() && code.end.isValid() && code.start < code.end;
}

const char *restingModeName(DeviceMode mode)
{
    return mode == DeviceMode::Idle                ? "idle"
           : mode == DeviceMode::LocalRecognition  ? "local recognition"
           : mode == DeviceMode::RemoteRecognition ? "remote recognition"
                                                   : nullptr;
}

bool recognises(DeviceMode mode)
{
    return mode == DeviceMode::LocalRecognition || mode == DeviceMode::RemoteRecognition;
}

bool isOneLine(const QString &text)
{
    static const QRegularExpression breaks("[\\p{Cc}\\p{Zl}\\p{Zp}]");
    return !text.contains(breaks);
}

bool isSerialNumber(const QString &text)
{
    static const QRegularExpression serial("\\A[0-9A-Za-z]{15}\\z");
    return text.contains(serial);
}

State sampleState(const DeviceOptions &options)
{
    const QTime now = QTime::currentTime();
    const QDateTime wall(QDate::currentDate(), QTime(now.hour(), now.minute()), Qt::UTC);
    State state;
    state.sensorBias = 12;
    state.serialNumber = QString::asprintf("KV2601SIM%06d", options.index + 1);
    for (const User &user : sampleUsers().mid(0, options.maxUsers))
        state.users.emplace(user.id, user);
    // Two are valid and one is expired.
    state.qrCodes = {
        {"visitor Lind", "KV-VISIT-7F31C2", wall.addDays(-1), wall.addDays(6)},
        {"保洁", "KV-CLEAN-0042", wall.addMonths(-6), wall.addMonths(6)},
        {"delivery", "https://kovant.example/pass?d=20983", wall.addDays(-40), wall.addDays(-33)},
    };
    state.qrCodes = state.qrCodes.mid(0, options.maxQrCodes);
    state.records = makeRecords(seedOf(options), options.records, wall);
    keepNewest(state.records, options.ring);
    state.documents = factoryDocuments();
    return state;
}

} // namespace sim
