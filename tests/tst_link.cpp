#include "testkit/commandcases.h"
#include "testkit/dialogrig.h"
#include "testkit/replayclient.h"
#include "widgets/windowhost.h"

#include <QNetworkProxy>
#include <QTcpSocket>
#include <QtTest>

#include <algorithm>
#include <numeric>
#include <vector>

/// Packets, the connection that carries them, and the commands.
class TestLink : public QObject
{
    Q_OBJECT

private slots:
    void writesWithinTheBuffer();
    void readsWithinTheReply();
    void connectsAndDisconnects();
    void waitsForReplies();
    void reconnectsAfterAFailedCommand();
    void noticesAClosedConnection();
    void waitsInRounds();
    void exchangesBytes();
    void refuses_data();
    void refuses();
    void refusesToSend();
};

// A value that does not fit is not written at all, and nothing is written after it.
void TestLink::writesWithinTheBuffer()
{
    const QByteArray values = hex("01 0203 04050607 61620000 6364 08");
    const std::vector<size_t> ends{5, 6, 8, 12, 16, 18, 19};
    for (size_t capacity = 0; capacity <= 20; ++capacity) {
        const size_t end = *(std::upper_bound(ends.begin() + 1, ends.end(), capacity) - 1);
        QByteArray buffer(20, '\xAA');
        PacketWriter packet(reinterpret_cast<uint8_t *>(buffer.data()), capacity);
        packet.u8(0x01).u16(0x0203).u32(0x04050607);
        packet.padded("ab", 2, 4).padded("cdef", 4, 2).bytes("\x08", 1);
        QCOMPARE(packet.fits(), capacity >= 19);
        QCOMPARE(packet.size(), static_cast<uint32_t>(end));
        const QByteArray head(5, '\xAA');
        QCOMPARE(buffer, (head + values.left(static_cast<int>(end) - 5)).leftJustified(20, '\xAA'));
        QVERIFY(!packet.bytes("x", SIZE_MAX).fits());
    }
}

void TestLink::readsWithinTheReply()
{
    for (int received = 0; received <= 8; ++received) {
        const QByteArray reply = hex("EAC5 000002 81 92 07").left(received);
        const ReplyView view(reply);
        const bool whole = received >= 7;
        QCOMPARE(view.declaredTotal(), size_t{received < 5 ? 0U : 7U});
        QVERIFY(view.isWhole(0) == whole && view.isWhole(2) == whole && !view.isWhole(3));
        QCOMPARE(int(view.u16(5)), whole ? 0x8192 : 0);
        uint8_t out[2] = {};
        QCOMPARE(view.copy(5, 2, out), whole);
        QCOMPARE(int(out[1]), whole ? 0x92 : 0);
        QVERIFY(!view.copy(SIZE_MAX, 2, out));
    }
}

void TestLink::connectsAndDisconnects()
{
    Link link;
    auto *socket = link.client.findChild<QTcpSocket *>();
    QVERIFY(link.client.connectToDevice("127.0.0.1", link.peer.port()));
    QTRY_COMPARE(link.peer.connectionCount(), 2);
    QCOMPARE(socket->proxy().type(), QNetworkProxy::NoProxy);
    QCOMPARE(socket->socketOption(QAbstractSocket::LowDelayOption).toInt(), 1);
    for (const uint32_t invalidSize : {0U, 5U, 65537U, 4294967295U})
        QCOMPARE(link.client.sendPacket(invalidSize), 0);
    QVERIFY(link.client.disconnectFromDevice());
    QVERIFY(link.client.disconnectFromDevice());
    QVERIFY(link.client.connectToDevice("127.0.0.1", link.peer.port()));
    QVERIFY(!link.client.connectToDevice("127.0.0.1", freePort()));
    QVERIFY(!link.client.connectToDevice(nullptr, link.peer.port()));
    QCOMPARE(link.client.sendPacket(6), 0);
    QCOMPARE(link.log.toPlainText(),
             QString("Device connected.\nThe connection is abandoned.\n"
                     "The connection is abandoned.\nDevice connected.\n"
                     "Connecting failed.\nConnecting failed.\nFail to send the data packet：-1"));
}

