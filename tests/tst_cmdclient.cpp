#include "testkit/dialogrig.h"

#include <QNetworkProxy>
#include <QTcpSocket>
#include <QtTest>

#include <algorithm>
#include <vector>

using Pieces = QList<QByteArray>;

namespace {

const char AnyRequest[] = "EAC5 000001 00"; // the client's empty send buffer with a head of 6 bytes

/// Records whether the client waits while a command runs, and when the busy cursor
/// appears.
class WaitProbe : public QObject
{
    Q_OBJECT

public:
    explicit WaitProbe(const CmdClient &observed)
        : client(observed)
    {
        connect(&timer, SIGNAL(timeout()), this, SLOT(look()));
        timer.start();
        clock.start();
    }

    bool waiting = false;
    qint64 busyAfter = -1; ///< ms; -1: the cursor has not appeared

private slots:
    void look()
    {
        waiting = waiting || client.isWaiting();
        const QCursor *cursor = QGuiApplication::overrideCursor();
        if (busyAfter < 0 && cursor && cursor->shape() == Qt::BusyCursor)
            busyAfter = clock.elapsed();
    }

private:
    const CmdClient &client;
    QTimer timer;
    QElapsedTimer clock;
};

/// Interrupts the first round of a wait and measures the length of the others.
class Interruption : public QObject
{
    Q_OBJECT

public:
    explicit Interruption(unsigned long milliseconds)
        : length(milliseconds)
    {
        connect(&timer, SIGNAL(timeout()), this, SLOT(passRound()));
        timer.start();
    }

