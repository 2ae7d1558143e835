#include "simulator/terminal.h"
#include "tests/simclient.h"

#include <QTcpSocket>
#include <QtTest>

#include <memory>

namespace {

constexpr int FrameReply = 388805;
constexpr int DualReply = 777605;

QByteArray debugAddressRequest(quint16 port)
{
    QByteArray payload = hex("7F000001 0000");
    payload[4] = static_cast<char>(port >> 8);
    payload[5] = static_cast<char>(port);
    return request(0x08, payload);
}

sim::TerminalOptions quickPushes()
{
    sim::TerminalOptions options;
    options.pushIntervalMs = 20;
    return options;
}

int differences(const QByteArray &a, const QByteArray &b)
{
    int count = 0;
    for (int i = 0; i < qMin(a.size(), b.size()); ++i)
        count += a.at(i) != b.at(i) ? 1 : 0;
    return count;
}

} // namespace

class TestSimulator : public QObject
{
    Q_OBJECT
private slots:
    void init();

    void framing_data();
    void framing();
    void clientsDoNotMix();
    void brokenStreamIsClosed_data();
    void brokenStreamIsClosed();
    void slowReaderIsHeldBack();
    void everyCodeIsAnswered();
    void framesMove();
    void pushesOnceSomebodyListens();
    void pushesToTheNewAddressOnly();
    void pushesToTheFixedPort();

private:
    void start(const sim::TerminalOptions &options);

    std::unique_ptr<sim::Terminal> m_terminal;
    quint16 m_port = 0;
};

void TestSimulator::init()
{
    start({});
}

void TestSimulator::start(const sim::TerminalOptions &options)
{
    m_terminal = std::make_unique<sim::Terminal>(options);
    QVERIFY(m_terminal->listen(QHostAddress::LocalHost, 0));
    m_port = m_terminal->port();
}

void TestSimulator::framing_data()
{
    QTest::addColumn<QVector<QByteArray>>("pieces");
    // Three requests each time: getMode, setMode idle, getMode.
    const QByteArray all = hex("EAC5000001 05 EAC5000002 0400 EAC5000001 05");
    QVector<QByteArray> bytes;
    for (const char byte : all)
        bytes.append(QByteArray(1, byte));
    QTest::newRow("joined") << QVector<QByteArray>{all};
    QTest::newRow("byte-by-byte") << bytes;
    QTest::newRow("behind-the-longest")
        << QVector<QByteArray>{all.left(6), request(0x04, QByteArray(65530, '\0')), all.mid(6)};
    QTest::newRow("across-requests")
        << QVector<QByteArray>{all.left(9), all.mid(9, 5), all.mid(14)};
}

void TestSimulator::framing()
{
    QFETCH(QVector<QByteArray>, pieces);
    SimClient client(m_port);
    for (const QByteArray &piece : qAsConst(pieces)) {
        client.send(piece);
        client.socket().flush();
        QCoreApplication::processEvents();
    }
    QCOMPARE(client.reply(), hex("EAC5000001 03"));
    if (pieces.size() == 3 && pieces.at(1).size() == 65536)
        QCOMPARE(client.reply(), hex("EAC5000001 02"));
    QCOMPARE(client.reply(), hex("EAC5000001 00"));
    QCOMPARE(client.reply(), hex("EAC5000001 00"));
}

void TestSimulator::clientsDoNotMix()
{
    SimClient first(m_port);
    SimClient second(m_port);
    first.send(hex("EAC50000"));
    second.send(hex("EAC5000001 03 EAC5000001 05"));
    first.send(hex("01 0B"));
    QCOMPARE(first.reply(), hex("EAC5000002 03F4"));
    QCOMPARE(second.reply().size(), DualReply);
    QCOMPARE(second.reply(), hex("EAC5000001 03"));
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
    SimClient other(m_port);
    SimClient client(m_port);
    client.send(bytes);
    QTRY_VERIFY(client.closed());
    QCOMPARE(other.ask(hex("EAC5000001 05")), hex("EAC5000001 03"));
}

