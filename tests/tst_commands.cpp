#include "testkit/bytes.h"
#include "testkit/commandcases.h"
#include "testkit/replayclient.h"

#include <QTextEdit>
#include <QtTest>

class TestCommands : public QObject
{
    Q_OBJECT

private slots:
    void exchangesBytes_data();
    void exchangesBytes();
    void refuses_data();
    void refuses();
    void refusesToSend();
};

void TestCommands::exchangesBytes_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const CommandCase &command : commandCases())
        QTest::newRow(command.name) << QByteArray(command.name);
}

// A refused reply leaves no trace, whatever its head declares. An acknowledgement has a known
// length.
void TestCommands::exchangesBytes()
{
    QFETCH(QByteArray, name);
    const CommandCase &command = commandCase(name);
    QTextEdit log;
    ReplayClient client(&log);
    for (const int declared : {0, command.reply.size() - 4, 0xFFFFFF}) {
        QByteArray result;
        client.setReply(head(declared) + command.reply.mid(5));
        const bool accepted = command.call(client, &result);
        QVERIFY(accepted || !command.result.isEmpty());
        QCOMPARE(result.size(), accepted ? command.result.size() : 0);
    }
    log.clear();
    QByteArray result;
    client.setReply(command.reply.chopped(1));
    QVERIFY(!command.call(client, &result) && result.isEmpty());
    client.setReply(command.reply);
    QVERIFY(command.call(client, &result));
    QVERIFY(client.lastRequest() == command.request && result == command.result);
    QStringList lines = command.silent ? QStringList() : QStringList("Fail to accept ACK.");
    if (name == "getUserList" || name == "getMonthRecords")
        lines.append(QString("The loaded data count：%1").arg(command.reply.size() - 5));
    QCOMPARE(log.toPlainText(), lines.join('\n'));
}

void TestCommands::refuses_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QString>("line");

    const auto replies = [](const char *names, const QByteArray &reply, const char *line) {
        for (const QByteArray &name : QByteArray(names).split(' '))
            QTest::addRow("%s-%d-%s", name.constData(), reply.size(), line)
                << name << reply << QString(line);
    };
    const auto statuses = [&](const char *names, int status, const char *line) {
        replies(names, head(1) + static_cast<char>(status), line);
    };
    statuses("startEnroll startRemoteEnroll getRemoteEnrollImages getRemoteFeatures "
             "importUserFeatures deleteUser deleteUserFeatures addQrCode deleteQrCodeByRemark "
             "deleteQrCodeByData",
             2, "Wrong parameter.");
    statuses("startEnroll startRemoteEnroll", 1, "The device is busy.");
    statuses("startEnroll", 21, "User ID doesn't exist.");
    statuses("startEnroll", 24, "The current user feature buffer is full.");
    statuses("startRemoteEnroll", 21, "Device prompts failed：21");
    statuses("startEnroll startRemoteEnroll", 255, "Device prompts failed：-1");
    statuses("importUserFeatures deleteUser deleteUserFeatures", 1,
             "The device is processing tasks, the deletion is failed.");
    statuses("importUserFeatures deleteUser deleteUserFeatures", 21, "User doesn't exist.");
    statuses("importUserFeatures", 22, "The user feature buffer is full.");
    statuses("addUser getEmptyUserId", 1, "The system is busy.");
    statuses("addUser", 20, "User ID exists.");
    statuses("addUser getEmptyUserId", 22, "The user database is full.");
    statuses("addQrCode", 30, "The QR code database is full.");
    statuses("addQrCode", 31, "Duplicate QR code data.");
    statuses("deleteQrCodeByRemark deleteQrCodeByData", 32, "QR code doesn't exist.");
    statuses("getEmptyUserId deleteQrCodeByData", 99, "unknown error.");
    statuses("importUserFeatures deleteUser deleteUserFeatures addQrCode deleteQrCodeByRemark "
             "setUserConfig getUserConfig setVendorConfig getVendorConfig setOutputConfig "
             "getOutputConfig getSystemInfo getRecordFileList deleteMonthRecords clearRecords "
             "clearQrCodes getQrCodeList getRemoteEnrollImages getRemoteFeatures",
             99, "Unknown error.");
    statuses("getUserList getMonthRecords addUser", 255, "Unknown error: 255");
    statuses("setSerialNumber", 200, "Unknown error:200");
    statuses("clearUsers", 65, "Fail to clear users：A");
    statuses("setMode", 66, "Mode set failed: B");
    statuses("setRtcTime", 67, "Fail to set RTC time：C");
    statuses("setDebugAddress", 68, "Fail to set Debug address：D");
    statuses("setTofBias", 69, "Fail to set TOF correct value：E");
    statuses("rebootDevice", 233, "Fail to reboot the system：é");

    // Up to its longest reply a command waits for all that is declared; it refuses a longer one.
    const auto limit = [&](const char *name, int longest, const char *line) {
        replies(name, head(longest - 5) + QByteArray(longest - 6, '\0'), "Fail to accept ACK.");
        replies(name, head(longest - 4) + QByteArray(longest - 5, '\0'), line);
    };
    limit("getUserList", 800000, "Unknown error: 0");
    limit("getOutputConfig", 2500, "Unknown error.");
    limit("getQrCodeList", 614400, "Unknown error.");
    limit("getMonthRecords", 320000, "Unknown error: 0");

    replies("getUserList", hex("EAC5 000000 07 6162"), "Unknown error: 0");
    replies("getVendorConfig", hex("EAC5 000006 00 6162636465"), "Unknown error."); // buffer: 4
    replies("getMonthRecords", hex("EAC5 000002 00 00"), "Unknown error: 0");
    replies("getMonthRecords", head(203) + hex("00 0003") + QByteArray(200, 'r'),
            "Unknown error: 0");
    replies("getEmptyUserId", hex("EAC5 000004 00 010203"), "unknown error.");
    replies("getEmptyUserId", hex("EAC5 000000 00 01020304"), "unknown error.");
    replies("getRemoteFeatures", head(10240) + QByteArray(10240, '\0'), "Unknown error.");
    replies("getRemoteFeatures", head(10242) + QByteArray(10242, '\0'), "Unknown error.");
    replies("getPalmVeinImage", head(777600) + QByteArray(777600, '\0'), "");
    replies("getDualImages", head(388800) + QByteArray(777600, '\0'), "");
}

void TestCommands::refuses()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, reply);
    QTextEdit log;
    ReplayClient client(&log);
    log.clear();
    client.setReply(reply);
    QByteArray result;
    QVERIFY(!commandCase(name).call(client, &result));
    QCOMPARE(result, QByteArray());
    QTEST(log.toPlainText(), "line");
}

void TestCommands::refusesToSend()
{
    const QByteArray key(33, 'k');
    const QByteArray text(65531, 'x');
    QTextEdit log;
    ReplayClient client(&log);
    log.clear();
    QVERIFY(!client.deleteQrCodeByRemark(key.constData()));
    QVERIFY(!client.deleteQrCodeByData(key.constData()));
    QVERIFY(!client.setOutputConfig(text.constData(), 65531));
    QCOMPARE(log.toPlainText(), QString("参数错误\nWrong parameter.\n"
                                        "The data is too long for one packet."));
}

QTEST_MAIN(TestCommands)
#include "tst_commands.moc"
