#include "commandcases.h"

#include "scriptedpeer.h"

#include <cstring>

namespace {

constexpr char Guard = '\xAA';
constexpr uint32_t Untouched = 0xDEADBEEF;

const QByteArray Ok = hex("EAC5 000001 00");

/// A buffer that a command may fill up to its capacity.
class Buffer
{
public:
    explicit Buffer(size_t size)
        : capacity(size),
          bytes(static_cast<int>(size) + 1, Guard)
    {
    }

    uint8_t *data() { return reinterpret_cast<uint8_t *>(bytes.data()); }

    /// The first bytes if the command did well and wrote no others, else whether it wrote any.
    QByteArray result(bool ok, size_t length) const
    {
        const int filled = ok ? static_cast<int>(length) : 0;
        for (int i = filled; i < bytes.size(); ++i) {
            if (bytes[i] != Guard)
                return "touched";
        }
        return bytes.left(filled);
    }

    const size_t capacity;

private:
    QByteArray bytes;
};

Call plain(const std::function<bool(CmdClient &)> &call)
{
    return [call](CmdClient &client, QByteArray *) { return call(client); };
}

/// A command that puts out one value.
template <class Value> Call value(bool (CmdClient::*get)(Value *))
{
    return [get](CmdClient &client, QByteArray *result) {
        Buffer buffer(sizeof(Value));
        Value out;
        std::memcpy(&out, buffer.data(), sizeof out);
        const bool ok = (client.*get)(&out);
        std::memcpy(buffer.data(), &out, sizeof out);
        *result = buffer.result(ok, sizeof out);
        return ok;
    };
}

Call block(size_t size, const std::function<bool(CmdClient &, uint8_t *)> &call)
{
    return [size, call](CmdClient &client, QByteArray *result) {
        Buffer buffer(size);
        const bool ok = call(client, buffer.data());
        *result = buffer.result(ok, size);
        return ok;
    };
}

/// A text or list of a length that the command tells.
Call sized(size_t capacity,
           const std::function<bool(CmdClient &, uint8_t *, uint32_t *, size_t)> &call)
{
    return [capacity, call](CmdClient &client, QByteArray *result) {
        Buffer buffer(capacity);
        uint32_t length = Untouched;
        const bool ok = call(client, buffer.data(), &length, capacity);
        *result = ok || length == Untouched ? buffer.result(ok, length) : "touched";
        return ok;
    };
}

Call text(bool (CmdClient::*set)(const char *, uint32_t), const QByteArray &bytes)
{
    return plain([=](CmdClient &client) {
        return (client.*set)(bytes.constData(), static_cast<uint32_t>(bytes.size()));
    });
}

/// Bytes in which neighbours differ; the first, where others have a status, is not 0.
QByteArray pattern(int size, int shift = 1)
{
    QByteArray bytes(size, '\0');
    for (int i = 0; i < size; ++i)
        bytes[i] = static_cast<char>(i % 251 + shift);
    return bytes;
}

UserRecord user()
{
    UserRecord record = {0x01020304, 0x0A0B0C0D, "Ann", "Lab"};
    std::memset(record.department, 'd', sizeof record.department); // a full field has no zero
    return record;
}

QrEntry qrEntry()
{
    QrEntry entry = {"data", "note", {20, 23, 8, 14, 9, 5, 0}, {20, 24, 1, 2, 3, 4, 5}};
    entry.data[511] = 'z';
    return entry;
}

std::vector<CommandCase> userCases()
{
    const QByteArray features = pattern(10240);
    const QByteArray pair = pattern(777600);
    return {
        {"startEnroll",
         plain([](CmdClient &c) { return c.startEnroll(65536); }),
         hex("EAC5 000006 04 01 00010000"),
         Ok,
         {},
         true},
        {"startRemoteEnroll",
         plain([](CmdClient &c) { return c.startRemoteEnroll(255); }),
         hex("EAC5 000006 04 06 000000FF"),
         Ok,
         {},
         true},
        {"clearUsers",
         plain([](CmdClient &c) { return c.clearUsers(); }),
         hex("EAC5 000001 0E"),
         Ok,
         {},
         true},
        {"getUserList", userListCall(4), hex("EAC5 000001 10"), hex("EAC5 000005 00 61626364"),
         "abcd"},
        {"getRemoteEnrollImages",
         block(777600,
               [](CmdClient &c, uint8_t *out) {
                   return c.getRemoteEnrollImages(out, 777600, 0x01020304, 4);
               }),
         hex("EAC5 000006 27 01020304 04"), head(777601) + '\0' + pair, pair},
        {"getRemoteFeatures",
         block(10240,
               [](CmdClient &c, uint8_t *out) { return c.getRemoteFeatures(out, 10240, 255); }),
         hex("EAC5 000005 28 000000FF"), head(10241) + '\0' + features, features},
        {"importUserFeatures",
         plain([features](CmdClient &c) {
             return c.importUserFeatures(
                 7, 0, reinterpret_cast<const uint8_t *>(features.constData()), 10240);
         }),
         hex("EAC5 002806 2A 00 00000007") + features,
         Ok,
         {}},
        {"addUser",
         plain([](CmdClient &c) {
             const UserRecord record = user();
             return c.addUser(&record);
         }),
         hex("EAC5 000049 30 01020304 0A0B0C0D") + "Ann" + QByteArray(29, '\0') +
             QByteArray(32, 'd'),
         Ok,
         {}},
        {"deleteUser",
         plain([](CmdClient &c) { return c.deleteUser(0x01020304); }),
         hex("EAC5 000005 31 01020304"),
         Ok,
         {}},
        {"getEmptyUserId", value(&CmdClient::getEmptyUserId), hex("EAC5 000001 33"),
         hex("EAC5 000005 00 01020304"), hex("04030201")},
        {"deleteUserFeatures",
         plain([](CmdClient &c) { return c.deleteUserFeatures(9); }),
         hex("EAC5 000005 34 00000009"),
         Ok,
         {}},
    };
}

std::vector<CommandCase> deviceCases()
{
    return {
        {"getTofDistance", value(&CmdClient::getTofDistance), hex("EAC5 000001 00"),
         hex("EAC5 000002 FE01"), hex("01FE"), true},
        {"setMode",
         plain([](CmdClient &c) { return c.setMode(3); }),
         hex("EAC5 000002 04 03"),
         Ok,
         {},
         true},
        {"getMode", value(&CmdClient::getMode), hex("EAC5 000001 05"), hex("EAC5 000001 04"),
         hex("04"), true},
        {"getRtcTime", value(&CmdClient::getRtcTime), hex("EAC5 000001 06"),
         hex("EAC5 000006 380304050607"), hex("380304050607"), true},
        {"setRtcTime",
         plain([](CmdClient &c) {
             const ClockRecord time = {56, 3, 4, 5, 6, 7};
             return c.setRtcTime(&time);
         }),
         hex("EAC5 000007 07 380304050607"),
         Ok,
         {},
         true},
        {"setDebugAddress",
         plain([](CmdClient &c) {
             const uint8_t ip[4] = {192, 168, 31, 20};
             return c.setDebugAddress(ip, 60086);
         }),
         hex("EAC5 000007 08 C0A81F14 EAB6"),
         Ok,
         {},
         true},
        {"setTofBias",
         plain([](CmdClient &c) { return c.setTofBias(-5); }),
         hex("EAC5 000003 0A 03E3"),
         Ok,
         {},
         true},
        {"getTofBias", value(&CmdClient::getTofBias), hex("EAC5 000001 0B"),
         hex("EAC5 000002 03E3"), hex("FBFFFFFF"), true},
        {"setSerialNumber",
         text(&CmdClient::setSerialNumber, "KV2601abcdefghiXYZ"),
         hex("EAC5 000011 50") + "KV2601abcdefghi" + '\0',
         Ok,
         {}},
        {"rebootDevice",
         plain([](CmdClient &c) { return c.rebootDevice(); }),
         hex("EAC5 000001 EF"),
         Ok,
         {}},
    };
}

std::vector<CommandCase> documentCases()
{
    const QByteArray document = hex("EAC5 000005 00 7B22617D");
    const QByteArray content = "{\"a}";
    return {
        {"setUserConfig",
         text(&CmdClient::setUserConfig, "{}"),
         hex("EAC5 000003 15 7B7D"),
         Ok,
         {}},
        {"getUserConfig", textCall(&CmdClient::getUserConfig, 4), hex("EAC5 000001 16"), document,
         content},
        {"getSystemInfo",
         sized(3076, [](CmdClient &c, uint8_t *out, uint32_t *length,
                        size_t) { return c.getSystemInfo(reinterpret_cast<char *>(out), length); }),
         hex("EAC5 000001 17"), document, content},
        {"getVendorConfig", textCall(&CmdClient::getVendorConfig, 4), hex("EAC5 000001 18"),
         document, content},
        {"setVendorConfig",
         text(&CmdClient::setVendorConfig, "{}"),
         hex("EAC5 000003 19 7B7D"),
         Ok,
         {}},
        {"getOutputConfig", textCall(&CmdClient::getOutputConfig, 4), hex("EAC5 000001 1A"),
         document, content},
        {"setOutputConfig",
         text(&CmdClient::setOutputConfig, QByteArray(65530, 'x')),
         hex("EAC5 00FFFB 1B") + QByteArray(65530, 'x'),
         Ok,
         {}},
        {"getRecordFileList", textCall(&CmdClient::getRecordFileList, 4), hex("EAC5 000001 40"),
         document, content},
    };
}

std::vector<CommandCase> imageCases()
{
    const QByteArray one = pattern(388800, 1);
    const QByteArray two = pattern(388800, 2);
    return {
        {"getPalmprintImage",
         block(388800, [](CmdClient &c, uint8_t *out) { return c.getPalmprintImage(out); }),
         hex("EAC5 000001 01"), head(388800) + one, one, true},
        {"getPalmVeinImage",
         block(388800, [](CmdClient &c, uint8_t *out) { return c.getPalmVeinImage(out); }),
         hex("EAC5 000001 02"), head(388800) + two, two, true},
        {"getDualImages",
         block(777600,
               [](CmdClient &c, uint8_t *out) { return c.getDualImages(out + 388800, out); }),
         hex("EAC5 000001 03"), head(777600) + two + one, one + two, true},
    };
}

std::vector<CommandCase> recordAndQrCases()
{
    const QByteArray records = pattern(200);
    return {
        {"deleteMonthRecords",
         plain([](CmdClient &c) { return c.deleteMonthRecords(2024, 7); }),
         hex("EAC5 000004 41 07E8 07"),
         Ok,
         {}},
        {"clearRecords",
         plain([](CmdClient &c) { return c.clearRecords(); }),
         hex("EAC5 000001 42"),
         Ok,
         {}},
        {"getMonthRecords", recordPageCall(200), hex("EAC5 000008 43 07E8 07 00000BB8"),
         head(203) + hex("00 0002") + records, records + "2 records"},
        {"addQrCode",
         plain([](CmdClient &c) {
             const QrEntry entry = qrEntry();
             return c.addQrCode(&entry);
         }),
         hex("EAC5 00022F 60") + "note" + QByteArray(28, '\0') +
             hex("1417080E090500 14180102030405") + "data" + QByteArray(507, '\0') + 'z',
         Ok,
         {}},
        {"clearQrCodes",
         plain([](CmdClient &c) { return c.clearQrCodes(); }),
         hex("EAC5 000001 61"),
         Ok,
         {}},
        {"deleteQrCodeByRemark",
         plain([](CmdClient &c) { return c.deleteQrCodeByRemark("gate"); }),
         hex("EAC5 000022 62 01") + "gate" + QByteArray(28, '\0'),
         Ok,
         {}},
        {"deleteQrCodeByData",
         plain([](CmdClient &c) { return c.deleteQrCodeByData(QByteArray(32, 'k').constData()); }),
         hex("EAC5 000022 62 02") + QByteArray(32, 'k'),
         Ok,
         {}},
        {"getQrCodeList", textCall(&CmdClient::getQrCodeList, 4), hex("EAC5 000001 63"),
         hex("EAC5 000005 00 7B22617D"), "{\"a}"},
    };
}

} // namespace

Call textCall(bool (CmdClient::*get)(char *, uint32_t *, size_t), size_t capacity)
{
    return sized(capacity, [get](CmdClient &client, uint8_t *out, uint32_t *length, size_t room) {
        return (client.*get)(reinterpret_cast<char *>(out), length, room);
    });
}

Call userListCall(size_t capacity)
{
    return sized(capacity, [](CmdClient &client, uint8_t *out, uint32_t *length, size_t room) {
        return client.getUserList(out, length, room);
    });
}

Call recordPageCall(size_t capacity)
{
    return [capacity](CmdClient &client, QByteArray *result) {
        Buffer buffer(capacity);
        uint32_t count = Untouched;
        const bool ok = client.getMonthRecords(2024, 7, buffer.data(), capacity, 3000, &count);
        *result = buffer.result(ok, ok ? count * 100 : 0);
        if (ok || count != Untouched)
            result->append(QByteArray::number(count) + " records");
        return ok;
    };
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
