#include "simulator/terminal.h"
#include "tests/simclient.h"

#include <QElapsedTimer>
#include <QTcpServer>
#include <QtTest>

#include <memory>
#include <vector>

/// Mode, clock, sensor, configuration and reboot; and what is left when everything was cleared.
class TestSimulatorDevice : public QObject
{
    Q_OBJECT
private slots:
    void init();

    void exchanges_data();
    void exchanges();
    void documents_data();
    void documents();
    void hostileDocuments_data();
    void hostileDocuments();
    void clockAndSerialNumber();
    void palmMovesSmoothly();
    void rebootDropsAndComesBack();
    void nothingIsDoneBehindAReboot();
    void onlySoManyConsoles();

private:
    void start(int rebootMs);

    std::unique_ptr<sim::Terminal> m_terminal;
    quint16 m_port = 0;
};

void TestSimulatorDevice::init()
{
    start(500);
}

void TestSimulatorDevice::start(int rebootMs)
{
    sim::TerminalOptions options;
    options.rebootMs = rebootMs;
    m_terminal = std::make_unique<sim::Terminal>(options);
    QVERIFY(m_terminal->listen(QHostAddress::LocalHost, 0));
    m_port = m_terminal->port();
}

void TestSimulatorDevice::exchanges_data()
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

void TestSimulatorDevice::exchanges()
{
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, readRequest);
    SimClient client(m_port);
    QTEST(client.ask(request), "reply");
    QTEST(client.ask(readRequest), "readReply");
}

void TestSimulatorDevice::documents_data()
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

void TestSimulatorDevice::documents()
{
    QFETCH(QString, readRequest);
    QFETCH(QString, block);
    QFETCH(QString, keys);
    QFETCH(int, writeCode);
    SimClient client(m_port);
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

void TestSimulatorDevice::hostileDocuments_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("reply");
    const QByteArray ignored = hex("EAC5000001 00");
    const QByteArray refused = hex("EAC5000001 02");
    QTest::newRow("nested-deeply") << QByteArray(20000, '[') << refused;
    const auto row = [&](const char *name, const char *json) {
        QTest::newRow(name) << QByteArray(json) << refused;
    };
    row("comment-behind", "{\"dev info\":{\"sound volume\": 3 // boom\n}}");
    row("comment-behind-a-quote", R"({"dev info":{"dev notes":"\" // \\","sound volume":3/**/}})");
    row("comment-ahead", "/* boom */{\"dev info\":{\"sound volume\":3}}");
    row("text-behind", "{\"dev info\":{\"sound volume\":3}} x");
    row("object-behind", "{\"dev info\":{\"sound volume\":3}}{}");
    row("key-twice", "{\"dev info\":{\"sound volume\":3,\"sound volume\":4}}");
    row("not-utf-8", "{\"dev info\":{\"dev notes\":\"\xC3\"}}");
    QTest::newRow("not-an-object") << QByteArray("[1]") << refused;
    QTest::newRow("beyond-2490-bytes")
        << "{\"dev info\":{\"dev notes\":\"" + QByteArray(3000, 'x') + "\"}}" << refused;
    QTest::newRow("block-is-a-number") << QByteArray("{\"dev info\":5}") << ignored;
    QTest::newRow("text-for-a-number")
        << QByteArray("{\"dev info\":{\"sound volume\":\"7\"}}") << ignored;
    QTest::newRow("number-beyond-32-bits")
        << QByteArray("{\"dev info\":{\"sound volume\":99999999999}}") << ignored;
}

void TestSimulatorDevice::hostileDocuments()
{
    QFETCH(QByteArray, text);
    SimClient client(m_port);
    const QByteArray before = client.ask(hex("EAC5000001 18"));
    QTEST(client.ask(request(0x19, text)), "reply");
    QCOMPARE(client.ask(hex("EAC5000001 18")), before);
}

