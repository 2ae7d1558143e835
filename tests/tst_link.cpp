#include "testkit/dialogrig.h"
#include "widgets/windowhost.h"

#include <QNetworkProxy>
#include <QTcpSocket>
#include <QtTest>

#include <algorithm>
#include <vector>

/// Packets, and the connection that carries them.
class TestLink : public QObject
{
    Q_OBJECT

private slots:
    void writesWithinTheBuffer();
    void readsWithinTheReply();
    void connectsAndDisconnects();
    void reportsAFailedSend();
    void waitsForLateAndSplitReplies();
    void discardsLateData();
    void reconnectsAfterAFailedCommand();
    void shortensRoundsAfterADelay();
    void showsTheBusyCursor();
};

namespace {

const char AnyRequest[] = "EAC5 000001 00"; // the client's empty send buffer with a head of 6 bytes

uint8_t *bytesOf(QByteArray &buffer)
{
    return reinterpret_cast<uint8_t *>(buffer.data());
}

} // namespace

// A value that does not fit is not written at all, and nothing is written after it.
void TestLink::writesWithinTheBuffer()
{
    const QByteArray values = hex("01 0203 04050607 61620000 6364 08");
    const std::vector<int> ends{5, 6, 8, 12, 16, 18, 19};
    for (int capacity = 0; capacity <= 20; ++capacity) {
        const int end = *(std::upper_bound(ends.begin() + 1, ends.end(), capacity) - 1);
        QByteArray buffer(20, '\xAA');
        PacketWriter packet(bytesOf(buffer), static_cast<size_t>(capacity));
        packet.u8(0x01).u16(0x0203).u32(0x04050607);
        packet.padded("ab", 2, 4).padded("cdef", 4, 2).bytes("\x08", 1);
        QCOMPARE(packet.fits(), capacity >= 19);
        QCOMPARE(packet.size(), static_cast<uint32_t>(end));
        const QByteArray head(5, '\xAA');
        QCOMPARE(buffer, (head + values.left(end - 5)).leftJustified(20, '\xAA'));
        QVERIFY(!packet.bytes("x", SIZE_MAX).fits());
    }
}

void TestLink::readsWithinTheReply()
{
    for (int received = 0; received <= 8; ++received) {
        const QByteArray reply = hex("EAC5 000002 81 92 07").left(received);
        const ReplyView view(reply);
        const bool hasHead = received >= 5;
        const bool whole = received >= 7;
        QCOMPARE(view.declaredLength(), hasHead ? 2U : 0U);
        QCOMPARE(view.declaredTotal(), size_t{hasHead ? 7U : 0U});
        QVERIFY(view.isWhole(0) == whole && view.isWhole(2) == whole && !view.isWhole(3));
        QCOMPARE(int(view.u8(6)), whole ? 0x92 : 0);
        QCOMPARE(int(view.u16(5)), whole ? 0x8192 : 0);

        QByteArray out(3, '\xAA');
        QVERIFY(!view.copy(SIZE_MAX, 2, bytesOf(out)));
        QCOMPARE(view.copy(5, 2, bytesOf(out)), whole);
        QCOMPARE(out, whole ? hex("8192AA") : hex("AAAAAA"));
    }
}

void TestLink::connectsAndDisconnects()
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
    QVERIFY(!client.connectToDevice("127.0.0.1", freePort()));
    QCOMPARE(client.sendPacket(6), 0);
    QCOMPARE(log.toPlainText(),
             QString("The connection is abandoned.\nDevice connected.\nDevice connected.\n"
                     "The connection is abandoned.\nDevice connected.\nConnecting failed.\n"
                     "Fail to send the data packet：-1"));
}

