#include "tests/simclient.h"

namespace {

// Faults of a new terminal; what a console sends to it in digits, with m for getMode, o for a code
// that no command has, and | between pieces; what it receives, and END when the connection ends;
// the shortest time in ms. Strikes and garbage are those of the default seed.
const QByteArray Streams[][4] = {
    {"all:delay=0", "EA|C500000105 EAC5|000002 0400 EA|C500000105",
     "EAC500000103 EAC500000100 EAC500000100"},
    {"all:delay=0", "EAC500FFFB 04" + QByteArray(131060, '0') + "m", "EAC500000102 EAC500000103"},
    {"all:delay=0", "EAC5000000", "END"},
    {"all:delay=0", "EAC500FFFC", "END"},
    {"all:delay=0", "m 00", "EAC500000103 END"},
    {"getMode:cut=3 0x99:cut=-1", "mo", "EAC500 EAC5000001"},
    {"0x99:drop,from=2,times=1", "mooo", "EAC500000103 EAC500000102 EAC500000102"},
    {"getMode:length=0xFEDCBA 0x99:length=+258", "mo", "EAC5FEDCBA03 EAC500010302"},
    {"all:status=7 all:trail=2 all:cut=-1", "mo", "EAC500000107EE EAC500000107EE"},
    {"all:delay=20 all:delay=30 all:pieces=2,pause=30", "m", "EAC500000103", "110"},
    {"getMode:double=60", "mo", "EAC500000103 EAC500000103 EAC500000102", "60"},
    {"all:status=2", QByteArray(16, 'o'), QByteArray("EAC500000102").repeated(16), "70"},
    {"all:drop,chance=0.8", "momomomomomomomoEB", "EAC500000102 EAC500000103 END"},
    {"getMode:garbage", "mo", "A9AA63979E95 EAC500000102"},
    {"getMode:late", "moEB", "EAC500000103 EAC500000102 END"},
    {"getMode:late", "mEB", "END"},
    {"all:double getMode:times=1,close=3", "mo", "EAC500 EAC500 END"},
    {"getMode:times=1,reset=after", "mo", "EAC500000103 END"},
};

} // namespace

/// Connections, faults, messages and reboot.
class TestSimulator : public QObject
{
    Q_OBJECT
private slots:
    void streams();
    void slowReaderIsHeldBack();
    void mistakesInFaults();
    void pushesMessages();
    void acceptsSoManyConsoles();
};

void TestSimulator::streams()
{
    for (const auto &[faults, digits, received, ms] : Streams) {
        sim::TerminalOptions options;
        options.faults.bytesPerSecond = 1000;
        for (const QByteArray &text : faults.split(' ')) {
            sim::Fault fault;
            QString error;
            QVERIFY2(sim::parseFault(text, &fault, &error), qPrintable(error));
            options.faults.faults.append(fault);
        }
        sim::Terminal terminal(options);
        SimClient client(terminal);
        QElapsedTimer timer;
        timer.start();
        QByteArray sent = digits;
        sent.replace('m', "EAC500000105").replace('o', "EAC500000199");
        for (const QByteArray &piece : sent.split('|')) {
            client.write(QByteArray::fromHex(piece));
            client.flush();
            QCoreApplication::processEvents();
        }
        const bool ends = received.endsWith("END");
        const QByteArray expected = QByteArray::fromHex(received.chopped(ends ? 3 : 0));
        QCOMPARE(client.take(ends ? 1000 : expected.size()), expected);
        QCOMPARE(client.bytesAvailable(), qint64{0});
        QCOMPARE(client.state() == QAbstractSocket::UnconnectedState, ends);
        QVERIFY2(timer.elapsed() >= ms.toInt(), faults.constData());

        SimClient leaving(terminal);
        leaving.write(QByteArray::fromHex(sent));
        leaving.flush();
        leaving.abort();
        terminal.setFaults({});
        QCOMPARE(SimClient(terminal).ask("99"), hex("02"));
    }
}

void TestSimulator::slowReaderIsHeldBack()
{
    int answered = 0;
    sim::TerminalOptions options;
    options.log = [&](const QString &) { ++answered; };
    sim::Terminal terminal(options);
    SimClient slow(terminal);
    slow.setReadBufferSize(1);
    slow.write(hex("EAC5000001 03").repeated(100));
    SimClient other(terminal);
    for (int i = 0; i < 20; ++i)
        QCOMPARE(other.ask("05"), hex("03"));
    QVERIFY2(answered > 20 && answered < 70, qPrintable(QString::number(answered)));
    slow.setReadBufferSize(0);
    QCOMPARE(slow.take(77760500).size(), 77760500);
}

