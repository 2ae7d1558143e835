#include "simulator/state/statefile.h"

#include "simulator/state/documents.h"
#include "simulator/state/json.h"
#include "simulator/state/lists.h"
#include "simulator/state/memberreader.h"
#include "simulator/state/walltime.h"

#include <limits>
#include <set>

namespace sim {
namespace {

constexpr const char *Format = "quirel-simulator state 1";
constexpr qint64 GreatestId = std::numeric_limits<quint32>::max();
constexpr qint64 GreatestClockOffset = 10'000'000'000'000; // ms, some 300 years
constexpr int FirstYear = 1970;
constexpr int LastYear = 9999;

struct DocumentMember
{
    const char *key;
    Json::Value Documents::*document;
};

constexpr DocumentMember DocumentMembers[] = {
    {"output", &Documents::output},
    {"user", &Documents::user},
    {"vendor", &Documents::vendor},
};

Json::Value toJson(const User &user)
{
    Json::Value entry;
    entry["id"] = user.id;
    entry["card"] = user.cardId;
    entry["name"] = user.name.toStdString();
    entry["department"] = user.department.toStdString();
    entry["vein features"] = user.veinCount;
    entry["print features"] = user.printCount;
    return entry;
}

User readUser(MemberReader &reader, const Json::Value &entry)
{
    User user;
    user.id = static_cast<quint32>(reader.number(entry, "id", 1, GreatestId));
    user.cardId = static_cast<quint32>(reader.number(entry, "card", 0, GreatestId));
    user.name = reader.text(entry, "name", NameField);
    user.department = reader.text(entry, "department", NameField);
    reader.require(isOneLine(user.name), "name");
    reader.require(isOneLine(user.department), "department");
    user.veinCount = reader.integer(entry, "vein features", 0, FeatureCapacity);
    user.printCount = reader.integer(entry, "print features", 0, FeatureCapacity);
    reader.require(hasRoomFor(user, 0), "print features");
    return user;
}

Json::Value toJson(const QrCode &code)
{
    Json::Value entry;
    entry["note"] = code.note.toStdString();
    entry["data"] = code.data.toStdString();
    entry["start"] = timeText(code.start).toStdString();
    entry["end"] = timeText(code.end).toStdString();
    return entry;
}

QrCode readQrCode(MemberReader &reader, const Json::Value &entry)
{
    QrCode code{reader.text(entry, "note", NameField), reader.text(entry, "data", QrDataField),
                reader.time(entry, "start"), reader.time(entry, "end")};
    reader.require(isUsable(code), "qr codes");
    return code;
}

Json::Value toJson(const RecordBook &book)
{
    Json::Value document;
    document["seed"] = book.seed;
    document["until"] = timeText(book.until).toStdString();
    Json::Value &months = document["months"] = Json::arrayValue;
    for (const auto &month : book.counts) {
        Json::Value entry;
        entry["year"] = month.first.first;
        entry["month"] = month.first.second;
        entry["count"] = month.second;
        months.append(entry);
    }
    return document;
}

RecordBook readRecords(MemberReader &reader, const Json::Value &document)
{
    RecordBook book;
    book.seed = static_cast<quint32>(reader.number(document, "seed", 0, GreatestId));
    book.until = reader.time(document, "until");
    for (const Json::Value &entry : reader.objects(document, "months", MostMonths)) {
        const Month month{reader.integer(entry, "year", FirstYear, LastYear),
                          reader.integer(entry, "month", 1, 12)};
        const int count = reader.integer(entry, "count", 1, MostRecords);
        reader.require(book.counts.emplace(month, count).second, "months");
    }
    return book;
}

/// It has exactly the members and kinds of the terminal's own.
void readDocument(MemberReader &reader, const Json::Value &documents, const char *key,
                  Json::Value *document)
{
    const Json::Value &stored = reader.object(documents, key);
    if (!stored.isObject())
        return;
    mergeKnown(*document, stored);
    reader.require(*document == stored && toText(stored).size() <= LongestDocument, key);
}

void readUsers(MemberReader &reader, const Json::Value &document, int most, State *state)
{
    for (const Json::Value &entry : reader.objects(document, "users", most)) {
        const User user = readUser(reader, entry);
        reader.require(state->users.emplace(user.id, user).second, "users");
    }
    reader.require(userListFits(*state), "users");
}

void readQrCodes(MemberReader &reader, const Json::Value &document, int most, State *state)
{
    std::set<QString> known;
    for (const Json::Value &entry : reader.objects(document, "qr codes", most)) {
        state->qrCodes.append(readQrCode(reader, entry));
        reader.require(known.insert(state->qrCodes.last().data).second, "qr codes");
    }
    reader.require(qrListFits(*state), "qr codes");
}

DeviceMode readMode(MemberReader &reader, const Json::Value &document)
{
    const auto mode = static_cast<DeviceMode>(reader.integer(document, "mode", 0, 4));
    reader.require(restingModeName(mode) != nullptr, "mode");
    return mode;
}

QString badValue(const Json::Value &document, const DeviceOptions &options, const QString &member)
{
    const Json::Value &users = document["users"];
    if (member == QLatin1String("users") && users.isArray() &&
        users.size() > static_cast<Json::ArrayIndex>(options.maxUsers))
        return QStringLiteral("%1 users, more than --max-users %2")
            .arg(users.size())
            .arg(options.maxUsers);
    return QStringLiteral("bad value of \"%1\"").arg(member);
}

} // namespace

Json::Value stateDocument(const State &state)
{
    Json::Value document;
    document["format"] = Format;
    document["mode"] = static_cast<int>(state.mode);
    document["clock offset"] = Json::Int64{state.clockOffset};
    document["sensor bias"] = state.sensorBias;
    document["serial number"] = state.serialNumber.toStdString();
    Json::Value &users = document["users"] = Json::arrayValue;
    for (const auto &user : state.users)
        users.append(toJson(user.second));
    Json::Value &codes = document["qr codes"] = Json::arrayValue;
    for (const QrCode &code : state.qrCodes)
        codes.append(toJson(code));
    document["records"] = toJson(state.records);
    for (const DocumentMember &member : DocumentMembers)
        document["documents"][member.key] = state.documents.*member.document;
    return document;
}

bool readState(const Json::Value &document, const DeviceOptions &options, State *state,
               QString *error)
{
    MemberReader reader;
    State read;
    read.documents = factoryDocuments();
    reader.require(reader.text(document, "format", 64) == QLatin1String(Format), "format");
    read.mode = readMode(reader, document);
    read.clockOffset =
        reader.number(document, "clock offset", -GreatestClockOffset, GreatestClockOffset);
    read.sensorBias = reader.integer(document, "sensor bias", LeastBias, GreatestBias);
    read.serialNumber = reader.text(document, "serial number", SerialLength);
    reader.require(isSerialNumber(read.serialNumber), "serial number");
    readUsers(reader, document, options.maxUsers, &read);
    readQrCodes(reader, document, options.maxQrCodes, &read);
    read.records = readRecords(reader, reader.object(document, "records"));
    const Json::Value &documents = reader.object(document, "documents");
    for (const DocumentMember &member : DocumentMembers)
        readDocument(reader, documents, member.key, &(read.documents.*member.document));
    *error = badValue(document, options, reader.badMember());
    if (reader.good())
        *state = read;
    return reader.good();
}

} // namespace sim
