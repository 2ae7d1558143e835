#include "tests/simclient.h"

#include <QJsonArray>
#include <QTcpServer>
#include <QtTest>

#include <memory>
#include <vector>

/// Configuration, clock, records, reboot and connections.
class TestSimulatorDevice : public QObject
{
    Q_OBJECT
private slots:
    void documents_data();
    void documents();
    void hostileDocuments_data();
    void hostileDocuments();
    void clockAndSerialNumber();
    void recordPages();
    void passagesLeaveEarlierRecords();
    void rebootDropsAndComesBack();
    void onlySoManyConsoles();
    void oneConsoleAtATime();
};

void TestSimulatorDevice::documents_data()
{
    QTest::addColumn<QByteArray>("read");
    QTest::addColumn<QString>("block"); // empty: the document itself
    QTest::addColumn<QString>("keys");
    QTest::addColumn<int>("writeCode");
    const auto row = [](const char *read, const char *block, const char *keys, int writeCode) {
        QTest::newRow(read) << QByteArray(read) << QString(block) << QString(keys) << writeCode;
    };
    row("EAC5000001 16", "",
        "auto reboot,auto reboot time,detect similar hand,gateway ip,local ip,local port,recg mode,"
        "remote ip,remote port,use qrcode,user dev type",
        0x15);
    row("EAC5000001 17", "",
        "dev_name,dev_serial,fw_version,mac_address,max_record_num,max_user_num,print_alg_version,"
        "qrcode_alg_version,vein_alg_version",
        0);
    row("EAC5000001 18", "work param",
        "auto reboot,auto reboot time,gateway ip,local ip,local port,remote enroll func", 0x19);
    row("EAC5000001 1A", "data block", "remote ip,remote port,sys http version,sys mode", 0x1B);
}

void TestSimulatorDevice::documents()
{
    QFETCH(QByteArray, read);
    QFETCH(QString, block);
    QFETCH(QString, keys);
    QFETCH(int, writeCode);
    const SimTerminal terminal;
    SimClient client(terminal);
    const auto members = [&] {
        const QJsonObject root = client.askJson(read.constData());
        return block.isEmpty() ? root : root[block].toObject();
    };
    QCOMPARE(members().keys().join(','), keys);
    if (writeCode == 0)
        return;
    const QString changed = keys.section(',', -1);
    const auto write = [&](const QString &object) {
        const QString text = block.isEmpty() ? object : "{\"" + block + "\":" + object + "}";
        return client.ask(request(writeCode, text.toUtf8()));
    };
    QCOMPARE(write("{\"" + changed + "\":4,\"other\":1}"), status(0));
    QCOMPARE(write("{\"" + changed + "\":"), status(2));
    QCOMPARE(members()[changed].toInt(), 4);
    QCOMPARE(members().keys().join(','), keys);
}

void TestSimulatorDevice::hostileDocuments_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("answer");
    const auto row = [&](const char *name, const QByteArray &json, int answer = 2) {
        QTest::newRow(name) << json << answer;
    };
    row("nested-deeply", QByteArray(20000, '['));
    row("comment-behind", "{\"dev info\":{\"sound volume\": 3 // boom\n}}");
    row("comment-behind-a-quote", R"({"dev info":{"dev notes":"\" // \\","sound volume":3/**/}})");
    row("comment-ahead", "/* boom */{\"dev info\":{\"sound volume\":3}}");
    row("text-behind", "{\"dev info\":{\"sound volume\":3}} x");
    row("key-twice", "{\"dev info\":{\"sound volume\":3,\"sound volume\":4}}");
    row("not-utf-8", "{\"dev info\":{\"dev notes\":\"\xC3\"}}");
    row("not-an-object", "[1]");
    row("beyond-2490-bytes", "{\"dev info\":{\"dev notes\":\"" + QByteArray(3000, 'x') + "\"}}");
    // What does not fit the terminal's own is passed over.
    row("block-is-a-number", "{\"dev info\":5}", 0);
    row("text-for-a-number", "{\"dev info\":{\"sound volume\":\"7\"}}", 0);
    row("number-beyond-32-bits", "{\"dev info\":{\"sound volume\":99999999999}}", 0);
}

