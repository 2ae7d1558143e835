#include "testkit/commandcases.h"
#include "testkit/dialogrig.h"
#include "testkit/replayclient.h"

#include <QtTest>

#include <functional>

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
    void fillsABufferExactly();
    void judgesAnAckByItsStatus();
    void refusesUnsent_data();
    void refusesUnsent();
    void noticesAMissingByte_data();
    void noticesAMissingByte();
    void standsDamagedReplies_data();
    void standsDamagedReplies();
};

using Damage = std::function<QByteArray(const QByteArray &reply)>;
Q_DECLARE_METATYPE(Damage)

Q_DECLARE_METATYPE(Call)

namespace {

/// What a command leaves in the log although it succeeds.
QString lineOnSuccess(const QByteArray &name)
{
    if (name == "getUserList")
        return "The loaded data count：5";
    return name == "getMonthRecords" ? "The loaded data count：203" : "";
}

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

    const auto row = [](const char *commands, int status, const char *line) {
        for (const QByteArray &name : QByteArray(commands).split(' '))
            QTest::addRow("%s-%d", name.constData(), status) << name << status << QString(line);
    };
    row("startEnroll startRemoteEnroll getRemoteEnrollImages getRemoteFeatures importUserFeatures "
        "deleteUser deleteUserFeatures addQrCode deleteQrCodeByRemark deleteQrCodeByData",
        2, "Wrong parameter.");
    row("startEnroll startRemoteEnroll", 1, "The device is busy.");
    row("startEnroll", 21, "User ID doesn't exist.");
    row("startEnroll", 24, "The current user feature buffer is full.");
    row("startEnroll", 255, "Device prompts failed：-1");
    row("startRemoteEnroll", 21, "Device prompts failed：21");
    row("startRemoteEnroll", 128, "Device prompts failed：-128");

    row("importUserFeatures deleteUser deleteUserFeatures", 1,
        "The device is processing tasks, the deletion is failed.");
    row("importUserFeatures deleteUser deleteUserFeatures", 21, "User doesn't exist.");
    row("importUserFeatures", 22, "The user feature buffer is full.");
    row("importUserFeatures deleteUser deleteUserFeatures", 24, "Unknown error.");
    row("addUser getEmptyUserId", 1, "The system is busy.");
    row("addUser", 20, "User ID exists.");
    row("addUser getEmptyUserId", 22, "The user database is full.");
    row("getEmptyUserId", 2, "unknown error.");

    row("addQrCode", 30, "The QR code database is full.");
    row("addQrCode", 31, "Duplicate QR code data.");
    row("addQrCode", 32, "Unknown error.");
    row("deleteQrCodeByRemark deleteQrCodeByData", 32, "QR code doesn't exist.");
    row("deleteQrCodeByRemark", 31, "Unknown error.");
    row("deleteQrCodeByData", 31, "unknown error.");

    // Statuses that stand in the line as a number or as a character.
    row("getUserList getMonthRecords addUser", 2, "Unknown error: 2");
    row("getUserList getMonthRecords addUser", 255, "Unknown error: 255");
    row("setSerialNumber", 200, "Unknown error:200");
    row("clearUsers", 5, "Fail to clear users：\uFFFD");
    row("setMode", 66, "Mode set failed: B");
    row("setRtcTime", 67, "Fail to set RTC time：C");
    row("setDebugAddress", 68, "Fail to set Debug address：D");
    row("setTofBias", 69, "Fail to set TOF correct value：E");
    row("rebootDevice", 233, "Fail to reboot the system：é");

    row("setUserConfig getUserConfig setVendorConfig getVendorConfig setOutputConfig "
        "getOutputConfig getSystemInfo getRecordFileList deleteMonthRecords clearRecords "
        "clearQrCodes getQrCodeList getRemoteEnrollImages getRemoteFeatures",
        1, "Unknown error.");
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

    row("list-declares-nothing", "getUserList", nothing + "\x07" + "ab", "Unknown error: 0");
    row("list-past-the-buffer", "getUserList", five, "Unknown error: 0", userListCall(3));
    row("list-longer-than-the-wait", "getUserList", head(0xFFFFFF) + QByteArray(799995, '\0'),
        "Unknown error: 0", userListCall(0x1000000));
    row("list-status-before-text", "getUserList", hex("EAC5 000005 02 61626364"),
        "Unknown error: 2");
    row("text-past-the-buffer", "getVendorConfig", five, "Unknown error.",
        textCall(&CmdClient::getVendorConfig, 3));
    row("text-longer-than-the-wait", "getOutputConfig", head(2496) + QByteArray(2495, '\0'),
        "Unknown error.", textCall(&CmdClient::getOutputConfig, 3076));
    row("information-past-the-buffer", "getSystemInfo", head(3078) + QByteArray(3078, '\0'),
        "Unknown error.");
    row("codes-longer-than-the-wait", "getQrCodeList", head(614396) + QByteArray(614395, '\0'),
        "Unknown error.", textCall(&CmdClient::getQrCodeList, 819200));

    // What is waited for reaches as far as the longest reply that there is.
    row("text-without-its-end", "getUserConfig", head(2495) + QByteArray(2494, '\0'),
        "Fail to accept ACK.");
    row("list-without-its-end", "getUserList", head(799995) + QByteArray(799994, '\0'),
        "Fail to accept ACK.");
    row("codes-without-their-end", "getQrCodeList", head(614395) + QByteArray(614394, '\0'),
        "Fail to accept ACK.");
    row("page-without-its-end", "getMonthRecords", head(319995) + QByteArray(319994, '\0'),
        "Fail to accept ACK.");

