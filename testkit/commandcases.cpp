#include "testkit/commandcases.h"

#include "testkit/bytes.h"

#include <cstring>

namespace {

constexpr char Guard = '\xAA';
constexpr uint32_t Untouched = 0xDEADBEEF;
constexpr bool Silent = true;
constexpr bool Logged = false;

using Filling = std::function<bool(CmdClient &, uint8_t *out, uint32_t *length)>;

/// A command that fills a buffer, as a whole or with the length that it returns.
Call filling(size_t capacity, const Filling &call)
{
    return [capacity, call](CmdClient &client, QByteArray *result) {
        QByteArray buffer(static_cast<int>(capacity) + 1, Guard);
        uint32_t length = Untouched;
        const bool ok = call(client, reinterpret_cast<uint8_t *>(buffer.data()), &length);
        const bool isSet = length != Untouched;
        const int filled = ok ? static_cast<int>(isSet ? length : capacity) : 0;
        const int rest = buffer.size() - filled;
        const bool sound = (ok || !isSet) && buffer.mid(filled) == QByteArray(rest, Guard);
        *result = sound ? buffer.left(filled) : "touched";
        return ok;
    };
}

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
        const bool ok = client.getMonthRecords(2026, 3, out, capacity, 1, count);
        if (ok)
            *count *= 100; // bytes of a record
        return ok;
    });
}

