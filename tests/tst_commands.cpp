#include "commandcases.h"
#include "linkrig.h"

#include <QApplication>
#include <QProcess>
#include <QtTest>

#include <cstdio>
#include <memory>

class TestCommands : public QObject
{
    Q_OBJECT

private slots:
    void exchangesBytes_data();
    void exchangesBytes();
    void tellsWhyItWasRefused_data();
    void tellsWhyItWasRefused();
    void refusesReplies_data();
    void refusesReplies();
    void judgesAnAckByItsStatus();
    void refusesUnsent_data();
    void refusesUnsent();
    void noticesAMissingByte();
};

Q_DECLARE_METATYPE(Call)

namespace {

/// What a command leaves in the log although it succeeds.
QString lineOnSuccess(const QByteArray &name)
{
    if (name == "getUserList")
        return "The loaded data count：5";
    return name == "getMonthRecords" ? "The loaded data count：203" : "";
}

const char OneByteShort[] = "--one-byte-short"; // followed by the name of a command

} // namespace

void TestCommands::exchangesBytes_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const CommandCase &command : commandCases())
        QTest::newRow(command.name) << QByteArray(command.name);
}

void TestCommands::exchangesBytes()
{
    QFETCH(QByteArray, name);
    const CommandCase &command = commandCase(name);
    Link link;
    link.peer.expect({command.request, {command.reply}});
    QByteArray result;
    QVERIFY(command.call(link.client, &result));
    QVERIFY(result == command.result);
    QCOMPARE(link.log.toPlainText(), lineOnSuccess(name));
}

void TestCommands::tellsWhyItWasRefused_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("line");

    struct
    {
        const char *commands; // that share these lines
        std::vector<std::pair<int, const char *>> lines;
    } const tables[] = {
        {"startEnroll",
         {{2, "Wrong parameter."},
          {1, "The device is busy."},
          {21, "User ID doesn't exist."},
          {24, "The current user feature buffer is full."},
          {3, "Device prompts failed：3"},
          {255, "Device prompts failed：-1"}}},
        {"startRemoteEnroll",
         {{2, "Wrong parameter."},
          {1, "The device is busy."},
          {21, "Device prompts failed：21"},
          {128, "Device prompts failed：-128"}}},
        {"clearUsers", {{5, "Fail to clear users：\x05"}, {65, "Fail to clear users：A"}}},
        {"getUserList", {{2, "Unknown error: 2"}, {255, "Unknown error: 255"}}},
        {"getRemoteEnrollImages getRemoteFeatures",
         {{2, "Wrong parameter."}, {1, "Unknown error."}}},
        {"importUserFeatures",
         {{1, "The device is processing tasks, the deletion is failed."},
          {21, "User doesn't exist."},
          {2, "Wrong parameter."},
          {22, "The user feature buffer is full."},
          {24, "Unknown error."}}},
        {"addUser",
         {{1, "The system is busy."},
          {20, "User ID exists."},
          {22, "The user database is full."},
          {2, "Unknown error: 2"}}},
        {"deleteUser deleteUserFeatures",
         {{1, "The device is processing tasks, the deletion is failed."},
          {21, "User doesn't exist."},
          {2, "Wrong parameter."},
          {22, "Unknown error."}}},
        {"getEmptyUserId",
         {{1, "The system is busy."}, {22, "The user database is full."}, {2, "unknown error."}}},
        {"setMode", {{2, "Mode set failed: \x02"}, {66, "Mode set failed: B"}}},
        {"setRtcTime", {{67, "Fail to set RTC time：C"}}},
        {"setDebugAddress", {{68, "Fail to set Debug address：D"}}},
        {"setTofBias", {{69, "Fail to set TOF correct value：E"}}},
        {"rebootDevice", {{233, "Fail to reboot the system：é"}}},
        {"setSerialNumber", {{2, "Unknown error:2"}, {200, "Unknown error:200"}}},
        {"setUserConfig getUserConfig setVendorConfig getVendorConfig setOutputConfig "
         "getOutputConfig getSystemInfo getRecordFileList deleteMonthRecords clearRecords "
         "clearQrCodes getQrCodeList",
         {{1, "Unknown error."}, {255, "Unknown error."}}},
        {"getMonthRecords", {{2, "Unknown error: 2"}, {255, "Unknown error: 255"}}},
        {"addQrCode",
         {{30, "The QR code database is full."},
          {31, "Duplicate QR code data."},
          {2, "Wrong parameter."},
          {32, "Unknown error."}}},
        {"deleteQrCodeByRemark",
         {{2, "Wrong parameter."}, {32, "QR code doesn't exist."}, {31, "Unknown error."}}},
        {"deleteQrCodeByData",
         {{2, "Wrong parameter."}, {32, "QR code doesn't exist."}, {31, "unknown error."}}},
    };
    for (const auto &table : tables) {
        for (const QByteArray &name : QByteArray(table.commands).split(' ')) {
            for (const auto &[status, line] : table.lines)
                QTest::addRow("%s-%d", name.constData(), status) << name << status << QString(line);
        }
    }
}

