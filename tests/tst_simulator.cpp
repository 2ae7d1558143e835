#include "simulator/terminal.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpSocket>
#include <QtTest>

#include <memory>

namespace {

constexpr int FrameReply = 388805;
constexpr int DualReply = 777605;

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

quint8 at(const QByteArray &bytes, int index)
{
    return static_cast<quint8>(bytes.at(index));
}

/// A console that knows nothing but the length in a reply's head.
class Client
{
public:
    explicit Client(quint16 port) { m_socket.connectToHost(QHostAddress::LocalHost, port); }

    void send(const QByteArray &bytes)
    {
        QTRY_COMPARE(m_socket.state(), QAbstractSocket::ConnectedState);
        m_socket.write(bytes);
    }

    /// The next whole reply; empty when none came in time.
    QByteArray reply()
    {
        QElapsedTimer timer;
        for (timer.start(); timer.elapsed() < 5000; QTest::qWait(1)) {
            m_bytes += m_socket.readAll();
            const int size =
                m_bytes.size() < 5
                    ? 0
                    : 5 + (at(m_bytes, 2) << 16 | at(m_bytes, 3) << 8 | at(m_bytes, 4));
            if (size > 0 && m_bytes.size() >= size) {
                QByteArray taken = m_bytes.left(size);
                m_bytes.remove(0, size);
                return taken;
            }
        }
        return {};
    }

    QByteArray ask(const QByteArray &request)
    {
        send(request);
        return reply();
    }

    QJsonObject askJson(const char *request)
    {
        return QJsonDocument::fromJson(ask(hex(request)).mid(6)).object();
    }

    bool closed() const { return m_socket.state() == QAbstractSocket::UnconnectedState; }
    QTcpSocket &socket() { return m_socket; }

private:
    QTcpSocket m_socket;
    QByteArray m_bytes;
};

QByteArray request(int code, const QByteArray &payload)
{
    QByteArray bytes = hex("EAC5000000 00") + payload;
    bytes[3] = static_cast<char>((1 + payload.size()) >> 8);
    bytes[4] = static_cast<char>(1 + payload.size());
    bytes[5] = static_cast<char>(code);
    return bytes;
}

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
    void exchanges_data();
    void exchanges();
    void framesMove();
    void userList();
    void documents_data();
    void documents();
    void hostileDocuments_data();
    void hostileDocuments();
    void clockAndSerialNumber();
    void palmMovesSmoothly();
    void recordPages();
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
    Client client(m_port);
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
    Client first(m_port);
    Client second(m_port);
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
    Client other(m_port);
    Client client(m_port);
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
    Client slow(m_port);
    slow.socket().setReadBufferSize(1);
    slow.send(hex("EAC5000001 03").repeated(Requests));
    QTRY_VERIFY(answered > 0);
    Client other(m_port);
    for (int i = 0; i < 20; ++i)
        QCOMPARE(other.ask(hex("EAC5000001 05")), hex("EAC5000001 03"));
    QVERIFY2(answered < Requests / 2, qPrintable(QString::number(answered)));
    slow.socket().setReadBufferSize(0);
    for (int i = 0; i < Requests; ++i)
        QCOMPARE(slow.reply().size(), DualReply);
}

void TestSimulator::everyCodeIsAnswered()
{
    Client client(m_port);
    for (int code = 0; code < 256; ++code)
        for (const int payload : {0, 1, 7, 300}) {
            const QByteArray reply = client.ask(request(code, QByteArray(payload, '\x01')));
            QVERIFY2(reply.size() >= 6, qPrintable(QString::number(code)));
            QCOMPARE(reply.left(2), hex("EAC5"));
        }
    // Nothing is left over, so every length was true.
    QCOMPARE(client.ask(hex("EAC5000001 7F")), hex("EAC5000001 02"));
}

