#include "linkrig.h"

#include <QNetworkProxy>
#include <QTcpSocket>
#include <QtTest>

#include <functional>

using Call = std::function<bool(CmdClient &)>;
using Pieces = QList<QByteArray>;
Q_DECLARE_METATYPE(Call)

namespace {

const char AnyRequest[] =
    "EAC5 000001 00"; // what a client that has sent nothing yet sends as 6 bytes

/// Notes whether a command is waiting at the moment a timer fires.
class WaitProbe : public QObject
{
    Q_OBJECT

public:
    explicit WaitProbe(const CmdClient &observed)
        : client(observed)
    {
        QTimer::singleShot(0, this, SLOT(look()));
    }

    bool waiting = false;

private slots:
    void look() { waiting = client.isWaiting(); }

private:
    const CmdClient &client;
};

QTcpSocket *socketOf(const Link &link)
{
    return link.client.findChild<QTcpSocket *>();
}

} // namespace

class TestCmdClient : public QObject
{
    Q_OBJECT

private slots:
    void connectsAndDisconnects();
    void reconnectsWhenThePeerHasLeft();
    void failsToConnect_data();
    void failsToConnect();
    void waits_data();
    void waits();
    void discardsLateData();
    void tellsWhetherItWaits();
    void framesPackets();
};

void TestCmdClient::connectsAndDisconnects()
{
    ScriptedPeer peer;
    QTextEdit log;
    CmdClient client(&log, nullptr);
    QCOMPARE(client.findChild<QTcpSocket *>()->proxy().type(), QNetworkProxy::NoProxy);
    QVERIFY(client.disconnectFromDevice());
    QVERIFY(client.connectToDevice("127.0.0.1", peer.port()));
    QVERIFY(client.connectToDevice("127.0.0.1", peer.port()));
    QTRY_COMPARE(peer.connectionCount(), 2);
    QCOMPARE(client.sendPacket(6), 1); // not on its way yet, which keeps the socket busy
    QVERIFY(client.disconnectFromDevice());
    QVERIFY(client.connectToDevice("127.0.0.1", peer.port()));
    QCOMPARE(log.toPlainText(),
             QString("The connection is abandoned.\nDevice connected.\n"
                     "Device connected.\nThe connection is abandoned.\nDevice connected."));
}

void TestCmdClient::reconnectsWhenThePeerHasLeft()
{
    Link link;
    QTRY_COMPARE(link.peer.connectionCount(), 1);
    link.peer.closeConnection();
    QTRY_COMPARE(socketOf(link)->state(), QAbstractSocket::UnconnectedState);

    uint16_t distance = 7;
    QVERIFY(!link.client.getTofDistance(&distance));
    QVERIFY(link.client.connectToDevice("127.0.0.1", link.peer.port()));
    link.peer.expect({hex("EAC5 000001 00"), {hex("EAC5 000002 0102")}});
    QVERIFY(link.client.getTofDistance(&distance));
    QCOMPARE(link.log.toPlainText(),
             QString("Fail to send the data packet：-1\nDevice connected."));
}

void TestCmdClient::failsToConnect_data()
{
    QTest::addColumn<QByteArray>("host");
    QTest::newRow("refused-port") << QByteArray("127.0.0.1");
    QTest::newRow("empty-host") << QByteArray("");
    QTest::newRow("null-host") << QByteArray();
}

void TestCmdClient::failsToConnect()
{
    QFETCH(QByteArray, host);
    Link link; // from a good connection, so that a failure is seen to end it
    QVERIFY(!link.client.connectToDevice(host.isNull() ? nullptr : host.constData(), freePort()));
    QCOMPARE(link.client.sendPacket(6), 0);
    QCOMPARE(link.log.toPlainText(),
             QString("Connecting failed.\nFail to send the data packet：-1"));
}

void TestCmdClient::framesPackets()
{
    Link link;
    for (const uint32_t refused : {0U, 5U, 65537U, 4294967295U})
        QCOMPARE(link.client.sendPacket(refused), 0);
    link.peer.expect({hex("EAC5 000001 00"), {}});
    QCOMPARE(link.client.sendPacket(6), 1);
    QTRY_VERIFY(link.peer.isDone());
    link.peer.expect({hex("EAC5 00FFFB") + QByteArray(65531, '\0'), {}});
    QCOMPARE(link.client.sendPacket(65536), 1);
    QTRY_VERIFY(link.peer.isDone());
    QCOMPARE(link.log.toPlainText(), QString());
}