void TestCommands::tellsWhyItWasRefused()
{
    QFETCH(QByteArray, name);
    QFETCH(int, status);
    Link link;
    link.peer.expect({commandCase(name).request, {head(1) + static_cast<char>(status)}});
    QByteArray result;
    QVERIFY(!commandCase(name).call(link.client, &result));
    QCOMPARE(result, QByteArray());
    QTEST(link.log.toPlainText(), "line");
}

void TestCommands::refusesReplies_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<Call>("call");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("line");
    const auto row = [](const char *rowName, const char *name, const QByteArray &reply,
                        const char *line, const Call &call = {}) {
        QTest::newRow(rowName) << QByteArray(name) << (call ? call : commandCase(name).call)
                               << reply << QString(line);
    };
    const QByteArray nothing = hex("EAC5 000000");
    const QByteArray five = hex("EAC5 000005 00 61626364");

    row("list-declares-nothing", "getUserList", nothing, "Unknown error: 0");
    row("list-declares-nothing-brings-more", "getUserList", nothing + "\x07" + "ab",
        "Unknown error: 0");
    row("list-past-the-buffer", "getUserList", five, "Unknown error: 0", userListCall(3));
    row("list-declares-more-than-arrived", "getUserList", head(0xFFFFFF) + QByteArray(799995, '\0'),
        "Unknown error: 0", userListCall(0x1000000));
    row("list-status-before-text", "getUserList", hex("EAC5 000005 02 61626364"),
        "Unknown error: 2");
    row("text-declares-nothing", "getUserConfig", nothing, "Unknown error.");
    row("text-past-the-buffer", "getVendorConfig", five, "Unknown error.",
        textCall(&CmdClient::getVendorConfig, 3));
    row("text-declares-more-than-arrived", "getOutputConfig", head(2496) + QByteArray(2495, '\0'),
        "Unknown error.", textCall(&CmdClient::getOutputConfig, 3076));
    row("information-past-the-buffer", "getSystemInfo", head(3078) + QByteArray(3078, '\0'),
        "Unknown error.");
    row("codes-declare-more-than-arrived", "getQrCodeList", head(614396) + QByteArray(614395, '\0'),
        "Unknown error.", textCall(&CmdClient::getQrCodeList, 819200));

    const QByteArray page = head(203) + hex("00 0002") + QByteArray(200, 'r');
    row("page-declares-nothing", "getMonthRecords", nothing, "Unknown error: 0");
    row("page-without-count", "getMonthRecords", hex("EAC5 000001 00"), "Unknown error: 0");
    row("page-with-half-a-count", "getMonthRecords", hex("EAC5 000002 00 00"), "Unknown error: 0");
    row("page-past-the-buffer", "getMonthRecords", page, "Unknown error: 0", recordPageCall(199));
    row("page-counts-more-than-it-brings", "getMonthRecords",
        head(203) + hex("00 0003") + QByteArray(200, 'r'), "Unknown error: 0", recordPageCall(400));

    row("id-missing", "getEmptyUserId", hex("EAC5 000001 00"), "unknown error.");
    row("id-cut", "getEmptyUserId", hex("EAC5 000004 00 010203"), "unknown error.");
    row("id-declares-nothing", "getEmptyUserId", nothing + QByteArray(9, '\0'), "unknown error.");
    row("features-cut", "getRemoteFeatures", head(10240) + QByteArray(10240, '\0'),
        "Unknown error.");
    row("pair-cut", "getRemoteEnrollImages", head(777600) + QByteArray(777600, '\0'),
        "Unknown error.");
}