void TestSimulatorDevice::hostileDocuments()
{
    QFETCH(QByteArray, text);
    QFETCH(int, answer);
    const SimTerminal terminal;
    SimClient client(terminal);
    const QByteArray before = client.ask(hex("EAC5000001 18"));
    QCOMPARE(client.ask(request(0x19, text)), status(answer));
    QCOMPARE(client.ask(hex("EAC5000001 18")), before);
}

void TestSimulatorDevice::clockAndSerialNumber()
{
    SimTerminal terminal;
    SimClient client(terminal);
    // 2031-02-03 04:05:06
    QCOMPARE(client.ask(hex("EAC5000007 07 3D0203040506")), status(0));
    const QByteArray clock = client.ask(hex("EAC5000001 06"));
    QCOMPARE(clock.left(10), hex("EAC5000006 3D02030405"));
    QVERIFY(at(clock, 10) >= 6 && at(clock, 10) < 20);

    QCOMPARE(client.ask(hex("EAC5000007 07 38021E050607")), status(2)); // February 30

    // A second before the last year ends.
    QCOMPARE(client.ask(hex("EAC5000007 07 FF0C1F173B3B")), status(0));
    QCOMPARE(client.ask(hex("EAC5000001 06")), hex("EAC5000006 FF0C1F173B3B"));
    terminal.device().state.clockOffset += 1'000'000'000'000;
    QCOMPARE(client.ask(hex("EAC5000001 06")), hex("EAC5000006 FF0C1F173B3B"));

    QCOMPARE(client.ask(request(0x50, QByteArray("KV2403abcDEF789", 16))), status(0));
    QCOMPARE(client.ask(request(0x50, QByteArray("KV2403abc\"EF789", 16))), status(2));
    QCOMPARE(client.ask(request(0x50, QByteArray("KV2403abcDEF7890"))), status(2));
    QCOMPARE(client.askJson("EAC500000117")["dev_serial"].toString(), QString("KV2403abcDEF789"));
}

void TestSimulatorDevice::recordPages()
{
    sim::TerminalOptions options;
    options.records = 12001;
    const SimTerminal terminal(options);
    SimClient client(terminal);
    const QJsonArray files = client.askJson("EAC500000140")["record_files"].toArray();
    QCOMPARE(files.size(), 6);
    const QString month = files.last().toString(); // record_2026_11.dat
    const QByteArray address = monthBytes(month.mid(7, 4).toInt(), month.mid(12, 2).toInt());
    const auto page = [&](const char *start) {
        return client.ask(request(0x43, address + hex(start)));
    };
    const QByteArray first = page("00000000");
    QCOMPARE(first.left(8), hex("EAC50493E3 00 0BB8"));
    QCOMPARE(page("00000BB8").left(8), hex("EAC50493E3 00 0BB8"));
    QCOMPARE(page("00001770").left(8), hex("EAC5000067 00 0001"));
    QCOMPARE(page("FFFFFFFF"), hex("EAC5000003 00 0000"));
    QCOMPARE(page("00000001").mid(8, 100), first.mid(108, 100));
    const QByteArray day = (month.mid(7, 4) + '-' + month.mid(12, 2) + '-').toLatin1();
    QByteArray before;
    for (int i = 8; i < first.size(); i += 100) {
        const QByteArray time = first.mid(i + 4, 10) + first.mid(i + 20, 8);
        QVERIFY(time.startsWith(day) && time >= before);
        QVERIFY(at(first, i) <= 1 && first.mid(i + 1, 3) == hex("000000"));
        QCOMPARE(first.mid(i + 14, 6) + first.mid(i + 28, 8), QByteArray(14, '\0'));
        QVERIFY(at(first, i + 36) != 0 && at(first, i + 67) == 0 && at(first, i + 99) == 0);
        before = time;
    }
    QCOMPARE(client.ask(request(0x41, address)), status(0));
    QCOMPARE(page("00000000"), hex("EAC5000003 00 0000"));
    QCOMPARE(client.askJson("EAC500000140")["record_files"].toArray().size(), 5);
}

