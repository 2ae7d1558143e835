#include "commandcases.h"

#include "scriptedpeer.h"

#include <cstring>

namespace {

constexpr char Guard = '\xAA';
constexpr uint32_t Untouched = 0xDEADBEEF;
constexpr bool Silent = true;
constexpr bool Told = false;

using Filling = std::function<bool(CmdClient &, uint8_t *out, uint32_t *length)>;

/// A command that fills a buffer: all of it, or as many bytes as it says.
Call filling(size_t capacity, const Filling &call)
{
    return [capacity, call](CmdClient &client, QByteArray *result) {
        QByteArray buffer(static_cast<int>(capacity) + 1, Guard);
        uint32_t length = Untouched;
        const bool ok = call(client, reinterpret_cast<uint8_t *>(buffer.data()), &length);
        const bool told = length != Untouched;
        const int filled = ok ? static_cast<int>(told ? length : capacity) : 0;
        const int rest = buffer.size() - filled;
        const bool sound = (ok || !told) && buffer.mid(filled) == QByteArray(rest, Guard);
        *result = sound ? buffer.left(filled) : "touched";
        return ok;
    };
}

template <class... Wanted, class... Given>
CommandCase ack(const char *name, const QByteArray &request, bool silent,
                bool (CmdClient::*command)(Wanted...), Given... given)
{
    return {name, plainCall(command, given...), request, hex("EAC5 000001 00"), {}, silent};
}

template <class Value>
CommandCase value(const char *name, const char *request, const char *reply, const char *result,
                  bool silent, bool (CmdClient::*get)(Value *))
{
    const Call call = filling(sizeof(Value), [get](CmdClient &client, uint8_t *out, uint32_t *) {
        return (client.*get)(reinterpret_cast<Value *>(out));
    });
    return {name, call, hex(request), hex(reply), hex(result), silent};
}

/// A command that puts out four bytes of text.
CommandCase text(const char *name, const char *request, const Call &call)
{
    return {name, call, hex(request), hex("EAC5 000005 00 7B22617D"), "{\"a}", Told};
}

/// Bytes in which neighbours differ; the first, where others have a status, is not 0.
QByteArray pattern(int size, int shift = 1)
{
    QByteArray bytes(size, '\0');
    for (int i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i % 251 + shift);
    return bytes;
}

const QByteArray &features()
{
    static const QByteArray bytes = pattern(10240);
    return bytes;
}

const UserRecord *user()
{
    static UserRecord record = {0x01020304, 0x0A0B0C0D, "Ann", ""};
    std::memset(record.department, 'd', sizeof record.department); // a full field has no zero
    return &record;
}

const QrEntry *qrEntry()
{
    static QrEntry entry = {"data", "note", {20, 23, 8, 14, 9, 5, 0}, {20, 24, 1, 2, 3, 4, 5}};
    entry.data[511] = 'z';
    return &entry;
}

std::vector<CommandCase> userCases()
{
    const QByteArray pair = pattern(777600);
    const Call images = filling(777600, [](CmdClient &c, uint8_t *out, uint32_t *) {
        return c.getRemoteEnrollImages(out, 777600, 0x01020304, 4);
    });
    const Call remoteFeatures = filling(10240, [](CmdClient &c, uint8_t *out, uint32_t *) {
        return c.getRemoteFeatures(out, 10240, 255);
    });
    return {
        ack("startEnroll", hex("EAC5 000006 04 01 00010000"), Silent, &CmdClient::startEnroll,
            65536),
        ack("startRemoteEnroll", hex("EAC5 000006 04 06 000000FF"), Silent,
            &CmdClient::startRemoteEnroll, 255),
        ack("clearUsers", hex("EAC5 000001 0E"), Silent, &CmdClient::clearUsers),
        text("getUserList", "EAC5 000001 10", userListCall(4)),
        {"getRemoteEnrollImages", images, hex("EAC5 000006 27 01020304 04"),
         head(777601) + '\0' + pair, pair, Told},
        {"getRemoteFeatures", remoteFeatures, hex("EAC5 000005 28 000000FF"),
         head(10241) + '\0' + features(), features(), Told},
        ack("importUserFeatures", hex("EAC5 002806 2A 00 00000007") + features(), Told,
            &CmdClient::importUserFeatures, 7, 0,
            reinterpret_cast<const uint8_t *>(features().constData()), 10240),
        ack("addUser",
            hex("EAC5 000049 30 01020304 0A0B0C0D") + "Ann" + QByteArray(29, '\0') +
                QByteArray(32, 'd'),
            Told, &CmdClient::addUser, user()),
        ack("deleteUser", hex("EAC5 000005 31 01020304"), Told, &CmdClient::deleteUser, 0x01020304),
        value("getEmptyUserId", "EAC5 000001 33", "EAC5 000005 00 01020304", "04030201", Told,
              &CmdClient::getEmptyUserId),
        ack("deleteUserFeatures", hex("EAC5 000005 34 00000009"), Told,
            &CmdClient::deleteUserFeatures, 9),
    };
}

std::vector<CommandCase> deviceCases()
{
    static const ClockRecord clock = {56, 3, 4, 5, 6, 7};
    static const uint8_t ip[4] = {192, 168, 31, 20};
    return {
        value("getTofDistance", "EAC5 000001 00", "EAC5 000002 FE01", "01FE", Silent,
              &CmdClient::getTofDistance),
        ack("setMode", hex("EAC5 000002 04 03"), Silent, &CmdClient::setMode, 3),
        value("getMode", "EAC5 000001 05", "EAC5 000001 04", "04", Silent, &CmdClient::getMode),
        value("getRtcTime", "EAC5 000001 06", "EAC5 000006 380304050607", "380304050607", Silent,
              &CmdClient::getRtcTime),
        ack("setRtcTime", hex("EAC5 000007 07 380304050607"), Silent, &CmdClient::setRtcTime,
            &clock),
        ack("setDebugAddress", hex("EAC5 000007 08 C0A81F14 EAB6"), Silent,
            &CmdClient::setDebugAddress, &ip[0], 60086),
        ack("setTofBias", hex("EAC5 000003 0A 03E3"), Silent, &CmdClient::setTofBias, -5),
        value("getTofBias", "EAC5 000001 0B", "EAC5 000002 03E3", "FBFFFFFF", Silent,
              &CmdClient::getTofBias),
        ack("setSerialNumber", hex("EAC5 000011 50") + "KV2601abcdefghi" + '\0', Told,
            &CmdClient::setSerialNumber, "KV2601abcdefghiXYZ", 18),
        ack("rebootDevice", hex("EAC5 000001 EF"), Told, &CmdClient::rebootDevice),
    };
}

std::vector<CommandCase> documentCases()
{
    static const QByteArray longest(65530, 'x');
    const Call info = filling(3076, [](CmdClient &c, uint8_t *out, uint32_t *length) {
        return c.getSystemInfo(reinterpret_cast<char *>(out), length);
    });
    return {
        ack("setUserConfig", hex("EAC5 000003 15 7B7D"), Told, &CmdClient::setUserConfig, "{}", 2),
        text("getUserConfig", "EAC5 000001 16", textCall(&CmdClient::getUserConfig, 4)),
        text("getSystemInfo", "EAC5 000001 17", info),
        text("getVendorConfig", "EAC5 000001 18", textCall(&CmdClient::getVendorConfig, 4)),
        ack("setVendorConfig", hex("EAC5 000003 19 7B7D"), Told, &CmdClient::setVendorConfig, "{}",
            2),
        text("getOutputConfig", "EAC5 000001 1A", textCall(&CmdClient::getOutputConfig, 4)),
        ack("setOutputConfig", hex("EAC5 00FFFB 1B") + longest, Told, &CmdClient::setOutputConfig,
            longest.constData(), 65530),
        text("getRecordFileList", "EAC5 000001 40", textCall(&CmdClient::getRecordFileList, 4)),
        text("getQrCodeList", "EAC5 000001 63", textCall(&CmdClient::getQrCodeList, 4)),
    };
}

std::vector<CommandCase> imageCases()
{
    const auto frame = [](bool (CmdClient::*get)(uint8_t *)) {
        return filling(388800,
                       [get](CmdClient &c, uint8_t *out, uint32_t *) { return (c.*get)(out); });
    };
    const Call dual = filling(777600, [](CmdClient &c, uint8_t *out, uint32_t *) {
        return c.getDualImages(out + 388800, out);
    });
    const QByteArray one = pattern(388800, 1);
    const QByteArray two = pattern(388800, 2);
    return {
        {"getPalmprintImage", frame(&CmdClient::getPalmprintImage), hex("EAC5 000001 01"),
         head(388800) + one, one, Silent},
        {"getPalmVeinImage", frame(&CmdClient::getPalmVeinImage), hex("EAC5 000001 02"),
         head(388800) + two, two, Silent},
        {"getDualImages", dual, hex("EAC5 000001 03"), head(777600) + two + one, one + two, Silent},
    };
}

std::vector<CommandCase> recordAndQrCases()
{
    static const QByteArray key(32, 'k');
    const QByteArray records = pattern(200);
    return {
        ack("deleteMonthRecords", hex("EAC5 000004 41 07E8 07"), Told,
            &CmdClient::deleteMonthRecords, 2024, 7),
        ack("clearRecords", hex("EAC5 000001 42"), Told, &CmdClient::clearRecords),
        {"getMonthRecords", recordPageCall(200), hex("EAC5 000008 43 07E8 07 00000BB8"),
         head(203) + hex("00 0002") + records, records, Told},
        ack("addQrCode",
            hex("EAC5 00022F 60") + "note" + QByteArray(28, '\0') +
                hex("1417080E090500 14180102030405") + "data" + QByteArray(507, '\0') + 'z',
            Told, &CmdClient::addQrCode, qrEntry()),
        ack("clearQrCodes", hex("EAC5 000001 61"), Told, &CmdClient::clearQrCodes),
        ack("deleteQrCodeByRemark", hex("EAC5 000022 62 01") + "gate" + QByteArray(28, '\0'), Told,
            &CmdClient::deleteQrCodeByRemark, "gate"),
        ack("deleteQrCodeByData", hex("EAC5 000022 62 02") + key, Told,
            &CmdClient::deleteQrCodeByData, key.constData()),
    };
}

} // namespace