void TestCmdClient::waits_data()
{
    QTest::addColumn<Call>("wait");
    QTest::addColumn<Pieces>("pieces");
    QTest::addColumn<bool>("closes");
    QTest::addColumn<QByteArray>("debugLine");

    const auto ack = [](int length, int rounds) {
        return Call([=](CmdClient &client) { return client.waitAck(length, rounds); });
    };
    const auto reply = [](int cap, int rounds) {
        return Call([=](CmdClient &client) { return client.waitReply(cap, rounds); });
    };
    const auto row = [](const char *name, const Call &wait, const Pieces &pieces,
                        const char *debugLine, bool closes = false) {
        QTest::newRow(name) << wait << pieces << closes << QByteArray(debugLine);
    };
    const QByteArray six = hex("EAC5 000001 00");

    row("ack-exact", ack(6, 1000), {six}, "success data num: 6");
    row("ack-longer", ack(6, 1000), {six + "abc"}, "success data num: 9");
    row("ack-pieces", ack(6, 1000), {six.left(2), six.mid(2, 3), six.mid(5)},
        "success data num: 6");
    row("ack-one-byte-short", ack(6, 100), {six.left(5)}, "fail data num: 5");
    row("ack-closed-halfway", ack(6, 100), {six.left(3)}, "fail data num: 3", true);
    row("ack-no-rounds", ack(6, 0), {}, "fail data num: 0");

    row("reply-status-only", reply(800000, 1000), {six}, "success data num: 6");
    row("reply-longer-than-declared", reply(800000, 1000), {six + "abc"}, "success data num: 9");
    row("reply-bytewise", reply(800000, 1000), bytewise(hex("EAC5 000003 00 6162")),
        "success data num: 8");
    row("reply-declares-nothing", reply(800000, 1000), {hex("EAC5 000000")}, "success data num: 5");
    row("reply-one-byte-short", reply(800000, 100), {hex("EAC5 000002 00")}, "fail data num: 6");
    row("reply-length-in-all-bytes", reply(800000, 1000), {head(0x010203) + QByteArray(66051, 'x')},
        "success data num: 66056");
    row("reply-cap", reply(9, 1000), {hex("EAC5 FFFFFF 00 616263")}, "success data num: 9");
    row("reply-below-cap", reply(9, 100), {hex("EAC5 FFFFFF 00 6162")}, "fail data num: 8");
}

void TestCmdClient::waits()
{
    QFETCH(Call, wait);
    QFETCH(Pieces, pieces);
    QFETCH(bool, closes);
    QFETCH(QByteArray, debugLine);

    Link link;
    link.peer.expect({hex(AnyRequest), pieces, closes});
    QCOMPARE(link.client.sendPacket(6), 1);
    QTest::ignoreMessage(QtDebugMsg, debugLine.constData());
    if (pieces.size() == 1 && pieces.first().size() < 100)
        QTest::ignoreMessage(QtDebugMsg, qPrintable(QString("SDK: %1").arg(pieces[0].size())));
    QCOMPARE(wait(link.client), debugLine.startsWith("success"));
    QTRY_VERIFY(link.peer.isDone());
    QCOMPARE(link.log.toPlainText(), QString());
}

void TestCmdClient::discardsLateData()
{
    Link link;
    link.peer.expect({hex(AnyRequest), {}});
    QCOMPARE(link.client.sendPacket(6), 1);
    QTRY_VERIFY(link.peer.isDone());
    QVERIFY(!link.client.waitAck(6, 5));

    QSignalSpy arrival(socketOf(link), SIGNAL(readyRead()));
    link.peer.send(hex("EAC5 000001 00"));
    QTRY_COMPARE(arrival.count(), 1);
    QVERIFY(!link.client.waitAck(1, 5));
    QVERIFY(!link.client.waitReply(1, 5));
}

void TestCmdClient::tellsWhetherItWaits()
{
    Link link;
    QVERIFY(!link.client.isWaiting());
    WaitProbe duringFailure(link.client);
    QVERIFY(!link.client.waitAck(6, 10));
    QVERIFY(duringFailure.waiting);
    QVERIFY(!link.client.isWaiting());

    link.peer.expect({hex("EAC5 000001 00"), {hex("EAC5 000002 0102")}});
    uint16_t distance = 0;
    WaitProbe duringSuccess(link.client);
    QVERIFY(link.client.getTofDistance(&distance));
    QVERIFY(duringSuccess.waiting);
    QVERIFY(!link.client.isWaiting());
}

QTEST_MAIN(TestCmdClient)
#include "tst_cmdclient.moc"