void TestLink::reportsAFailedSend()
{
    Link link;
    QTRY_COMPARE(link.peer.connectionCount(), 1);
    for (const uint32_t invalidSize : {0U, 5U, 65537U, 4294967295U})
        QCOMPARE(link.client.sendPacket(invalidSize), 0);
    QCOMPARE(link.log.toPlainText(), QString());

    link.peer.closeConnection();
    int sent = 0;
    while (link.client.sendPacket(6) == 1 && ++sent < 5000)
        QThread::msleep(1); // without events, which would report the closed connection
    QVERIFY(sent < 5000);
    QVERIFY(!link.client.hasConnection());
    QCOMPARE(link.log.toPlainText(), QString("Fail to send the data packet：-1"));
}

// Nearly every command waits a second for its reply, the list of QR codes two.
void TestLink::waitsForLateAndSplitReplies()
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
    QVERIFY(link.client.getQrCodeList(list.data(), &length, 2));
    QCOMPARE(list, QByteArray("{}"));
    QVERIFY(!link.client.isWaiting());
}

void TestLink::discardsLateData()
{
    Link link;
    QTRY_COMPARE(link.peer.connectionCount(), 1);
    link.peer.send(hex("EAC5 000001 00"));
    link.peer.expect({hex(AnyRequest), {}});
    QCOMPARE(link.client.sendPacket(6), 1);
    QTest::ignoreMessage(QtDebugMsg, "fail data num: 0");
    QVERIFY(!link.client.waitReply(1, 50));
}

// After a failed command the client connects again, so that a late reply cannot arrive.
void TestLink::reconnectsAfterAFailedCommand()
{
    Link link;
    const std::pair<const char *, int> replies[] = {
        {"EAC5 000001 00", 1}, {"EAC5 000001 07", 1}, {"EAC5 000001 00 00", 2}, {"EAC5", 3}};
    for (const auto &[reply, connections] : replies) {
        link.peer.expect({hex("EAC5 000001 42"), {hex(reply)}});
        link.client.clearRecords();
        QVERIFY(link.client.resynchronize() && link.client.hasConnection());
        QTRY_COMPARE(link.peer.connectionCount(), connections);
    }
    link.client.distrustReply();
    QVERIFY(link.client.resynchronize());
    QTRY_COMPARE(link.peer.connectionCount(), 4);

    link.client.distrustReply();
    link.peer.closeConnection();
    QTRY_VERIFY(!link.client.hasConnection());
    QVERIFY(!link.client.resynchronize());
    QVERIFY(link.client.connectToDevice("127.0.0.1", link.peer.port()));
    QCOMPARE(link.log.toPlainText(),
             QString("Unknown error.\nFail to accept ACK.\nDevice connected."));
}

void TestLink::shortensRoundsAfterADelay()
{
    constexpr qint64 Pause = 1000000; // ns
    QTextEdit log;
    std::vector<qint64> rounds; // ns
    QElapsedTimer clock;
    const auto passRound = [&] {
        if (clock.isValid())
            rounds.push_back(clock.nsecsElapsed());
        else
            QThread::msleep(450);
        clock.start();
        return false;
    };
    QVERIFY(!WindowHost(&log).wait(passRound, 300));
    QCOMPARE(rounds.size(), size_t{299});
    const auto isPaused = [](qint64 length) { return length >= Pause; };
    QVERIFY(std::count_if(rounds.begin(), rounds.end(), isPaused) < 250);
    QVERIFY(std::all_of(rounds.end() - 9, rounds.end(), isPaused));
}

void TestLink::showsTheBusyCursor()
{
    QTextEdit log;
    QElapsedTimer clock;
    clock.start();
    std::vector<qint64> shownAt; // ms
    const auto isShownTwice = [&] {
        const QCursor *cursor = QGuiApplication::overrideCursor();
        if (cursor && cursor->shape() == Qt::BusyCursor)
            shownAt.push_back(clock.elapsed());
        return shownAt.size() == 2;
    };
    QVERIFY(WindowHost(&log).wait(isShownTwice, 1000));
    QVERIFY(shownAt.front() >= 200);
    QVERIFY(!QGuiApplication::overrideCursor());
}

QTEST_MAIN(TestLink)
#include "tst_link.moc"
