#include "simulator/state/documents.h"
#include "simulator/state/store.h"

#include <limits>
#include <set>

namespace sim {
namespace {

constexpr char Format[] = "quirel-simulator state 1";
constexpr qint64 MaxId = std::numeric_limits<quint32>::max();
constexpr qint64 MaxNumber = std::numeric_limits<qint32>::max();
constexpr qint64 MaxClockOffset = 10'000'000'000'000; // ms, some 300 years
constexpr qint64 MaxBias = 0xFFFF - wire::TofBiasOffset;
constexpr int FeatureSize = static_cast<int>(wire::FeatureSize);

/// Reads values from the members of a JSON object or writes them there, so that one list of members
/// serves both ways. Remembers the first member that could not be read because it was missing, of
/// another kind or out of range.
class Archive
{
public:
    enum class Way { Read, Write };

    /// `root` is an object or null, and must outlive the archive.
    Archive(Json::Value &root, Way way)
        : object(&root),
          isReading(way == Way::Read)
    {
    }

    bool reads() const { return isReading; }
    QString badMember() const { return bad; }

    /// The member as it is; null when there is none to read.
    Json::Value &member(const char *key) { return (*object)[key]; }

    /// Returns whether to exchange an optional member: one that can be read or is worth writing.
    bool has(const char *key, bool isWorthWriting) const
    {
        return reads() ? object->isMember(key) : isWorthWriting;
    }

    /// Marks a member that is read as bad unless the rule holds.
    void require(bool rule, const char *key)
    {
        if (isReading && !rule && bad.isEmpty())
            bad = key;
    }

    template <class Number> void number(const char *key, Number &value, qint64 low, qint64 high)
    {
        Json::Value &json = member(key);
        if (!reads())
            json = Json::Int64{static_cast<qint64>(value)};
        const bool fits = json.isInt64() && json.asInt64() >= low && json.asInt64() <= high;
        require(fits, key);
        value = static_cast<Number>(fits ? json.asInt64() : low);
    }

    void text(const char *key, QString &value, int mostBytes)
    {
        Json::Value &json = member(key);
        if (!reads())
            json = value.toStdString();
        const std::string bytes = json.isString() ? json.asString() : std::string();
        value = QString::fromStdString(bytes);
        const bool isSound = json.isString() && value.toStdString() == bytes;
        require(isSound && bytes.size() <= static_cast<size_t>(mostBytes), key);
    }

    void time(const char *key, QDateTime &value)
    {
        QString written = timeText(value);
        text(key, written, 32);
        value = readTimeText(written);
        require(value.isValid(), key);
    }

    /// Base64 of up to `most` blocks, one after the other.
    void blocks(const char *key, QByteArray &value, int blockSize, int most)
    {
        QString encoded = QString::fromLatin1(value.toBase64());
        text(key, encoded, 2 * blockSize * most);
        value = QByteArray::fromBase64(encoded.toLatin1());
        const bool isWhole = value.size() % blockSize == 0 && value.size() <= blockSize * most;
        require(isWhole && encoded == QLatin1String(value.toBase64()), key);
    }

    /// Calls `visit`. The members that it names are those of this member's object.
    template <class Visit> void within(const char *key, Visit visit)
    {
        visitObject(member(key), key, visit);
    }

    /// Calls `visit` for each item. The members that it names are those of the item's object.
    template <class Item>
    void list(const char *key, QVector<Item> &items, int most, void (*visit)(Archive &, Item &))
    {
        Json::Value &array = member(key);
        require(array.isArray() && array.size() <= static_cast<quint32>(most), key);
        if (!reads() || !bad.isEmpty())
            array = Json::arrayValue;
        items.resize(reads() ? static_cast<int>(array.size()) : items.size());
        for (int i = 0; i < items.size(); ++i)
            visitObject(array[i], key, [&] { visit(*this, items[i]); });
    }

private:
    template <class Visit> void visitObject(Json::Value &inner, const char *key, Visit visit)
    {
        Json::Value *const outer = object;
        object = &inner;
        require(inner.isObject(), key);
        if (bad.isEmpty())
            visit();
        object = outer;
    }