void TestSimulator::exchanges_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<QByteArray>("readRequest");
    QTest::addColumn<QByteArray>("readReply");
    const QByteArray ok = hex("EAC5000001 00");
    const QByteArray wrong = hex("EAC5000001 02");
    const QByteArray getMode = hex("EAC5000001 05");
    const QByteArray getBias = hex("EAC5000001 0B");
    QTest::newRow("mode") << hex("EAC5000002 0404") << ok << getMode << hex("EAC5000001 04");
    QTest::newRow("mode-2") << hex("EAC5000002 0402") << wrong << getMode << hex("EAC5000001 03");
    QTest::newRow("mode-missing") << hex("EAC5000001 04") << wrong << getMode
                                  << hex("EAC5000001 03");
    QTest::newRow("bias-negative")
        << hex("EAC5000003 0A03E3") << ok << getBias << hex("EAC5000002 03E3");
    QTest::newRow("bias-short") << hex("EAC5000002 0A03") << wrong << getBias
                                << hex("EAC5000002 03F4");
    QTest::newRow("free-user-id") << hex("EAC5000001 0E") << ok << hex("EAC5000001 33")
                                  << hex("EAC5000005 00 00000001");
    QTest::newRow("cleared-users") << hex("EAC5000001 0E") << ok << hex("EAC5000001 10")
                                   << hex("EAC5000011 00") + "{\"user_list\":[]}";
    QTest::newRow("cleared-records") << hex("EAC5000001 42") << ok << hex("EAC5000001 40")
                                     << hex("EAC5000014 00") + "{\"record_files\":[]}";
    QTest::newRow("cleared-codes") << hex("EAC5000001 61") << ok << hex("EAC5000001 63")
                                   << hex("EAC5000013 00") + "{\"qrcode data\":[]}";
    // Day 30 of February; the read back is that of the mode, the clock moves on.
    QTest::newRow("no-such-day") << hex("EAC5000007 07 38021E050607") << wrong << getMode
                                 << hex("EAC5000001 03");
}

void TestSimulator::exchanges()
{
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, readRequest);
    Client client(m_port);
    QTEST(client.ask(request), "reply");
    QTEST(client.ask(readRequest), "readReply");
}

void TestSimulator::framesMove()
{
    Client client(m_port);
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

void TestSimulator::userList()
{
    Client client(m_port);
    const QJsonArray users = client.askJson("EAC5000001 10")["user_list"].toArray();
    QStringList names;
    for (const QJsonValue &user : users) {
        names.append(user["user_name"].toString());
        QVERIFY(user["id"].isString() && user["card_id"].isString());
        QVERIFY(user["vein_cnt"].isDouble() && user["print_cnt"].isDouble());
    }
    QVERIFY(names.contains(QStringLiteral("王小明")));
    QVERIFY(names.contains(QStringLiteral("Anna Keller")));
}

void TestSimulator::documents_data()
{
    QTest::addColumn<QString>("readRequest");
    QTest::addColumn<QString>("block"); // empty: the document itself
    QTest::addColumn<QString>("keys");
    QTest::addColumn<int>("writeCode");
    QTest::newRow("output") << "EAC50000011A"
                            << "data block"
                            << "remote ip,remote port,sys http version,sys mode" << 0x1B;
    QTest::newRow("user") << "EAC500000116"
                          << ""
                          << "auto reboot,auto reboot time,detect similar hand,gateway ip,local ip,"
                             "local port,recg mode,remote ip,remote port,use qrcode,user dev type"
                          << 0x15;
    QTest::newRow("vendor") << "EAC500000118"
                            << "work param"
                            << "auto reboot,auto reboot time,gateway ip,local ip,local port,"
                               "remote enroll func"
                            << 0x19;
    QTest::newRow("system") << "EAC500000117"
                            << ""
                            << "dev_name,dev_serial,fw_version,mac_address,max_record_num,"
                               "max_user_num,print_alg_version,qrcode_alg_version,vein_alg_version"
                            << 0;
}

void TestSimulator::documents()
{
    QFETCH(QString, readRequest);
    QFETCH(QString, block);
    QFETCH(QString, keys);
    QFETCH(int, writeCode);
    Client client(m_port);
    const auto read = [&] {
        const QJsonObject root = client.askJson(readRequest.toLatin1().constData());
        return block.isEmpty() ? root : root[block].toObject();
    };
    QCOMPARE(read().keys().join(','), keys);
    if (writeCode == 0)
        return;
    const QString changed = keys.section(',', -1);
    const auto write = [&](const QString &members) {
        const QString text = block.isEmpty() ? members : "{\"" + block + "\":" + members + "}";
        return client.ask(request(writeCode, text.toUtf8()));
    };
    QCOMPARE(write("{\"" + changed + "\":4,\"other\":1}"), hex("EAC5000001 00"));
    QCOMPARE(read()[changed].toInt(), 4);
    QCOMPARE(read().keys().join(','), keys);
    QCOMPARE(write("{\"" + changed + "\":"), hex("EAC5000001 02"));
    QCOMPARE(read()[changed].toInt(), 4);
}

void TestSimulator::hostileDocuments_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("reply");
    const QByteArray ignored = hex("EAC5000001 00");
    const QByteArray refused = hex("EAC5000001 02");
    QTest::newRow("nested-deeply") << QByteArray(20000, '[') << refused;
    QTest::newRow("not-an-object") << QByteArray("[1]") << refused;
    QTest::newRow("beyond-2490-bytes")
        << "{\"dev info\":{\"dev notes\":\"" + QByteArray(3000, 'x') + "\"}}" << refused;
    QTest::newRow("block-is-a-number") << QByteArray("{\"dev info\":5}") << ignored;
    QTest::newRow("text-for-a-number")
        << QByteArray("{\"dev info\":{\"sound volume\":\"7\"}}") << ignored;
    QTest::newRow("number-beyond-32-bits")
        << QByteArray("{\"dev info\":{\"sound volume\":99999999999}}") << ignored;
}

