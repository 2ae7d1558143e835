#include "link/cmdclient.h"
#include "scriptedpeer.h"

#include <QNetworkProxy>
#include <QTcpSocket>
#include <QTextEdit>
#include <QtTest>

#include <functional>

using Call = std::function<bool(CmdClient &)>;
using Pieces = QList<QByteArray>;
Q_DECLARE_METATYPE(Call)

namespace {

constexpr int FrameSize = 388800;
const char AnyRequest[] =
    "EAC5 000001 00"; // what a client that has sent nothing yet sends as 6 bytes

/// A client that is connected to a scripted terminal, its log still empty.
struct Link
{
    Link()
    {
        client.connectToDevice("127.0.0.1", peer.port());
        log.clear();
    }

    QTcpSocket *socket() const { return client.findChild<QTcpSocket *>(); }

    ScriptedPeer peer;
    QTextEdit log;
    CmdClient client{&log, nullptr};
};

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

uint8_t *bytesOf(QByteArray &buffer)
{
    return reinterpret_cast<uint8_t *>(buffer.data());
}

/// A frame in which neighbours differ, other than one with another shift.
QByteArray frame(int shift)
{
    QByteArray bytes(FrameSize, '\0');
    for (int i = 0; i < FrameSize; ++i)
        bytes[i] = static_cast<char>(i % 251 + shift);
    return bytes;
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
    void getsTheUserList_data();
    void getsTheUserList();
    void framesPackets();
    void setsTheDebugAddress();
    void getsTheDistance();
    void getsImages();
    void timesOut_data();
    void timesOut();
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
    QTRY_COMPARE(link.socket()->state(), QAbstractSocket::UnconnectedState);

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

    QSignalSpy arrival(link.socket(), SIGNAL(readyRead()));
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

void TestCmdClient::getsTheUserList_data()
{
    QTest::addColumn<Pieces>("pieces");
    QTest::addColumn<int>("capacity");
    QTest::addColumn<QByteArray>("text"); // null when refused
    QTest::addColumn<QString>("line");

    const auto row = [](const char *name, const Pieces &pieces, int capacity, const char *text,
                        const char *line) {
        QTest::newRow(name) << pieces << capacity << QByteArray(text) << QString(line);
    };
    const QByteArray five = hex("EAC5 000005 00 61626364");
    row("accepted", {five}, 8, "abcd", "The loaded data count：5");
    row("bytewise", bytewise(five), 8, "abcd", "The loaded data count：5");
    row("fills-the-buffer", {five}, 4, "abcd", "The loaded data count：5");
    row("past-the-buffer", {five}, 3, nullptr, "Unknown error: 0");
    row("no-text", {hex("EAC5 000001 00")}, 8, "", "The loaded data count：1");
    row("declares-nothing", {hex("EAC5 000000")}, 8, nullptr, "Unknown error: 0");
    row("declares-nothing-brings-more", {hex("EAC5 000000 07 6162")}, 8, nullptr,
        "Unknown error: 0");
    row("declares-more-than-arrived", {head(0xFFFFFF) + QByteArray(799995, '\0')}, 0x1000000,
        nullptr, "Unknown error: 0");
    row("status-255", {hex("EAC5 000001 FF")}, 8, nullptr, "Unknown error: 255");
    row("status-before-text", {hex("EAC5 000005 02 61626364")}, 8, nullptr, "Unknown error: 2");
    row("one-byte-short", {five.left(9)}, 8, nullptr, "Fail to accept ACK.");
}

void TestCmdClient::getsTheUserList()
{
    QFETCH(Pieces, pieces);
    QFETCH(int, capacity);
    QFETCH(QByteArray, text);

    Link link;
    link.peer.expect({hex("EAC5 000001 10"), pieces});
    const QByteArray untouched(capacity + 1, '\xAA');
    QByteArray out = untouched;
    uint32_t length = 77;
    const bool accepted =
        link.client.getUserList(bytesOf(out), &length, static_cast<size_t>(capacity));
    QCOMPARE(accepted, !text.isNull());
    QCOMPARE(length, accepted ? static_cast<uint32_t>(text.size()) : 77U);
    QVERIFY(out == text + untouched.mid(text.size()));
    QTEST(link.log.toPlainText(), "line");
}

void TestCmdClient::setsTheDebugAddress()
{
    Link link;
    const uint8_t ip[4] = {192, 168, 31, 20};
    for (const char *reply : {"EAC5 000001 00", "EAC5 000001 41", "EAC5 000001 02"}) {
        link.peer.expect({hex("EAC5 000007 08 C0A81F14 EAB6"), {hex(reply)}});
        QCOMPARE(link.client.setDebugAddress(ip, 60086), hex(reply).endsWith('\0'));
    }
    QCOMPARE(link.log.toPlainText(),
             QString("Fail to set Debug address：A\nFail to set Debug address：\x02"));
}

void TestCmdClient::getsTheDistance()
{
    Link link;
    uint16_t distance = 0;
    link.peer.expect({hex("EAC5 000001 00"), {hex("EAC5 000002 FE01")}});
    QVERIFY(link.client.getTofDistance(&distance));
    QCOMPARE(int(distance), 65025);
    QCOMPARE(link.log.toPlainText(), QString());
}

void TestCmdClient::getsImages()
{
    Link link;
    const QByteArray one = frame(1); // its first byte, where others have a status, is not 0
    const QByteArray two = frame(2);
    QByteArray print(FrameSize + 1, '\xAA');
    QByteArray vein = print;

    link.peer.expect({hex("EAC5 000001 01"), {head(388800) + one}});
    QVERIFY(link.client.getPalmprintImage(bytesOf(print)));
    QVERIFY(print == one + '\xAA');

    link.peer.expect({hex("EAC5 000001 02"), {head(388800), two.left(70000), two.mid(70000)}});
    QVERIFY(link.client.getPalmVeinImage(bytesOf(vein)));
    QVERIFY(vein == two + '\xAA');

    link.peer.expect({hex("EAC5 000001 03"), {head(777600) + two + one}});
    QVERIFY(link.client.getDualImages(bytesOf(print), bytesOf(vein)));
    QVERIFY(print == two + '\xAA');
    QVERIFY(vein == one + '\xAA');
    QCOMPARE(link.log.toPlainText(), QString());
}

void TestCmdClient::timesOut_data()
{
    QTest::addColumn<Call>("command");
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("reply");

    static QByteArray image(FrameSize, '\xAA');
    static uint16_t distance = 7;
    QTest::newRow("distance") << Call([](CmdClient &c) {
        return c.getTofDistance(&distance) || distance != 7;
    }) << hex("EAC5 000001 00")
                              << hex("EAC5 000002 01");
    QTest::newRow("image") << Call([](CmdClient &c) {
        return c.getPalmprintImage(bytesOf(image)) || image != QByteArray(FrameSize, '\xAA');
    }) << hex("EAC5 000001 01")
                           << head(388800) + QByteArray(388799, '\0');
    QTest::newRow("debug-address")
        << Call([](CmdClient &c) { return c.setDebugAddress(bytesOf(image), 1); })
        << hex("EAC5 000007 08 AAAAAAAA 0001") << hex("EAC5 000001");
}

// One byte short: these commands leave no line then, nor a part of what arrived.
void TestCmdClient::timesOut()
{
    QFETCH(Call, command);
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, reply);
    Link link;
    link.peer.expect({request, {reply}});
    QVERIFY(!command(link.client));
    QCOMPARE(link.log.toPlainText(), QString());
}

QTEST_MAIN(TestCmdClient)
#include "tst_cmdclient.moc"
