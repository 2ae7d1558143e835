#include "simulator/state/state.h"

#include "simulator/state/documents.h"
#include "simulator/state/samples.h"

#include <algorithm>

namespace sim {
namespace {

constexpr int FactoryBias = 12; // mm

bool isLetterOrDigit(QChar c)
{
    return c.unicode() < 128 && c.isLetterOrNumber();
}

} // namespace

bool hasRoomFor(const User &user, int count)
{
    return user.veinCount + user.printCount + 2 * count <= FeatureCapacity;
}

bool isUsable(const QrCode &code)
{
    return !code.note.isEmpty() && isOneLine(code.note) && !code.data.isEmpty() &&
           code.start.isValid() && code.end.isValid() && code.start < code.end;
}

Documents factoryDocuments()
{
    return {factoryOutputDocument(), factoryUserDocument(), factoryVendorDocument()};
}

const char *restingModeName(DeviceMode mode)
{
    switch (mode) {
    case DeviceMode::Idle:
        return "idle";
    case DeviceMode::LocalRecognition:
        return "local recognition";
    case DeviceMode::RemoteRecognition:
        return "remote recognition";
    default:
        return nullptr;
    }
}

bool isOneLine(const QString &text)
{
    return std::none_of(text.begin(), text.end(), [](QChar c) {
        return c.category() == QChar::Other_Control || c.category() == QChar::Separator_Line ||
               c.category() == QChar::Separator_Paragraph;
    });
}

bool isSerialNumber(const QString &text)
{
    return text.size() == SerialLength && std::all_of(text.begin(), text.end(), isLetterOrDigit);
}

State sampleState(const DeviceOptions &options)
{
    const QTime now = QTime::currentTime();
    const QDateTime wall(QDate::currentDate(), QTime(now.hour(), now.minute()), Qt::UTC);
    State state;
    state.sensorBias = FactoryBias;
    state.serialNumber = QStringLiteral("KV2601SIM000001");
    for (const User &user : sampleUsers())
        if (state.users.size() < static_cast<size_t>(options.maxUsers))
            state.users.emplace(user.id, user);
    state.qrCodes = sampleQrCodes(wall).mid(0, options.maxQrCodes);
    state.records = makeRecords(options.seed, options.records, wall);
    state.documents = factoryDocuments();
    return state;
}

} // namespace sim