void TestSimulator::slowReaderIsHeldBack()
{
    constexpr int Requests = 100;
    int answered = 0;
    sim::TerminalOptions options;
    options.log = [&](const QString &line) { answered += line.contains("getDualImages") ? 1 : 0; };
    start(options);
    SimClient slow(m_port);
    slow.socket().setReadBufferSize(1);
    slow.send(hex("EAC5000001 03").repeated(Requests));
    QTRY_VERIFY(answered > 0);
    SimClient other(m_port);
    for (int i = 0; i < 20; ++i)
        QCOMPARE(other.ask(hex("EAC5000001 05")), hex("EAC5000001 03"));
    QVERIFY2(answered < Requests / 2, qPrintable(QString::number(answered)));
    slow.socket().setReadBufferSize(0);
    for (int i = 0; i < Requests; ++i)
        QCOMPARE(slow.reply().size(), DualReply);
}

void TestSimulator::everyCodeIsAnswered()
{
    SimClient client(m_port);
    for (int code = 0; code < 256; ++code)
        for (const int payload : {0, 1, 7, 300}) {
            if (code == 0xEF)
                continue; // the reboot ends the connection
            const QByteArray reply = client.ask(request(code, QByteArray(payload, '\x01')));
            QVERIFY2(reply.size() >= 6, qPrintable(QString::number(code)));
            QCOMPARE(reply.left(2), hex("EAC5"));
        }
    // Nothing is left over, so every length was true.
    QCOMPARE(client.ask(hex("EAC5000001 7F")), hex("EAC5000001 02"));
}

void TestSimulator::framesMove()
{
    SimClient client(m_port);
    const QByteArray print = client.ask(hex("EAC5000001 01"));
    const QByteArray next = client.ask(hex("EAC5000001 01"));
    const QByteArray vein = client.ask(hex("EAC5000001 02"));
    const QByteArray dual = client.ask(hex("EAC5000001 03"));
    QCOMPARE(print.size(), FrameReply);
    QCOMPARE(print.left(5), hex("EAC505EEC0"));
    QCOMPARE(vein.size(), FrameReply);
    QCOMPARE(dual.left(5), hex("EAC50BDD80"));
    QVERIFY(differences(print, next) > 0);
    QVERIFY(differences(print.mid(5), vein.mid(5)) > FrameReply / 2);
    QVERIFY(differences(dual.mid(5, 388800), dual.mid(388805)) > FrameReply / 2);
    // Every stamp covers the same corner of both pictures with the same text.
    QCOMPARE(dual.mid(5 + 700 * 540, 180), dual.mid(388805 + 700 * 540, 180));
}

void TestSimulator::pushesOnceSomebodyListens()
{
    start(quickPushes());
    QTcpServer listener;
    QVERIFY(listener.listen(QHostAddress::LocalHost, 0));
    const quint16 port = listener.serverPort();
    listener.close();
    SimClient client(m_port);
    QCOMPARE(client.ask(debugAddressRequest(port)), hex("EAC5000001 00"));
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
    start(quickPushes());
    QTcpServer before;
    QTcpServer after;
    QVERIFY(before.listen(QHostAddress::LocalHost, 0) && after.listen(QHostAddress::LocalHost, 0));
    SimClient client(m_port);
    client.ask(debugAddressRequest(before.serverPort()));
    QTRY_VERIFY(before.hasPendingConnections());
    QTcpSocket *left = before.nextPendingConnection();
    client.ask(debugAddressRequest(after.serverPort()));
    QTRY_VERIFY(after.hasPendingConnections());
    QTRY_COMPARE(left->state(), QAbstractSocket::UnconnectedState);
    // Saying the same address again keeps the connection.
    QTcpSocket *kept = after.nextPendingConnection();
    client.ask(debugAddressRequest(after.serverPort()));
    QTRY_VERIFY(kept->bytesAvailable() > 300);
    QVERIFY(!after.hasPendingConnections() && !before.hasPendingConnections());
}

void TestSimulator::pushesToTheFixedPort()
{
    QTcpServer listener;
    QVERIFY(listener.listen(QHostAddress::LocalHost, 0));
    sim::TerminalOptions options = quickPushes();
    options.pushPort = listener.serverPort();
    start(options);
    SimClient client(m_port);
    client.ask(debugAddressRequest(1));
    QTRY_VERIFY(listener.hasPendingConnections());
}

QTEST_GUILESS_MAIN(TestSimulator)
#include "tst_simulator.moc"
