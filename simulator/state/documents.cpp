#include "simulator/state/documents.h"

#include <QJsonDocument>

#include <json/reader.h>
#include <json/writer.h>

namespace sim {
namespace {

constexpr char FactoryOutput[] = R"({
    "data block": {"sys mode": 0, "sys http version": 0, "remote ip": "192.168.31.100",
        "remote port": 18080},
    "recg info block": {"palm recg mode": 2, "fake detect": 1, "max palm fail cnt": 15,
        "detect similar hand": 0, "use card": 1, "card forward type": 1, "use qrcode": 1,
        "qrcode server ip": "192.168.31.101", "qrcode server port": 18081, "qrcode forward type": 1},
    "cfg output block": {"record upload func": 1, "record server ip": "192.168.31.102",
        "record server port": 18082, "record server protocal": 1, "rs485 output res func": 0,
        "rs485 output type": 0, "relay output func": 1, "wegen output func": 1, "weigen type": 1,
        "weigen content": 0}})";

constexpr char FactoryUser[] = R"({
    "recg mode": 2, "use qrcode": 1, "local ip": "192.168.31.5", "local port": 20086,
    "gateway ip": "192.168.31.1", "remote ip": "192.168.31.100", "remote port": 18080,
    "user dev type": 0, "auto reboot": 1, "auto reboot time": 270, "detect similar hand": 0})";

constexpr char FactoryVendor[] = R"({
    "dev info": {"manufacture name": "Kovant", "dev notes": "simulated",
        "dev location desc": "东门 East gate", "sound volume": 18, "user dev type": 0},
    "work param": {"local ip": "192.168.31.5", "local port": 20086, "gateway ip": "192.168.31.1",
        "auto reboot": 1, "auto reboot time": 270, "remote enroll func": 1},
    "sys set": null})";

constexpr int FirstMacEnd = 0x2086; // the last two bytes of the first terminal's MAC address

Json::Value parsed(const char *text)
{
    Json::Value document;
    parseObject(text, &document);
    return document;
}

// Bytes of text; the replies stay within the 800000 and 614400 bytes for which consoles wait.
constexpr size_t LongestUserList = 799'990;
constexpr size_t LongestQrList = 614'390;
// As many entries fit whatever their texts are, so that short lists need not be measured.
constexpr size_t SurelyFittingUsers = 4500;
constexpr size_t SurelyFittingCodes = 150;

Json::Value listEntry(const User &user)
{
    Json::Value entry;
    entry["id"] = std::to_string(user.id);
    entry["card_id"] = std::to_string(user.cardId);
    entry["user_name"] = user.name.toStdString();
    entry["vein_cnt"] = user.veinCount;
    entry["print_cnt"] = user.printCount;
    return entry;
}

Json::Value listEntry(const QrCode &code)
{
    Json::Value entry;
    entry["name"] = code.note.toStdString();
    entry["st"] = timeText(code.start).toStdString();
    entry["et"] = timeText(code.end).toStdString();
    entry["QR"] = code.data.toStdString();
    return entry;
}

} // namespace

bool parseObject(const QByteArray &text, Json::Value *object)
{
    // JsonCpp accepts a comment behind a member even in its strict mode, and texts that are not
    // UTF-8; Qt refuses both, but accepts keys that occur twice.
    if (!QJsonDocument::fromJson(text).isObject())
        return false;
    Json::CharReaderBuilder builder;
    Json::CharReaderBuilder::strictMode(&builder.settings_);
    builder["skipBom"] = false;
    const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
    Json::Value root;
    try {
        if (!reader->parse(text.cbegin(), text.cend(), &root, nullptr) || !root.isObject())
            return false;
    } catch (const std::exception &) {
        return false; // the library throws where a text is nested too deeply
    }
    *object = root;
    return true;
}

QByteArray toText(const Json::Value &value)
{
    Json::StreamWriterBuilder plain;
    plain["indentation"] = "";
    plain["emitUTF8"] = true;
    plain["commentStyle"] = "None";
    return QByteArray::fromStdString(Json::writeString(plain, value));
}

void mergeKnown(Json::Value &target, const Json::Value &update)
{
    for (const std::string &key : target.getMemberNames()) {
        if (!update.isMember(key))
            continue;
        Json::Value &old = target[key];
        const Json::Value &value = update[key];
        if (old.isObject() && value.isObject())
            mergeKnown(old, value);
        else if ((old.isInt() && value.isInt()) || (old.isString() && value.isString()))
            old = value;
    }
}

Documents factoryDocuments()
{
    return {parsed(FactoryOutput), parsed(FactoryUser), parsed(FactoryVendor)};
}

QString deviceName(const DeviceOptions &options)
{
    return options.index == 0
               ? QStringLiteral("Palm terminal (simulated)")
               : QStringLiteral("Palm terminal %1 (simulated)").arg(options.index + 1);
}

Json::Value systemInfoDocument(const DeviceOptions &options, const QString &serialNumber)
{
    const int mac = FirstMacEnd + options.index;
    Json::Value document;
    document["dev_name"] = deviceName(options).toStdString();
    document["dev_serial"] = serialNumber.toStdString();
    document["fw_version"] = "4.2.1";
    document["vein_alg_version"] = "3.0.7";
    document["print_alg_version"] = "2.8.2";
    document["qrcode_alg_version"] = "1.1.0";
    document["max_user_num"] = options.maxUsers;
    document["max_record_num"] = options.ring > 0 ? options.ring : MaxRecords;
    // Locally administered: no real card has such an address.
    document["mac_address"] =
        QString::asprintf("02:4B:56:00:%02X:%02X", mac >> 8, mac & 0xFF).toStdString();
    return document;
}

QByteArray userListText(const State &state)
{
    Json::Value document;
    Json::Value &users = document["user_list"] = Json::arrayValue;
    for (const auto &user : state.users)
        users.append(listEntry(user.second));
    return toText(document);
}

QByteArray qrListText(const State &state)
{
    Json::Value document;
    Json::Value &codes = document["qrcode data"] = Json::arrayValue;
    for (const QrCode &code : state.qrCodes)
        codes.append(listEntry(code));
    return toText(document);
}

bool userListFits(const State &state)
{
    const size_t count = state.users.size();
    // At most one of the two counts of a user grows to two digits.
    return count <= SurelyFittingUsers ||
           static_cast<size_t>(userListText(state).size()) + count <= LongestUserList;
}

bool qrListFits(const State &state)
{
    return static_cast<size_t>(state.qrCodes.size()) <= SurelyFittingCodes ||
           static_cast<size_t>(qrListText(state).size()) <= LongestQrList;
}

} // namespace sim
