#include "tests/simclient.h"

#include <QTcpServer>
#include <QtTest>

namespace {

constexpr int FrameReply = 388805;
constexpr int DualReply = 777605;

/// Where messages are pushed to.
struct Listener : QTcpServer
{
    Listener() { listen(QHostAddress::LocalHost, 0); }

    QByteArray announcement() const
    {
        QByteArray payload = hex("7F000001 0000");
        payload[4] = static_cast<char>(serverPort() >> 8);
        payload[5] = static_cast<char>(serverPort());
        return request(0x08, payload);
    }
};

sim::TerminalOptions quickPushes()
{
    sim::TerminalOptions options;
    options.pushIntervalMs = 20;
    return options;
}

} // namespace

class TestSimulator : public QObject
{
    Q_OBJECT
private slots:
    void framing_data();
    void framing();
    void brokenStreamIsClosed_data();
    void brokenStreamIsClosed();
    void slowReaderIsHeldBack();
    void framesMove();
    void pushesOnceSomebodyListens();
    void pushesToTheNewAddressOnly();
};

void TestSimulator::framing_data()
{
    QTest::addColumn<QVector<QByteArray>>("pieces");
    QTest::addColumn<QByteArray>("replies");
    // getMode, setMode idle, getMode each time.
    const QByteArray all = hex("EAC5000001 05 EAC5000002 0400 EAC5000001 05");
    const QByteArray modes = hex("EAC5000001 03 EAC5000001 00 EAC5000001 00");
    using Pieces = QVector<QByteArray>;
    QTest::newRow("joined") << Pieces{all} << modes;
    QTest::newRow("across-requests")
        << Pieces{all.left(1), all.mid(1, 8), all.mid(9, 5), all.mid(14)} << modes;
    QTest::newRow("behind-the-longest")
        << Pieces{request(0x04, QByteArray(65530, '\0')), all.left(6)}
        << hex("EAC5000001 02 EAC5000001 03");
}

void TestSimulator::framing()
{
    QFETCH(QVector<QByteArray>, pieces);
    QFETCH(QByteArray, replies);
    const SimTerminal terminal;
    SimClient client(terminal);
    for (const QByteArray &piece : qAsConst(pieces)) {
        client.send(piece);
        client.flush();
        QCoreApplication::processEvents();
    }
    QCOMPARE(client.take(replies.size()), replies);
}

void TestSimulator::brokenStreamIsClosed_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("first-magic-byte") << hex("EB");
    QTest::newRow("second-magic-byte") << hex("EAC4");
    QTest::newRow("length-0") << hex("EAC5000000");
    QTest::newRow("length-beyond-a-request") << hex("EAC500FFFC");
    QTest::newRow("after-a-good-request") << hex("EAC5000001 05 00");
}

void TestSimulator::brokenStreamIsClosed()
{
    QFETCH(QByteArray, bytes);
    const SimTerminal terminal;
    SimClient other(terminal);
    SimClient client(terminal);
    other.send(hex("EAC5000001"));
    client.send(bytes);
    QTRY_VERIFY(client.closed());
    QCOMPARE(other.ask(hex("05")), hex("EAC5000001 03"));
}

void TestSimulator::slowReaderIsHeldBack()
{
    constexpr int Requests = 100;
    int answered = 0;
    sim::TerminalOptions options;
    options.log = [&](const QString &line) { answered += line.contains("getDualImages") ? 1 : 0; };
    const SimTerminal terminal(options);
    SimClient slow(terminal);
    slow.setReadBufferSize(1);
    slow.send(hex("EAC5000001 03").repeated(Requests));
    QTRY_VERIFY(answered > 0);
    SimClient other(terminal);
    for (int i = 0; i < 20; ++i)
        QCOMPARE(other.ask(hex("EAC5000001 05")), hex("EAC5000001 03"));
    QVERIFY2(answered < Requests / 2, qPrintable(QString::number(answered)));
    slow.setReadBufferSize(0);
    for (int i = 0; i < Requests; ++i)
        QCOMPARE(slow.reply().size(), DualReply);
}

void TestSimulator::framesMove()
{
    const SimTerminal terminal;
    SimClient client(terminal);
    const QByteArray print = client.ask(hex("EAC5000001 01"));
    QCOMPARE(print.size(), FrameReply);
    QCOMPARE(print.left(5), hex("EAC505EEC0"));
    QVERIFY(client.ask(hex("EAC5000001 01")) != print);
    QCOMPARE(client.ask(hex("EAC5000001 02")).size(), FrameReply);
    const QByteArray dual = client.ask(hex("EAC5000001 03"));
    QCOMPARE(dual.left(5), hex("EAC50BDD80"));
    QVERIFY(dual.mid(5, 100000) != dual.mid(FrameReply, 100000));
    // Both bear the same mark in the same corner.
    QCOMPARE(dual.mid(5 + 700 * 540, 180), dual.mid(FrameReply + 700 * 540, 180));
}

void TestSimulator::pushesOnceSomebodyListens()
{
    const SimTerminal terminal(quickPushes());
    Listener listener;
    const quint16 port = listener.serverPort();
    SimClient client(terminal);
    client.send(listener.announcement());
    listener.close();
    QCOMPARE(client.reply(), status(0));
    for (int i = 0; i < 50; ++i)
        client.ask(hex("EAC5000002 0400"));
    QVERIFY(listener.listen(QHostAddress::LocalHost, port));
    QTRY_VERIFY(listener.hasPendingConnections());
    QTcpSocket *peer = listener.nextPendingConnection();
    QTRY_VERIFY(peer->canReadLine());
    const QByteArray greeting = peer->readLine();
    QVERIFY(greeting.startsWith("[simulated] ") && greeting.endsWith(" 8 users\r\n"));

    client.ask(hex("EAC5000002 0404"));
    QByteArray text;
    QTRY_VERIFY((text += peer->readAll()).contains("remote recognition\r\n"));
    QVERIFY2(!text.contains("idle"), "told what had happened before anybody listened");
    QTRY_VERIFY((text += peer->readAll()).count("\r\n") > 5);
    QCOMPARE(text.count("[simulated] "), text.count('\n'));

    peer->close();
    QTRY_VERIFY(listener.hasPendingConnections());
}

void TestSimulator::pushesToTheNewAddressOnly()
{
    const SimTerminal terminal(quickPushes());
    Listener before;
    Listener after;
    SimClient client(terminal);
    client.ask(before.announcement());
    QTRY_VERIFY(before.hasPendingConnections());
    QTcpSocket *left = before.nextPendingConnection();
    client.ask(after.announcement());
    QTRY_VERIFY(after.hasPendingConnections());
    QTRY_COMPARE(left->state(), QAbstractSocket::UnconnectedState);
    // Saying the same address again keeps the connection.
    QTcpSocket *kept = after.nextPendingConnection();
    client.ask(after.announcement());
    QTRY_VERIFY(kept->bytesAvailable() > 300);
    QVERIFY(!after.hasPendingConnections() && !before.hasPendingConnections());
}

QTEST_GUILESS_MAIN(TestSimulator)
#include "tst_simulator.moc"