    Json::Value *object;
    bool isReading;
    QString bad;
};

using MonthEntry = std::pair<Month, MonthRecords>;

void exchangeUser(Archive &archive, User &user)
{
    archive.number("id", user.id, 1, MaxId);
    archive.number("card", user.cardId, 0, MaxId);
    archive.text("name", user.name, NameField);
    archive.text("department", user.department, NameField);
    archive.require(isOneLine(user.name), "name");
    archive.require(isOneLine(user.department), "department");
    archive.number("vein features", user.veinCount, 0, MaxFeatures);
    archive.number("print features", user.printCount, 0, MaxFeatures);
    archive.require(user.hasRoomFor(0), "print features");
    if (archive.has("features", !user.features.isEmpty()))
        archive.blocks("features", user.features, FeatureSize,
                       qMin(user.veinCount, user.printCount));
}

void exchangeQrCode(Archive &archive, QrCode &code)
{
    archive.text("note", code.note, NameField);
    archive.text("data", code.data, QrDataField);
    archive.time("start", code.start);
    archive.time("end", code.end);
    archive.require(isUsable(code), "qr codes");
}

void exchangeMonth(Archive &archive, MonthEntry &month)
{
    MonthRecords &records = month.second;
    archive.number("year", month.first.first, 1970, 9999);
    archive.number("month", month.first.second, 1, 12);
    archive.number("count", records.spread, 0, MaxRecords);
    if (archive.has("first", records.first > 0))
        archive.number("first", records.first, 0, MaxNumber - MaxRecords);
    if (archive.has("passages", !records.passages.isEmpty()))
        archive.blocks("passages", records.passages, MonthRecords::PassageSize, MaxRecords);
    archive.require(records.count() >= 1 && records.count() <= MaxRecords, "count");
}

void exchangeRecords(Archive &archive, RecordBook &book)
{
    archive.number("seed", book.seed, 0, MaxId);
    archive.time("until", book.until);
    QVector<MonthEntry> months(book.months.begin(), book.months.end());
    archive.list("months", months, MaxMonths, exchangeMonth);
    book.months = {months.begin(), months.end()};
    archive.require(book.months.size() == static_cast<size_t>(months.size()), "months");
}

void exchangeUsers(Archive &archive, State &state, int most)
{
    QVector<User> users;
    for (const auto &user : state.users)
        users.append(user.second);
    archive.list("users", users, most, exchangeUser);
    state.users.clear();
    for (const User &user : qAsConst(users))
        archive.require(state.users.emplace(user.id, user).second, "users");
    archive.require(userListFits(state), "users");
}

void exchangeQrCodes(Archive &archive, State &state, int most)
{
    archive.list("qr codes", state.qrCodes, most, exchangeQrCode);
    std::set<QString> known;
    for (const QrCode &code : qAsConst(state.qrCodes))
        archive.require(known.insert(code.data).second, "qr codes");
    archive.require(qrListFits(state), "qr codes");
}

/// A stored document has exactly the members and kinds of the terminal's own.
void exchangeDocument(Archive &archive, const char *key, Json::Value &document)
{
    Json::Value &stored = archive.member(key);
    if (!archive.reads())
        stored = document;
    else if (stored.isObject())
        mergeKnown(document, stored);
    archive.require(document == stored && toText(stored).size() <= LongestDocument, key);
}

void exchangeState(Archive &archive, const DeviceOptions &options, State &state)
{
    QString format = QString::fromLatin1(Format);
    archive.text("format", format, 64);
    archive.require(format == QLatin1String(Format), "format");
    archive.number("mode", state.mode, 0, 4);
    archive.require(restingModeName(state.mode) != nullptr, "mode");
    archive.number("clock offset", state.clockOffset, -MaxClockOffset, MaxClockOffset);
    if (archive.has("enrollments", state.enrollments > 0))
        archive.number("enrollments", state.enrollments, 0, MaxId);
    archive.number("sensor bias", state.sensorBias, -wire::TofBiasOffset, MaxBias);
    archive.text("serial number", state.serialNumber, SerialLength);
    archive.require(isSerialNumber(state.serialNumber), "serial number");
    exchangeUsers(archive, state, options.maxUsers);
    exchangeQrCodes(archive, state, options.maxQrCodes);
    archive.within("records", [&] { exchangeRecords(archive, state.records); });
    archive.within("documents", [&] {
        exchangeDocument(archive, "output", state.documents.output);
        exchangeDocument(archive, "user", state.documents.user);
        exchangeDocument(archive, "vendor", state.documents.vendor);
    });
}

} // namespace

Json::Value stateDocument(const DeviceOptions &options, State state)
{
    Json::Value document;
    Archive archive(document, Archive::Way::Write);
    exchangeState(archive, options, state);
    return document;
}

bool readState(Json::Value document, const DeviceOptions &options, State *state, QString *error)
{
    Archive archive(document, Archive::Way::Read);
    const int users = document["users"].isArray() ? static_cast<int>(document["users"].size()) : 0;
    State read;
    read.documents = factoryDocuments();
    exchangeState(archive, options, read);
    keepNewest(read.records, options.ring);
    const bool isGood = archive.badMember().isEmpty();
    if (isGood)
        *state = read;
    else if (users > options.maxUsers)
        *error =
            QStringLiteral("%1 users, more than --max-users %2").arg(users).arg(options.maxUsers);
    else
        *error = QStringLiteral("bad value of \"%1\"").arg(archive.badMember());
    return isGood;
}

} // namespace sim