/// A command without outputs. Pointers must stay valid.
template <class... Wanted, class... Given>
Call plainCall(bool (CmdClient::*command)(Wanted...), Given... given)
{
    return [=](CmdClient &client, QByteArray *) {
        return (client.*command)(static_cast<Wanted>(given)...);
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

/// A command that returns four bytes of text.
CommandCase text(const char *name, const char *request, const Call &call)
{
    return {name, call, hex(request), hex("EAC5 000005 00 7B22617D"), "{\"a}", Logged};
}

/// Returns bytes whose neighbours differ; the first, at the offset of the status, is not 0.
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

constexpr UserRecord NewUser = {
    0x01020304, 0x0A0B0C0D, "Maria Rossi", {'R', 'e', 'c', 'e', 'p', 't', 'i', 'o', 'n', ',', ' ',
                                            'g', 'r', 'o', 'u', 'n', 'd', ' ', 'f', 'l', 'o', 'o',
                                            'r', ',', ' ', 'w', 'i', 'n', 'g', ' ', 'B', '2'}};
constexpr QrEntry NewCode = {
    "VISIT-2041", "visitor", {20, 26, 3, 4, 8, 0, 0}, {20, 26, 3, 4, 18, 30, 0}};
constexpr ClockRecord Time = {56, 3, 4, 5, 6, 7};
constexpr uint8_t Address[4] = {127, 0, 0, 1};

std::vector<CommandCase> deviceCases()
{
    return {
        value("getTofDistance", "EAC5 000001 00", "EAC5 000002 FE01", "01FE", Silent,
              &CmdClient::getTofDistance),
        ack("setMode", hex("EAC5 000002 04 03"), Silent, &CmdClient::setMode, 3),
        value("getMode", "EAC5 000001 05", "EAC5 000001 04", "04", Silent, &CmdClient::getMode),
        ack("setRtcTime", hex("EAC5 000007 07 380304050607"), Silent, &CmdClient::setRtcTime,
            &Time),
        value("getRtcTime", "EAC5 000001 06", "EAC5 000006 380304050607", "380304050607", Silent,
              &CmdClient::getRtcTime),
        ack("setDebugAddress", hex("EAC5 000007 08 7F000001 EAB6"), Silent,
            &CmdClient::setDebugAddress, &Address[0], 60086),
        ack("setTofBias", hex("EAC5 000003 0A 03E3"), Silent, &CmdClient::setTofBias, -5),
        value("getTofBias", "EAC5 000001 0B", "EAC5 000002 03E3", "FBFFFFFF", Silent,
              &CmdClient::getTofBias),
        ack("setSerialNumber", hex("EAC5 000011 50") + "KV2601abcdefghi" + '\0', Logged,
            &CmdClient::setSerialNumber, "KV2601abcdefghiXYZ", 18),
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

std::vector<CommandCase> documentCases()
{
    const Call info = filling(3076, [](CmdClient &c, uint8_t *out, uint32_t *length) {
        return c.getSystemInfo(reinterpret_cast<char *>(out), length);
    });
    return {
        text("getSystemInfo", "EAC5 000001 17", info),
        text("getUserConfig", "EAC5 000001 16", textCall(&CmdClient::getUserConfig, 3076)),
        ack("setUserConfig", hex("EAC5 000010 15") + R"({"recg mode":1})", Logged,
            &CmdClient::setUserConfig, R"({"recg mode":1})", 15),
        text("getVendorConfig", "EAC5 000001 18", textCall(&CmdClient::getVendorConfig, 3076)),
        ack("setVendorConfig", hex("EAC5 000020 19") + R"({"dev info":{"sound volume":9}})", Logged,
            &CmdClient::setVendorConfig, R"({"dev info":{"sound volume":9}})", 31),
        text("getOutputConfig", "EAC5 000001 1A", textCall(&CmdClient::getOutputConfig, 3076)),
        ack("setOutputConfig", hex("EAC5 00001F 1B") + R"({"data block":{"sys mode":10}})", Logged,
            &CmdClient::setOutputConfig, R"({"data block":{"sys mode":10}})", 30),
    };
}

std::vector<CommandCase> userCases()
{
    const QByteArray pair = pattern(777600);
    const Call images = filling(777600, [](CmdClient &c, uint8_t *out, uint32_t *) {
        return c.getRemoteEnrollImages(out, 777600, 255, 4);
    });
    const Call remoteFeatures = filling(10240, [](CmdClient &c, uint8_t *out, uint32_t *) {
        return c.getRemoteFeatures(out, 10240, 255);
    });
    return {
        ack("addUser",
            hex("EAC5 000049 30 01020304 0A0B0C0D") + "Maria Rossi" + QByteArray(21, '\0') +
                "Reception, ground floor, wing B2",
            Logged, &CmdClient::addUser, &NewUser),
        value("getEmptyUserId", "EAC5 000001 33", "EAC5 000005 00 01020304", "04030201", Logged,
              &CmdClient::getEmptyUserId),
        ack("importUserFeatures", hex("EAC5 002806 2A 00 01020304") + features(), Logged,
            &CmdClient::importUserFeatures, 0x01020304, 0,
            reinterpret_cast<const uint8_t *>(features().constData()), 10240),
        text("getUserList", "EAC5 000001 10", userListCall(819200)),
        ack("deleteUserFeatures", hex("EAC5 000005 34 01020304"), Logged,
            &CmdClient::deleteUserFeatures, 0x01020304),
        ack("deleteUser", hex("EAC5 000005 31 01020304"), Logged, &CmdClient::deleteUser,
            0x01020304),
        ack("startEnroll", hex("EAC5 000006 04 01 00000001"), Silent, &CmdClient::startEnroll, 1),
        ack("startRemoteEnroll", hex("EAC5 000006 04 06 000000FF"), Silent,
            &CmdClient::startRemoteEnroll, 255),
        {"getRemoteEnrollImages", images, hex("EAC5 000006 27 000000FF 04"),
         head(777601) + '\0' + pair, pair, Logged},
        {"getRemoteFeatures", remoteFeatures, hex("EAC5 000005 28 000000FF"),
         head(10241) + '\0' + features(), features(), Logged},
        ack("clearUsers", hex("EAC5 000001 0E"), Silent, &CmdClient::clearUsers),
    };
}

std::vector<CommandCase> recordAndQrCases()
{
    const QByteArray records = pattern(200);
    return {
        text("getRecordFileList", "EAC5 000001 40", textCall(&CmdClient::getRecordFileList, 4224)),
        {"getMonthRecords", recordPageCall(409600), hex("EAC5 000008 43 07EA 03 00000001"),
         head(203) + hex("00 0002") + records, records, Logged},
        ack("deleteMonthRecords", hex("EAC5 000004 41 07EA 03"), Logged,
            &CmdClient::deleteMonthRecords, 2026, 3),
        ack("clearRecords", hex("EAC5 000001 42"), Logged, &CmdClient::clearRecords),
        ack("addQrCode",
            hex("EAC5 00022F 60") + "visitor" + QByteArray(25, '\0') +
                hex("141A0304080000 141A0304121E00") + "VISIT-2041" + QByteArray(502, '\0'),
            Logged, &CmdClient::addQrCode, &NewCode),
        text("getQrCodeList", "EAC5 000001 63", textCall(&CmdClient::getQrCodeList, 819200)),
        ack("deleteQrCodeByRemark", hex("EAC5 000022 62 01") + "visitor" + QByteArray(25, '\0'),
            Logged, &CmdClient::deleteQrCodeByRemark, "visitor"),
        ack("deleteQrCodeByData", hex("EAC5 000022 62 02") + "KV-CLEAN-0042" + QByteArray(19, '\0'),
            Logged, &CmdClient::deleteQrCodeByData, "KV-CLEAN-0042"),
        ack("clearQrCodes", hex("EAC5 000001 61"), Logged, &CmdClient::clearQrCodes),
        ack("rebootDevice", hex("EAC5 000001 EF"), Logged, &CmdClient::rebootDevice),
    };
}

} // namespace

const std::vector<CommandCase> &commandCases()
{
    static const std::vector<CommandCase> cases = [] {
        std::vector<CommandCase> all;
        for (const auto &family :
             {deviceCases(), imageCases(), documentCases(), userCases(), recordAndQrCases()})
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