void TestSimulatorDevice::passagesLeaveEarlierRecords()
{
    for (const int ring : {0, 600}) { // 500 of the month and 100 of the one before
        sim::TerminalOptions options;
        options.records = 1000;
        options.passages = 20000;
        options.ring = ring;
        const SimTerminal terminal(options);
        SimClient client(terminal);
        const QDate today = QDate::currentDate();
        const QByteArray month = monthBytes(today.year(), today.month());
        const auto page = [&] { return client.ask(request(0x43, month + hex("00000000"))).mid(8); };
        const QByteArray before = page();
        QByteArray after;
        QTRY_VERIFY((after = page()).size() > 70000 || after.left(100) != before.left(100));
        const int gone = before.indexOf(after.left(100));
        QVERIFY(gone >= 0 && after.startsWith(before.mid(gone)));
        QCOMPARE(gone > 0, ring > 0);
        QCOMPARE(after.size() == 60000, ring > 0);
        QCOMPARE(client.ask(hex("EAC5000002 0400")), status(0)); // idle: nobody passes
        const QByteArray last = page();
        client.waitForReadyRead(50); // in vain
        QCOMPARE(page(), last);
    }
}

void TestSimulatorDevice::rebootDropsAndComesBack()
{
    sim::TerminalOptions options;
    options.rebootMs = 2500; // long enough to find nobody there
    SimTerminal terminal(options);
    SimClient asking(terminal);
    SimClient other(terminal);
    QTcpServer listener;
    QVERIFY(listener.listen(QHostAddress::LocalHost, 0));
    const int port = listener.serverPort();
    other.ask(hex("EAC5000007 08 7F000001") + static_cast<char>(port >> 8) +
              static_cast<char>(port));
    QTRY_VERIFY(listener.hasPendingConnections());
    QTcpSocket *pushed = listener.nextPendingConnection();
    other.ask(hex("EAC5000006 04 06 000000FF"));
    asking.send(hex("EAC5000001 EF EAC5000001 0E")); // the users are not cleared any more
    QCOMPARE(asking.reply(), status(0));
    QTRY_VERIFY(asking.closed() && other.closed());
    QTRY_COMPARE(pushed->state(), QAbstractSocket::UnconnectedState);
    QVERIFY(pushed->readAll().endsWith("rebooting\r\n"));
    SimClient early(terminal);
    QTRY_COMPARE(early.error(), QAbstractSocket::ConnectionRefusedError);
    const auto answers = [&] {
        SimClient later(terminal);
        return later.waitForConnected(50) && later.ask(hex("EAC5000001 05")) == status(3);
    };
    QTRY_VERIFY(answers());
    QCOMPARE(terminal.device().state.users.size(), size_t{8});
    QTRY_VERIFY(listener.hasPendingConnections());
}

void TestSimulatorDevice::onlySoManyConsoles()
{
    const SimTerminal terminal;
    std::vector<std::unique_ptr<SimClient>> consoles;
    for (int i = 0; i < 32; ++i) {
        consoles.push_back(std::make_unique<SimClient>(terminal));
        QCOMPARE(consoles.back()->ask(hex("EAC5000001 05")), status(3));
    }
    SimClient more(terminal);
    QTRY_COMPARE(more.error(), QAbstractSocket::RemoteHostClosedError);
    QCOMPARE(consoles.front()->ask(hex("EAC5000001 05")), status(3));
}

void TestSimulatorDevice::oneConsoleAtATime()
{
    sim::TerminalOptions options;
    options.oneClient = true;
    const SimTerminal terminal(options);
    auto first = std::make_unique<SimClient>(terminal);
    QCOMPARE(first->ask(hex("EAC5000001 05")), status(3));
    SimClient second(terminal);
    second.send(hex("EAC5000001 05"));
    second.waitForReadyRead(50); // in vain
    QCOMPARE(second.bytesAvailable(), qint64{0});
    first.reset();
    QCOMPARE(second.reply(), status(3));
}

QTEST_GUILESS_MAIN(TestSimulatorDevice)
#include "tst_simulator_device.moc"