// Nearly every command waits a second for its reply, the list of QR codes two.
void TestLink::waitsForReplies()
{
    Link link;
    uint8_t mode = 0;
    link.peer.expect({hex("EAC5 000001 05"), {hex("EAC5 000001 04")}, false, 900});
    QTest::ignoreMessage(QtDebugMsg, "SDK: 6");
    QVERIFY(link.client.getMode(&mode));

    const QByteArray reply = hex("EAC5 000003 00 7B7D");
    QByteArray list(2, 'x');
    uint32_t length = 0;
    link.peer.expect({hex("EAC5 000001 63"), bytewise(reply), false, 1500});
    QTest::ignoreMessage(QtDebugMsg, "success data num: 8");
    QVERIFY(link.client.getQrCodeList(list.data(), &length, 2) && list == "{}");
    link.peer.expect({hex("EAC5 000001 63"), {reply}});
    QVERIFY(!link.client.getQrCodeList(list.data(), &length, 1)); // a buffer too small

    link.peer.send(reply); // before its request, without an event in which it could be read
    link.peer.expect({hex("EAC5 000001 63"), {}});
    QCOMPARE(link.client.sendPacket(6), 1);
    QTest::ignoreMessage(QtDebugMsg, "fail data num: 0");
    QVERIFY(!link.client.waitReply(1, 50));
}

// After a failed command the client connects again, so that a late reply cannot arrive.
void TestLink::reconnectsAfterAFailedCommand()
{
    Link link;
    const std::pair<const char *, int> replies[] = {
        {"EAC5 000001 00", 1}, {"EAC5 000001 00 00", 2}, {"EAC5 000001 07", 2}, {"EAC5", 3}};
    for (const auto &[reply, connections] : replies) {
        link.peer.expect({hex("EAC5 000001 42"), {hex(reply)}});
        link.client.clearRecords();
        QVERIFY(link.client.resynchronize() && link.client.hasConnection());
        QTRY_COMPARE(link.peer.connectionCount(), connections);
    }
    link.client.distrustReply();
    QVERIFY(link.client.resynchronize());
    QTRY_COMPARE(link.peer.connectionCount(), 4);
    for (const char *reply : {"EAC5 000001 00 00", "EAC5 000001 00"}) {
        link.peer.expect({hex("EAC5 000001 42"), {hex(reply)}});
        QVERIFY(link.client.clearRecords()); // the second reply could be a late one
    }
    QVERIFY(link.client.resynchronize());
    QTRY_COMPARE(link.peer.connectionCount(), 5);
    QCOMPARE(link.log.toPlainText(), QString("Unknown error.\nFail to accept ACK."));
}

void TestLink::noticesAClosedConnection()
{
    Link link;
    QTRY_COMPARE(link.peer.connectionCount(), 1);
    link.peer.closeConnection();
    QTRY_VERIFY(!link.client.hasConnection());
    link.client.distrustReply();
    QVERIFY(!link.client.resynchronize());

    QVERIFY(link.client.connectToDevice("127.0.0.1", link.peer.port()));
    QTRY_COMPARE(link.peer.connectionCount(), 2);
    link.peer.closeConnection();
    int sent = 0;
    while (link.client.sendPacket(6) == 1 && ++sent < 5000)
        QThread::msleep(1); // without events, which would report the closed connection
    QVERIFY(sent < 5000 && !link.client.hasConnection());
    QCOMPARE(link.log.toPlainText(),
             QString("Device connected.\nFail to send the data packet：-1"));
}

