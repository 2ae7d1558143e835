#include "tools/exchanges/exchanges.h"

#include "link/cmdclient.h"
#include "simulator/terminal.h"
#include "tools/exchanges/recorder.h"

#include <QElapsedTimer>
#include <QTextEdit>
#include <QTextStream>

namespace {

constexpr uint32_t LocalUser = 1;
constexpr uint32_t NewUser = 40;
constexpr uint32_t RemoteUser = 255;
constexpr int EnrollmentTimeout = 10000; // ms

/// Room for the longest reply, and for the two outputs that some commands have.
struct Outputs
{
    std::vector<uint8_t> bytes = std::vector<uint8_t>(819200);
    uint32_t number = 0;
    uint8_t byte = 0;
    uint16_t half = 0;
    int32_t bias = 0;
    ClockRecord clock = {};

    char *text() { return reinterpret_cast<char *>(bytes.data()); }
};

struct Command
{
    const char *name; ///< null: needed by what follows, no example itself
    bool (*call)(CmdClient &client, Outputs &out);
};

constexpr UserRecord ExampleUser = {NewUser, 1234567, "Maria Rossi", "Reception"};
constexpr QrEntry ExampleCode = {
    "VISIT-2041", "visitor", {20, 26, 3, 4, 8, 0, 0}, {20, 26, 3, 4, 18, 30, 0}};
constexpr ClockRecord ExampleTime = {56, 3, 4, 5, 6, 7};
constexpr uint8_t NoAddress[4] = {0, 0, 0, 0};

bool setText(CmdClient &client, bool (CmdClient::*set)(const char *, uint32_t), const char *json)
{
    return (client.*set)(json, qstrlen(json));
}

// In an order in which every one succeeds.
const Command commands[] = {
    {"getTofDistance", [](CmdClient &c, Outputs &o) { return c.getTofDistance(&o.half); }},
    {"getPalmprintImage",
     [](CmdClient &c, Outputs &o) { return c.getPalmprintImage(o.bytes.data()); }},
    {"getPalmVeinImage",
     [](CmdClient &c, Outputs &o) { return c.getPalmVeinImage(o.bytes.data()); }},
    {"getDualImages",
     [](CmdClient &c, Outputs &o) {
         return c.getDualImages(o.bytes.data(), o.bytes.data() + wire::FrameSize);
     }},
    {"setMode", [](CmdClient &c, Outputs &) { return c.setMode(3); }},
    {"getMode", [](CmdClient &c, Outputs &o) { return c.getMode(&o.byte); }},
    {"setRtcTime", [](CmdClient &c, Outputs &) { return c.setRtcTime(&ExampleTime); }},
    {"getRtcTime", [](CmdClient &c, Outputs &o) { return c.getRtcTime(&o.clock); }},
    {"setDebugAddress", [](CmdClient &c, Outputs &) { return c.setDebugAddress(NoAddress, 0); }},
    {"setTofBias", [](CmdClient &c, Outputs &) { return c.setTofBias(-5); }},
    {"getTofBias", [](CmdClient &c, Outputs &o) { return c.getTofBias(&o.bias); }},
    {"setSerialNumber",
     [](CmdClient &c, Outputs &) { return c.setSerialNumber("KV2603Ab3dEf9Zq", 15); }},
    {"getSystemInfo",
     [](CmdClient &c, Outputs &o) { return c.getSystemInfo(o.text(), &o.number); }},
    {"getUserConfig",
     [](CmdClient &c, Outputs &o) { return c.getUserConfig(o.text(), &o.number, 3076); }},
    {"setUserConfig",
     [](CmdClient &c, Outputs &) {
         return setText(c, &CmdClient::setUserConfig, R"({"recg mode":1})");
     }},
    {"getVendorConfig",
     [](CmdClient &c, Outputs &o) { return c.getVendorConfig(o.text(), &o.number, 3076); }},
    {"setVendorConfig",
     [](CmdClient &c, Outputs &) {
         return setText(c, &CmdClient::setVendorConfig, R"({"dev info":{"sound volume":9}})");
     }},
    {"getOutputConfig",
     [](CmdClient &c, Outputs &o) { return c.getOutputConfig(o.text(), &o.number, 3076); }},
    {"setOutputConfig",
     [](CmdClient &c, Outputs &) {
         return setText(c, &CmdClient::setOutputConfig, R"({"data block":{"sys mode":10}})");
     }},
    {"addUser", [](CmdClient &c, Outputs &) { return c.addUser(&ExampleUser); }},
    {"getEmptyUserId", [](CmdClient &c, Outputs &o) { return c.getEmptyUserId(&o.number); }},
    {"importUserFeatures",
     [](CmdClient &c, Outputs &) {
         const std::vector<uint8_t> features(wire::FeatureSize, 0x5A);
         return c.importUserFeatures(NewUser, 0, features.data(), wire::FeatureSize);
     }},
    {"getUserList",
     [](CmdClient &c, Outputs &o) {
         return c.getUserList(o.bytes.data(), &o.number, o.bytes.size());
     }},
    {"deleteUserFeatures", [](CmdClient &c, Outputs &) { return c.deleteUserFeatures(NewUser); }},
    {"deleteUser", [](CmdClient &c, Outputs &) { return c.deleteUser(NewUser); }},
    {"startEnroll", [](CmdClient &c, Outputs &) { return c.startEnroll(LocalUser); }},
    {"startRemoteEnroll", [](CmdClient &c, Outputs &) { return c.startRemoteEnroll(RemoteUser); }},
    {"getRemoteEnrollImages",
     [](CmdClient &c, Outputs &o) {
         return c.getRemoteEnrollImages(o.bytes.data(), o.bytes.size(), RemoteUser, 0);
     }},
    {"getRemoteFeatures",
     [](CmdClient &c, Outputs &o) {
         return c.getRemoteFeatures(o.bytes.data(), o.bytes.size(), RemoteUser);
     }},
    {"clearUsers", [](CmdClient &c, Outputs &) { return c.clearUsers(); }},
    {"getRecordFileList",
     [](CmdClient &c, Outputs &o) { return c.getRecordFileList(o.text(), &o.number, 4224); }},
    {"getMonthRecords",
     [](CmdClient &c, Outputs &o) {
         return c.getMonthRecords(2026, 3, o.bytes.data(), o.bytes.size(), 0, &o.number);
     }},
    {"deleteMonthRecords", [](CmdClient &c, Outputs &) { return c.deleteMonthRecords(2026, 3); }},
    {"clearRecords", [](CmdClient &c, Outputs &) { return c.clearRecords(); }},
    {"addQrCode", [](CmdClient &c, Outputs &) { return c.addQrCode(&ExampleCode); }},
    {"getQrCodeList",
     [](CmdClient &c, Outputs &o) { return c.getQrCodeList(o.text(), &o.number, o.bytes.size()); }},
    {"deleteQrCodeByRemark",
     [](CmdClient &c, Outputs &) { return c.deleteQrCodeByRemark("visitor"); }},
    {nullptr, [](CmdClient &c, Outputs &) { return c.addQrCode(&ExampleCode); }},
    {"deleteQrCodeByData",
     [](CmdClient &c, Outputs &) { return c.deleteQrCodeByData("VISIT-2041"); }},
    {"clearQrCodes", [](CmdClient &c, Outputs &) { return c.clearQrCodes(); }},
    {"rebootDevice", [](CmdClient &c, Outputs &) { return c.rebootDevice(); }},
};

/// An enrollment takes its time, in which the terminal does little else.
bool waitForIdleness(CmdClient &client)
{
    QElapsedTimer timer;
    timer.start();
    uint8_t mode = 0;
    while (client.getMode(&mode) && timer.elapsed() < EnrollmentTimeout) {
        if (mode != 1 && mode != 6)
            return true;
    }
    return false;
}

std::vector<Exchange> complain(const char *command, const QTextEdit &log)
{
    QTextStream(stderr) << "No good example of " << command << ": " << log.toPlainText() << '\n';
    return {};
}

} // namespace

std::vector<Exchange> recordExchanges()
{
    sim::TerminalOptions options;
    options.enrollMs = 50;
    sim::Terminal terminal(options);
    terminal.device().state.records =
        sim::makeRecords(options.seed, 6, QDateTime({2026, 3, 4}, {5, 6, 7}, Qt::UTC));
    terminal.listen(QHostAddress(QHostAddress::LocalHost), 0);
    Recorder recorder(terminal.port());
    QTextEdit log;
    CmdClient client(&log, nullptr);
    if (!client.connectToDevice("127.0.0.1", recorder.port()))
        return complain("connecting", log);

    std::vector<Exchange> exchanges;
    Outputs outputs;
    for (const Command &command : commands) {
        if (!waitForIdleness(client))
            return complain("idleness", log);
        recorder.takeRequest();
        recorder.takeReply();
        if (!command.call(client, outputs))
            return complain(command.name, log);
        if (command.name)
            exchanges.push_back({command.name, recorder.takeRequest(), recorder.takeReply()});
    }
    return exchanges;
}