void TestCommands::refusesReplies()
{
    QFETCH(QByteArray, name);
    QFETCH(Call, call);
    QFETCH(QByteArray, reply);
    Link link;
    link.peer.expect({commandCase(name).request, {reply}});
    QByteArray result;
    QVERIFY(!call(link.client, &result));
    QCOMPARE(result, QByteArray());
    QTEST(link.log.toPlainText(), "line");
}

// Where the length is known, the one that the head declares has no say.
void TestCommands::judgesAnAckByItsStatus()
{
    Link link;
    for (const char *reply : {"EAC5 000000 00", "EAC5 FFFFFF 00"}) {
        link.peer.expect({hex("EAC5 000001 42"), {hex(reply)}});
        QVERIFY(link.client.clearRecords());
    }
}

void TestCommands::refusesUnsent_data()
{
    QTest::addColumn<Call>("call");
    QTest::addColumn<QString>("line");
    const QByteArray longKey(33, 'k');
    const QByteArray longText(65531, 'x');
    QTest::newRow("remark") << Call([=](CmdClient &c, QByteArray *) {
        return c.deleteQrCodeByRemark(longKey.constData());
    }) << "参数错误";
    QTest::newRow("data") << Call([=](CmdClient &c, QByteArray *) {
        return c.deleteQrCodeByData(longKey.constData());
    }) << "Wrong parameter.";
    QTest::newRow("document") << Call([=](CmdClient &c, QByteArray *) {
        return c.setOutputConfig(longText.constData(), 65531);
    }) << "The data is too long for one packet.";
    QTest::newRow("features") << Call([=](CmdClient &c, QByteArray *) {
        return c.importUserFeatures(1, 0, reinterpret_cast<const uint8_t *>(longText.constData()),
                                    65526);
    }) << "The data is too long for one packet.";
}

void TestCommands::refusesUnsent()
{
    QFETCH(Call, call);
    Link link; // whose peer expects no request
    QByteArray result;
    QVERIFY(!call(link.client, &result));
    QTEST(link.log.toPlainText(), "line");
}

// A time-out is a second of sleep: many of them pass side by side, each in its own process.
void TestCommands::noticesAMissingByte()
{
    std::vector<std::unique_ptr<QProcess>> processes;
    for (const CommandCase &command : commandCases()) {
        processes.push_back(std::make_unique<QProcess>());
        processes.back()->setReadChannel(QProcess::StandardOutput);
        processes.back()->start(QCoreApplication::applicationFilePath(),
                                {OneByteShort, command.name});
    }
    for (size_t i = 0; i < processes.size(); ++i) {
        const CommandCase &command = commandCases()[i];
        QVERIFY2(processes[i]->waitForFinished(40000), command.name);
        QVERIFY2(processes[i]->exitCode() == 0, command.name);
        QCOMPARE(command.name + QString::fromUtf8(processes[i]->readAll()),
                 command.name + QString(command.silent ? "" : "Fail to accept ACK."));
    }
}

/// The command's reply lacks its last byte: writes the log to the standard output; 0 if the command
/// failed without touching its outputs.
static int exchangeOneByteShort(const QByteArray &name)
{
    const CommandCase &command = commandCase(name);
    Link link;
    link.peer.expect({command.request, {command.reply.chopped(1)}});
    QByteArray result;
    const bool failed = !command.call(link.client, &result) && result.isEmpty();
    std::fputs(link.log.toPlainText().toUtf8().constData(), stdout);
    return failed ? 0 : 1;
}

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    if (argc == 3 && qstrcmp(argv[1], OneByteShort) == 0)
        return exchangeOneByteShort(argv[2]);
    TestCommands test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_commands.moc"