    row("page-longer-than-the-wait", "getMonthRecords", head(319996) + QByteArray(319995, '\0'),
        "Unknown error: 0", recordPageCall(409600));
    const QByteArray records(200, 'r');
    row("page-with-half-a-count", "getMonthRecords", hex("EAC5 000002 00 00"), "Unknown error: 0");
    row("page-past-the-buffer", "getMonthRecords", head(203) + hex("00 0002") + records,
        "Unknown error: 0", recordPageCall(199));
    row("page-counts-more-than-it-brings", "getMonthRecords", head(203) + hex("00 0003") + records,
        "Unknown error: 0", recordPageCall(400));

    row("id-cut", "getEmptyUserId", hex("EAC5 000004 00 010203"), "unknown error.");
    row("id-declares-nothing", "getEmptyUserId", nothing + QByteArray(9, '\0'), "unknown error.");
    // Blocks of known size, with a byte too few or the block of another command.
    row("features-cut", "getRemoteFeatures", head(10240) + QByteArray(10240, '\0'),
        "Unknown error.");
    row("features-are-a-picture", "getRemoteFeatures", head(777601) + QByteArray(777601, '\0'),
        "Unknown error.");
    row("pair-cut", "getRemoteEnrollImages", head(777600) + QByteArray(777600, '\0'),
        "Unknown error.");
    row("frame-is-a-pair", "getPalmVeinImage", head(777600) + QByteArray(777600, '\0'), "");
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

void TestCommands::fillsABufferExactly()
{
    Link link;
    link.peer.expect({hex("EAC5 000001 18"), {hex("EAC5 000005 00 61626364")}});
    QByteArray result;
    QVERIFY(textCall(&CmdClient::getVendorConfig, 4)(link.client, &result));
    QCOMPARE(result, QByteArray("abcd"));
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
    static const QByteArray key(33, 'k');
    static const QByteArray text(65531, 'x');
    QTest::newRow("remark") << plainCall(&CmdClient::deleteQrCodeByRemark, key.constData())
                            << "参数错误";
    QTest::newRow("data") << plainCall(&CmdClient::deleteQrCodeByData, key.constData())
                          << "Wrong parameter.";
    QTest::newRow("document") << plainCall(&CmdClient::setOutputConfig, text.constData(), 65531)
                              << "The data is too long for one packet.";
}

void TestCommands::refusesUnsent()
{
    QFETCH(Call, call);
    Link link; // whose peer expects no request
    QByteArray result;
    QVERIFY(!call(link.client, &result));
    QTEST(link.log.toPlainText(), "line");
}

void TestCommands::noticesAMissingByte_data()
{
    exchangesBytes_data();
}

void TestCommands::noticesAMissingByte()
{
    QFETCH(QByteArray, name);
    const CommandCase &command = commandCase(name);
    QTextEdit log;
    ReplayClient client(&log);
    log.clear();
    client.setReply(command.reply.chopped(1));
    QByteArray result;
    QVERIFY(!command.call(client, &result));
    QCOMPARE(result, QByteArray());
    QCOMPARE(log.toPlainText(), QString(command.silent ? "" : "Fail to accept ACK."));
}

void TestCommands::standsDamagedReplies_data()
{
    QTest::addColumn<Damage>("damage");
    const auto declaring = [](int difference) {
        return Damage([difference](const QByteArray &reply) {
            return head(reply.size() - 5 + difference) + reply.mid(5);
        });
    };
    QTest::newRow("nothing") << Damage([](const QByteArray &) { return QByteArray(); });
    QTest::newRow("half-a-head") << Damage([](const QByteArray &reply) { return reply.left(4); });
    QTest::newRow("head-alone") << Damage([](const QByteArray &reply) { return reply.left(5); });
    QTest::newRow("half") << Damage(
        [](const QByteArray &reply) { return reply.left(reply.size() / 2); });
    QTest::newRow("declares-nothing")
        << Damage([](const QByteArray &reply) { return head(0) + reply.mid(5); });
    QTest::newRow("declares-a-byte-more") << declaring(1);
    QTest::newRow("declares-a-byte-less") << declaring(-1);
    QTest::newRow("declares-the-most")
        << Damage([](const QByteArray &reply) { return head(0xFFFFFF) + reply.mid(5); });
    QTest::newRow("followed-by-more")
        << Damage([](const QByteArray &reply) { return reply + hex("EAC5 000001 00"); });
    QTest::newRow("all-ones") << Damage(
        [](const QByteArray &reply) { return QByteArray(reply.size(), '\xFF'); });
}

// Outputs stay untouched or get the terminal's bytes, and the next exchange is a good one.
void TestCommands::standsDamagedReplies()
{
    QFETCH(Damage, damage);
    QTextEdit log;
    ReplayClient client(&log);
    for (const CommandCase &command : commandCases()) {
        client.setReply(damage(command.reply));
        QByteArray result;
        const bool accepted = command.call(client, &result);
        const bool sound =
            accepted ? result.size() == command.result.size() || command.result.startsWith(result)
                     : result.isEmpty();
        QVERIFY2(sound, command.name);
        client.setReply(command.reply);
        QVERIFY2(command.call(client, &result) && result == command.result, command.name);
    }
}

QTEST_MAIN(TestCommands)
#include "tst_commands.moc"