void TestSimulator::hostileDocuments()
{
    QFETCH(QByteArray, text);
    Client client(m_port);
    const QByteArray before = client.ask(hex("EAC5000001 18"));
    QTEST(client.ask(request(0x19, text)), "reply");
    QCOMPARE(client.ask(hex("EAC5000001 18")), before);
}

void TestSimulator::clockAndSerialNumber()
{
    Client client(m_port);
    // 2031-02-03 04:05:06
    QCOMPARE(client.ask(hex("EAC5000007 07 3D0203040506")), hex("EAC5000001 00"));
    const QByteArray clock = client.ask(hex("EAC5000001 06"));
    QCOMPARE(clock.left(10), hex("EAC5000006 3D02030405"));
    QVERIFY(at(clock, 10) >= 6 && at(clock, 10) < 20);

    QCOMPARE(client.ask(request(0x50, QByteArray("KV2403abcDEF789", 16))), hex("EAC5000001 00"));
    QCOMPARE(client.ask(request(0x50, QByteArray("KV2403abc\"EF789", 16))), hex("EAC5000001 02"));
    QCOMPARE(client.askJson("EAC500000117")["dev_serial"].toString(), QString("KV2403abcDEF789"));
}

void TestSimulator::palmMovesSmoothly()
{
    Client client(m_port);
    const auto height = [&] {
        const QByteArray reply = client.ask(hex("EAC5000001 00"));
        return at(reply, 5) << 8 | at(reply, 6);
    };
    const int first = height();
    QElapsedTimer timer;
    timer.start();
    QTRY_VERIFY(height() != first);
    QVERIFY(qAbs(height() - first) <= 2 + timer.elapsed() / 20);
    QVERIFY(first >= 60 && first <= 160);
}

void TestSimulator::recordPages()
{
    Client client(m_port);
    const QDateTime time(QDate(2024, 7, 3), QTime(8, 5, 9));
    const sim::AccessRecord record{sim::AccessRecord::Type::Card, time, QStringLiteral("李婷"),
                                   QString(40, QChar(0x7814))};
    m_terminal->device().records = {{{2024, 7}, QVector<sim::AccessRecord>(3001, record)}};
    QCOMPARE(client.askJson("EAC500000140")["record_files"].toArray().size(), 1);
    QCOMPARE(client.ask(hex("EAC5000008 43 07E807 00000000")).left(8), hex("EAC50493E3 00 0BB8"));
    const QByteArray last = client.ask(hex("EAC5000008 43 07E807 00000BB8"));
    QCOMPARE(last.left(8), hex("EAC5000067 00 0001"));
    QCOMPARE(last.mid(8, 72), hex("01000000") + QByteArray("2024-07-03\0\0\0\0\0\0", 16) +
                                  QByteArray("08:05:09\0\0\0\0\0\0\0\0", 16) +
                                  hex("E69D8EE5A9B7").leftJustified(32, '\0') + hex("E7A094E7"));
    QCOMPARE(last.right(5), hex("E7A0940000")); // ten characters of three bytes, whole
    QCOMPARE(client.ask(hex("EAC5000008 43 07E807 FFFFFFFF")), hex("EAC5000003 00 0000"));
    QCOMPARE(client.ask(hex("EAC5000008 43 07E806 00000000")), hex("EAC5000003 00 0000"));
}

void TestSimulator::pushesOnceSomebodyListens()
{
    start(quickPushes());
    QTcpServer listener;
    QVERIFY(listener.listen(QHostAddress::LocalHost, 0));
    const quint16 port = listener.serverPort();
    listener.close();
    Client client(m_port);
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
    Client client(m_port);
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
    Client client(m_port);
    client.ask(debugAddressRequest(1));
    QTRY_VERIFY(listener.hasPendingConnections());
}

QTEST_GUILESS_MAIN(TestSimulator)
#include "tst_simulator.moc"