Call textCall(bool (CmdClient::*get)(char *, uint32_t *, size_t), size_t capacity)
{
    return filling(capacity, [=](CmdClient &client, uint8_t *out, uint32_t *length) {
        return (client.*get)(reinterpret_cast<char *>(out), length, capacity);
    });
}

Call userListCall(size_t capacity)
{
    return filling(capacity, [=](CmdClient &client, uint8_t *out, uint32_t *length) {
        return client.getUserList(out, length, capacity);
    });
}

Call recordPageCall(size_t capacity)
{
    return filling(capacity, [=](CmdClient &client, uint8_t *out, uint32_t *count) {
        const bool ok = client.getMonthRecords(2024, 7, out, capacity, 3000, count);
        if (ok)
            *count *= 100; // bytes of a record
        return ok;
    });
}

const std::vector<CommandCase> &commandCases()
{
    static const std::vector<CommandCase> cases = [] {
        std::vector<CommandCase> all;
        for (const auto &family :
             {userCases(), deviceCases(), documentCases(), imageCases(), recordAndQrCases()})
            all.insert(all.end(), family.begin(), family.end());
        return all;
    }();
    return cases;
}

const CommandCase &commandCase(const QByteArray &name)
{
    for (const CommandCase &command : commandCases()) {
        if (name == command.name)
            return command;
    }
    qFatal("No command %s", name.constData());
}