void TestSimulatorDevice::clockAndSerialNumber()
{
    SimClient client(m_port);
    // 2031-02-03 04:05:06
    QCOMPARE(client.ask(hex("EAC5000007 07 3D0203040506")), hex("EAC5000001 00"));
    const QByteArray clock = client.ask(hex("EAC5000001 06"));
    QCOMPARE(clock.left(10), hex("EAC5000006 3D02030405"));
    QVERIFY(at(clock, 10) >= 6 && at(clock, 10) < 20);

    // A second before the last year ends.
    QCOMPARE(client.ask(hex("EAC5000007 07 FF0C1F173B3B")), hex("EAC5000001 00"));
    QCOMPARE(client.ask(hex("EAC5000001 06")), hex("EAC5000006 FF0C1F173B3B"));
    m_terminal->device().state.clockOffset += 1'000'000'000'000;
    QCOMPARE(client.ask(hex("EAC5000001 06")), hex("EAC5000006 FF0C1F173B3B"));

    QCOMPARE(client.ask(request(0x50, QByteArray("KV2403abcDEF789", 16))), hex("EAC5000001 00"));
    QCOMPARE(client.ask(request(0x50, QByteArray("KV2403abc\"EF789", 16))), hex("EAC5000001 02"));
    QCOMPARE(client.ask(request(0x50, QByteArray("KV2403abcDEF7890"))), hex("EAC5000001 02"));
    QCOMPARE(client.askJson("EAC500000117")["dev_serial"].toString(), QString("KV2403abcDEF789"));
}

void TestSimulatorDevice::palmMovesSmoothly()
{
    SimClient client(m_port);
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

void TestSimulatorDevice::rebootDropsAndComesBack()
{
    start(2500); // long enough to find nobody there
    SimClient asking(m_port);
    SimClient other(m_port);
    QTcpServer listener;
    QVERIFY(listener.listen(QHostAddress::LocalHost, 0));
    const int port = listener.serverPort();
    other.ask(hex("EAC5000007 08 7F000001") + static_cast<char>(port >> 8) +
              static_cast<char>(port));
    QTRY_VERIFY(listener.hasPendingConnections());
    QTcpSocket *told = listener.nextPendingConnection();
    other.ask(hex("EAC5000006 04 06 000000FF"));
    QCOMPARE(asking.ask(hex("EAC5000001 EF")), status(0));
    QTRY_VERIFY(asking.closed() && other.closed());
    QTRY_COMPARE(told->state(), QAbstractSocket::UnconnectedState);
    QVERIFY(told->readAll().endsWith("rebooting\r\n"));
    QTcpSocket early;
    early.connectToHost(QHostAddress::LocalHost, m_port);
    QTRY_COMPARE(early.error(), QAbstractSocket::ConnectionRefusedError);
    const auto answers = [&] {
        early.abort();
        early.connectToHost(QHostAddress::LocalHost, m_port);
        return QTest::qWaitFor([&] { return early.state() == QAbstractSocket::ConnectedState; },
                               50);
    };
    QTRY_VERIFY(answers());
    SimClient later(m_port);
    QCOMPARE(later.ask(hex("EAC5000001 05")), status(3));
    QTRY_VERIFY(listener.hasPendingConnections());
}

void TestSimulatorDevice::nothingIsDoneBehindAReboot()
{
    SimClient client(m_port);
    client.send(hex("EAC5000001 EF EAC5000001 0E"));
    QCOMPARE(client.reply(), status(0));
    QTRY_VERIFY(client.closed());
    QCOMPARE(m_terminal->device().state.users.size(), size_t{8});
}

void TestSimulatorDevice::onlySoManyConsoles()
{
    std::vector<std::unique_ptr<SimClient>> consoles;
    for (int i = 0; i < 32; ++i) {
        consoles.push_back(std::make_unique<SimClient>(m_port));
        QCOMPARE(consoles.back()->ask(hex("EAC5000001 05")), status(3));
    }
    QTcpSocket more;
    more.connectToHost(QHostAddress::LocalHost, m_port);
    QTRY_COMPARE(more.error(), QAbstractSocket::RemoteHostClosedError);
    QCOMPARE(consoles.front()->ask(hex("EAC5000001 05")), status(3));
}

QTEST_GUILESS_MAIN(TestSimulatorDevice)
#include "tst_simulator_device.moc"