    std::vector<qint64> rounds; ///< ns

private slots:
    void passRound()
    {
        if (clock.isValid())
            rounds.push_back(clock.nsecsElapsed());
        else
            QThread::msleep(length);
        clock.start();
    }

private:
    unsigned long length;
    QTimer timer;
    QElapsedTimer clock;
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
    void reconnectsAfterThePeerDisconnects();
    void reportsAFailedSend();
    void failsToConnect();
    void waitsForReplies_data();
    void waitsForReplies();
    void shortensRoundsAfterADelay();
    void discardsLateData();
    void reconnectsAfterAFailedCommand();
    void showsTheBusyCursor();
    void refusesInvalidPacketSizes();
};

void TestCmdClient::connectsAndDisconnects()
{
    ScriptedPeer peer;
    QTextEdit log;
    CmdClient client(&log, nullptr);
    auto *socket = client.findChild<QTcpSocket *>();
    QCOMPARE(socket->proxy().type(), QNetworkProxy::NoProxy);
    QVERIFY(client.disconnectFromDevice());
    QVERIFY(client.connectToDevice("127.0.0.1", peer.port()));
    QVERIFY(client.connectToDevice("127.0.0.1", peer.port()));
    QTRY_COMPARE(peer.connectionCount(), 2);
    QCOMPARE(socket->socketOption(QAbstractSocket::LowDelayOption).toInt(), 1);
    peer.serve(hex(AnyRequest), {});
    QCOMPARE(client.sendPacket(6), 1);
    QVERIFY(client.disconnectFromDevice());
    QVERIFY(client.connectToDevice("127.0.0.1", peer.port()));
    QCOMPARE(log.toPlainText(),
             QString("The connection is abandoned.\nDevice connected.\n"
                     "Device connected.\nThe connection is abandoned.\nDevice connected."));
}

void TestCmdClient::reconnectsAfterThePeerDisconnects()
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

void TestCmdClient::reportsAFailedSend()
{
    Link link;
    QTRY_COMPARE(link.peer.connectionCount(), 1);
    link.peer.closeConnection();
    int sent = 0;
    while (link.client.sendPacket(6) == 1 && ++sent < 5000)
        QThread::msleep(1); // without events, which would report the closed connection
    QVERIFY(sent < 5000);
    QVERIFY(!link.client.hasConnection());
    QCOMPARE(link.log.toPlainText(), QString("Fail to send the data packet：-1"));
}

void TestCmdClient::failsToConnect()
{
    for (const char *host : {"127.0.0.1", "", static_cast<const char *>(nullptr)}) {
        Link link; // connected, so that a failure can be seen to end the connection
        QVERIFY(!link.client.connectToDevice(host, freePort()));
        QCOMPARE(link.client.sendPacket(6), 0);
        QCOMPARE(link.log.toPlainText(),
                 QString("Connecting failed.\nFail to send the data packet：-1"));
    }
}

void TestCmdClient::refusesInvalidPacketSizes()
{
    Link link;
    for (const uint32_t refused : {0U, 5U, 65537U, 4294967295U})
        QCOMPARE(link.client.sendPacket(refused), 0);
    QCOMPARE(link.log.toPlainText(), QString());
}

void TestCmdClient::waitsForReplies_data()
{
    QTest::addColumn<bool>("declared"); // waits for the declared length, up to `bytes`
    QTest::addColumn<int>("bytes");
    QTest::addColumn<Pieces>("pieces");
    QTest::addColumn<QByteArray>("debugLine");

    const auto ack = [](const char *name, const Pieces &pieces, const char *debugLine) {
        QTest::newRow(name) << false << 6 << pieces << QByteArray(debugLine);
    };
    const auto reply = [](const char *name, const Pieces &pieces, const char *debugLine,
                          int cap = 800000) {
        QTest::newRow(name) << true << cap << pieces << QByteArray(debugLine);
    };
    const QByteArray six = hex("EAC5 000001 00");
    ack("ack-longer", {six + "abc"}, "success data num: 9");
    ack("ack-pieces", {six.left(2), six.mid(2, 3), six.mid(5)}, "success data num: 6");
    ack("ack-one-byte-short", {six.left(5)}, "fail data num: 5");
    reply("reply-longer-than-declared", {six + "abc"}, "success data num: 9");
    reply("reply-bytewise", bytewise(hex("EAC5 000003 00 6162")), "success data num: 8");
    reply("reply-declares-nothing", {hex("EAC5 000000")}, "success data num: 5");
    reply("reply-one-byte-short", {hex("EAC5 000002 00")}, "fail data num: 6");
    reply("reply-length-in-all-bytes", {head(0x010203) + QByteArray(66051, 'x')},
          "success data num: 66056");
    reply("reply-cap", {hex("EAC5 FFFFFF 00 616263")}, "success data num: 9", 9);
    reply("reply-below-cap", {hex("EAC5 FFFFFF 00 6162")}, "fail data num: 8", 9);
}

void TestCmdClient::waitsForReplies()
{
    QFETCH(bool, declared);
    QFETCH(int, bytes);
    QFETCH(Pieces, pieces);
    QFETCH(QByteArray, debugLine);

    Link link;
    link.peer.expect({hex(AnyRequest), pieces});
    QCOMPARE(link.client.sendPacket(6), 1);
    QTest::ignoreMessage(QtDebugMsg, debugLine.constData());
    if (pieces.size() == 1 && pieces.first().size() < 100)
        QTest::ignoreMessage(QtDebugMsg, qPrintable(QString("SDK: %1").arg(pieces[0].size())));
    const bool succeeds = debugLine.startsWith("success");
    const int rounds = succeeds ? 1000 : 100;
    QCOMPARE(declared ? link.client.waitReply(bytes, rounds) : link.client.waitAck(bytes, rounds),
             succeeds);
    QTRY_VERIFY(link.peer.isDone());
    QCOMPARE(link.log.toPlainText(), QString());
}

void TestCmdClient::shortensRoundsAfterADelay()
{
    constexpr qint64 Pause = 1000000; // ns
    Link link;
    const Interruption interruption(450);
    QVERIFY(!link.client.waitAck(6, 300));
    const std::vector<qint64> &rounds = interruption.rounds;
    QCOMPARE(rounds.size(), size_t{299});
    const auto shortened =
        std::count_if(rounds.begin(), rounds.end(), [](qint64 length) { return length < Pause; });
    QVERIFY2(shortened > 50, qPrintable(QString::number(shortened)));
    QVERIFY(
        std::all_of(rounds.end() - 9, rounds.end(), [](qint64 length) { return length >= Pause; }));
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

// After a failed command the client connects again, so that a late reply cannot arrive.
void TestCmdClient::reconnectsAfterAFailedCommand()
{
    Link link;
    const auto connectedAfter = [&link](const QList<QByteArray> &pieces) {
        link.peer.expect({hex("EAC5 000001 42"), pieces});
        link.client.clearRecords();
        link.log.clear();
        return link.client.resynchronize() && link.client.hasConnection();
    };
    QVERIFY(connectedAfter({hex("EAC5 000001 00")}));
    QVERIFY(connectedAfter({hex("EAC5 000001 07")}));
    QCOMPARE(link.peer.connectionCount(), 1);
    QVERIFY(connectedAfter({hex("EAC5 000001 00 00")}));
    QTRY_COMPARE(link.peer.connectionCount(), 2);
    QVERIFY(connectedAfter({}));
    QTRY_COMPARE(link.peer.connectionCount(), 3);
    link.client.distrustReply();
    QVERIFY(link.client.resynchronize());
    QTRY_COMPARE(link.peer.connectionCount(), 4);
    QCOMPARE(link.log.toPlainText(), QString());

    link.client.distrustReply();
    link.peer.closeConnection();
    QTRY_VERIFY(!link.client.hasConnection());
    QVERIFY(!link.client.resynchronize());
}

void TestCmdClient::showsTheBusyCursor()
{
    Link link;
    for (const int delay : {0, 900}) {
        link.peer.expect({hex("EAC5 000001 05"), {hex("EAC5 000001 04")}, false, delay});
        const WaitProbe probe(link.client);
        uint8_t mode = 0;
        QVERIFY(link.client.getMode(&mode));
        QVERIFY(probe.waiting);
        QVERIFY(probe.busyAfter < 0 ? delay == 0 : probe.busyAfter >= 200);
        QVERIFY(!link.client.isWaiting());
        QVERIFY(!QGuiApplication::overrideCursor());
    }
    QVERIFY(!link.client.waitAck(6, 10));
    QVERIFY(!link.client.isWaiting());

    char list[2];
    uint32_t length = 0;
    link.peer.expect({hex("EAC5 000001 63"), {hex("EAC5 000003 00 7B7D")}, false, 1500});
    QVERIFY(link.client.getQrCodeList(list, &length, sizeof list));
}

QTEST_MAIN(TestCmdClient)
#include "tst_cmdclient.moc"