void TestSimulator::mistakesInFaults()
{
    for (const char *text :
         {"drop", "getmode:drop", "0x100:drop", "all:cot=1", "all:from=2", "all:drop,late",
          "all:from=1,from=2", "all:drop,pause=1", "all:drop=1", "all:cut=before", "all:pieces=0",
          "all:status=256", "all:double=", "all:status", "all:drop,chance=nan"}) {
        sim::Fault fault;
        QString error;
        QVERIFY2(!sim::parseFault(text, &fault, &error), text);
        QVERIFY2(QString(text).contains(error.section('"', 1, 1)), qPrintable(error));
    }
}

void TestSimulator::pushesMessages()
{
    sim::TerminalOptions options;
    options.pushIntervalMs = 5;
    options.rebootMs = 2500; // long enough to find nobody there
    sim::Terminal terminal(options);
    SimClient client(terminal);
    QTcpServer listener;
    QVERIFY(listener.listen(QHostAddress::LocalHost, 0));
    const quint16 port = listener.serverPort();
    const QString address = QString::asprintf("08 7F000001 %04X", port);
    listener.close();
    QCOMPARE(client.ask(address), hex("00"));
    QCOMPARE(client.ask("04 00"), hex("00")); // idle: nobody is recognised
    QVERIFY(listener.listen(QHostAddress::LocalHost, port));
    QTRY_VERIFY(listener.hasPendingConnections());
    QTcpSocket *peer = listener.nextPendingConnection();
    QCOMPARE(client.ask(address), hex("00")); // keeps the connection
    QTRY_VERIFY(peer->bytesAvailable() > 2000);
    QVERIFY(peer->readLine().endsWith(" online, 8 users\r\n"));
    QVERIFY(!peer->readAll().contains("recognised"));
    QCOMPARE(client.ask("04 04"), hex("00"));
    QTRY_VERIFY(peer->peek(100000).contains("recognised"));
    QTcpServer second;
    QVERIFY(second.listen(QHostAddress::LocalHost, 0));
    QCOMPARE(client.ask(QString::asprintf("08 7F000001 %04X", second.serverPort())), hex("00"));
    QTRY_VERIFY(second.hasPendingConnections());
    QTRY_COMPARE(peer->state(), QAbstractSocket::UnconnectedState);
    QCOMPARE(client.ask(address), hex("00"));
    QTRY_VERIFY(listener.hasPendingConnections());
    peer = listener.nextPendingConnection();

    client.write(hex("EAC5000001 EF EAC5000001 0E")); // the users are not cleared any more
    QCOMPARE(client.take(1000), hex("EAC5000001 00"));
    QTRY_COMPARE(peer->state(), QAbstractSocket::UnconnectedState);
    QVERIFY(peer->readAll().contains("rebooting\r\n"));
    QCOMPARE(SimClient(terminal).error(), QAbstractSocket::ConnectionRefusedError);
    QTRY_VERIFY(listener.hasPendingConnections());
    QCOMPARE(SimClient(terminal).ask("33"), hex("00 00000007"));
}

void TestSimulator::acceptsSoManyConsoles()
{
    for (const int most : {1, 32}) {
        sim::TerminalOptions options;
        options.oneClient = most == 1;
        sim::Terminal terminal(options);
        std::list<SimClient> consoles;
        for (int i = 0; i < most; ++i)
            QCOMPARE(consoles.emplace_back(terminal).ask("05"), hex("03"));
        SimClient more(terminal);
        more.write(hex("EAC5000001 05"));
        QCOMPARE(consoles.front().ask("05"), hex("03"));
        QTRY_COMPARE(more.state() == QAbstractSocket::UnconnectedState, most > 1);
        QCOMPARE(more.bytesAvailable(), qint64{0});
        consoles.clear();
        QCOMPARE(more.take(6), most > 1 ? QByteArray() : hex("EAC5000001 03"));
    }
}

QTEST_GUILESS_MAIN(TestSimulator)
#include "tst_simulator.moc"