// An interruption of a wait shortens the following rounds, but not the last ten.
void TestLink::waitsInRounds()
{
    QTextEdit log;
    QElapsedTimer clock;
    clock.start();
    std::vector<qint64> rounds; // ns
    qint64 busyAfter = 0;       // ms
    const auto passRound = [&] {
        if (rounds.size() == 100)
            QThread::msleep(450);
        rounds.push_back(clock.nsecsElapsed());
        const QCursor *cursor = QGuiApplication::overrideCursor();
        if (busyAfter == 0 && cursor && cursor->shape() == Qt::BusyCursor)
            busyAfter = clock.elapsed();
        return false;
    };
    QVERIFY(!WindowHost(&log).wait(passRound, 300));
    QVERIFY(busyAfter >= 200);
    QVERIFY(!QGuiApplication::overrideCursor());
    QCOMPARE(rounds.size(), size_t{300});
    std::adjacent_difference(rounds.begin(), rounds.end(), rounds.begin());
    const auto isPaused = [](qint64 length) { return length >= 1000000; };
    QVERIFY(std::count_if(rounds.begin(), rounds.end(), isPaused) < 250);
    QVERIFY(std::all_of(rounds.end() - 9, rounds.end(), isPaused));
}

// A refused reply leaves no trace, whatever its head declares, and the next reply is a good one. An
// acknowledgement has a known length.
void TestLink::exchangesBytes()
{
    QTextEdit log;
    ReplayClient client(&log);
    for (const CommandCase &command : commandCases()) {
        for (const int declared : {0, command.reply.size() - 4, 0xFFFFFF}) {
            QByteArray result;
            client.setReply(head(declared) + command.reply.mid(5));
            const bool accepted = command.call(client, &result);
            QVERIFY2(accepted || !command.result.isEmpty(), command.name);
            QVERIFY2(result.size() == (accepted ? command.result.size() : 0), command.name);
        }
        log.clear();
        QByteArray result;
        client.setReply(command.reply.chopped(1));
        QVERIFY2(!command.call(client, &result) && result.isEmpty(), command.name);
        QCOMPARE(log.toPlainText(), QString(command.silent ? "" : "Fail to accept ACK."));
        log.clear();
        client.setReply(command.reply);
        QVERIFY2(command.call(client, &result) && result == command.result, command.name);
        QVERIFY2(client.lastRequest() == command.request, command.name);
        const int count = command.reply.size() - 5;
        QCOMPARE(log.toPlainText(), QByteArray("getUserList getMonthRecords").contains(command.name)
                                        ? QString("The loaded data count：%1").arg(count)
                                        : QString());
    }
}

void TestLink::refuses_data()
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

    replies("setMode", hex("EAC5 000000 42"), "Mode set failed: B");
    replies("getUserList", hex("EAC5 000000 07 6162"), "Unknown error: 0");
    replies("getMonthRecords", hex("EAC5 000003 00 0001"), "Unknown error: 0");
    replies("getEmptyUserId", hex("EAC5 000004 00 010203"), "unknown error.");
    replies("getEmptyUserId", hex("EAC5 000000 00 01020304"), "unknown error.");
    replies("getRemoteFeatures", head(10242) + QByteArray(10242, '\0'), "Unknown error.");
    replies("getPalmVeinImage", head(777600) + QByteArray(777600, '\0'), "");
    replies("getDualImages", head(388800) + QByteArray(777600, '\0'), "");
}

void TestLink::refuses()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, reply);
    QTextEdit log;
    ReplayClient client(&log);
    client.setReply(reply);
    QByteArray result;
    QVERIFY(!commandCase(name).call(client, &result) && result.isEmpty());
    QTEST(log.toPlainText(), "line");
}

void TestLink::refusesToSend()
{
    QTextEdit log;
    ReplayClient client(&log);
    QVERIFY(!client.deleteQrCodeByRemark(QByteArray(33, 'k').constData()));
    QVERIFY(!client.deleteQrCodeByData(QByteArray(33, 'k').constData()));
    QVERIFY(!client.setOutputConfig(QByteArray(65531, 'x').constData(), 65531));
    QCOMPARE(log.toPlainText(), QString("参数错误\nWrong parameter.\n"
                                        "The data is too long for one packet."));
}

QTEST_MAIN(TestLink)
#include "tst_link.moc"
