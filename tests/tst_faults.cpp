#include "simulator/faults/fault.h"
#include "tests/simclient.h"

#include <QElapsedTimer>
#include <QFile>
#include <QtTest>

namespace {

// Two short requests whose replies nothing changes: the mode, and a code that no command has.
const QByteArray Mode = hex("EAC5000001 05");
const QByteArray Other = hex("EAC5000001 99");
const QByteArray Frame = hex("EAC5000001 01");
constexpr int FrameReply = 388805;

// Where some systems list their connections.
const QString SystemConnections = QStringLiteral("/proc/net/tcp");

/// Of faults with blanks between them.
sim::FaultPlan planOf(const QString &texts)
{
    sim::FaultPlan plan;
    for (const QString &text : texts.split(' ', Qt::SkipEmptyParts)) {
        sim::Fault fault;
        QString error;
        if (!sim::parseFault(text, &fault, &error))
            qFatal("%s", qPrintable(error));
        plan.faults << fault;
    }
    return plan;
}

sim::TerminalOptions optionsOf(const QString &faults)
{
    sim::TerminalOptions options;
    options.faults = planOf(faults);
    return options;
}

/// Whether the end of a connection is being waited for, which follows an orderly end only.
bool endsOrderly(quint16 terminalPort, quint16 consolePort)
{
    QFile file(SystemConnections);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QString ends = QString::asprintf(":%04X 0100007F:%04X 06", terminalPort, consolePort);
    return file.readAll().contains(ends.toLatin1());
}

/// All bytes that a new terminal answers with.
QByteArray answers(const QString &faults, quint32 seed, const QByteArray &requests, int size)
{
    sim::TerminalOptions options = optionsOf(faults);
    options.faults.seed = seed;
    const SimTerminal terminal(options);
    SimClient client(terminal);
    client.send(requests);
    return client.take(size);
}

/// The strikes of a fault among 64 requests, one character each.
QByteArray strikes(const QString &fault, quint32 seed)
{
    const QByteArray replies = answers(fault, seed, Other.repeated(64), 64 * 6);
    QByteArray struck;
    for (int i = 5; i < replies.size(); i += 6)
        struck += replies.at(i) == '\x02' ? '-' : 'x';
    return struck;
}

} // namespace

/// Most rows are named after their faults.
class TestFaults : public QObject
{
    Q_OBJECT
private slots:
    void replies_data();
    void replies();
    void endings_data();
    void endings();
    void takesTime();
    void followsTheSeed();
    void onlyItsOwnConsoleWaits();
    void lateWaitsForTheNextRequest();
    void consoleLeavesAmidst();
    void mistakes_data();
    void mistakes();
};

void TestFaults::replies_data()
{
    QTest::addColumn<QByteArray>("requests"); // sent at once; m: mode, o: other
    QTest::addColumn<QByteArray>("replies");
    const auto row = [](const char *faults, const char *requests, const char *replies) {
        QTest::newRow(faults) << QByteArray(requests) << hex(replies);
    };
    row("getMode:drop", "mo", "EAC500000102");
    row("0x99:drop", "om", "EAC500000103");
    row("all:drop,from=2,times=2", "moom", "EAC500000103 EAC500000103");
    row("0x99:drop,from=2", "mmoom", "EAC500000103 EAC500000103 EAC500000102 EAC500000103");
    row("getMode:cut=3", "mo", "EAC500 EAC500000102");
    row("getMode:cut=-1", "mo", "EAC5000001 EAC500000102");
    row("getMode:cut=-7", "mo", "EAC500000102");
    row("getMode:cut=7", "mo", "EAC500000103 EAC500000102");
    row("getMode:length=0xFFFFFF", "mo", "EAC5FFFFFF03 EAC500000102");
    row("getMode:length=+1", "mo", "EAC500000203 EAC500000102");
    row("getMode:length=-300", "mo", "EAC500000003 EAC500000102");
    row("all:cut=4 all:length=9", "mo", "EAC50000 EAC50000");
    row("getMode:status=255", "mo", "EAC5000001FF EAC500000102");
    row("getMode:trail=2", "mo", "EAC500000103EEEE EAC500000102");
    row("getMode:late", "mmo", "EAC500000103 EAC500000103 EAC500000102");
    row("getMode:double", "mo", "EAC500000103 EAC500000103 EAC500000102");
    row("getMode:late getMode:double=5", "moo",
        "EAC500000103 EAC500000103 EAC500000102 EAC500000102");
    row("getMode:late 0x99:drop,times=1", "moo", "EAC500000103 EAC500000102");
    row("getMode:late getMode:pieces=4,pause=5", "moo", "EAC500000103 EAC500000102 EAC500000102");
    row("all:status=7 all:trail=1 all:cut=-2", "mo", "EAC5000001 EAC5000001");
    row("getMode:delay=20", "mom", "EAC500000103 EAC500000102 EAC500000103");
    row("getMode:pieces=4,pause=5", "mom", "EAC500000103 EAC500000102 EAC500000103");
}

void TestFaults::replies()
{
    QFETCH(QByteArray, requests);
    QFETCH(QByteArray, replies);
    const SimTerminal terminal(optionsOf(QTest::currentDataTag()));
    SimClient client(terminal);
    client.send(requests.replace('m', Mode).replace('o', Other));
    QCOMPARE(client.take(replies.size()), replies);
    QVERIFY(!client.closed());
}

void TestFaults::endings_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("orderly");
    QTest::newRow("getMode:times=1,close=before") << QByteArray() << true;
    QTest::newRow("getMode:times=1,close=3") << hex("EAC500") << true;
    QTest::newRow("getMode:times=1,close=after") << hex("EAC500000103") << true;
    QTest::newRow("all:double getMode:times=1,close=3") << hex("EAC500 EAC500") << true;
    QTest::newRow("getMode:times=1,reset=before") << QByteArray() << false;
    QTest::newRow("getMode:times=1,reset=3") << hex("EAC500") << false;
    QTest::newRow("getMode:times=1,reset=after") << hex("EAC500000103") << false;
}

void TestFaults::endings()
{
    QFETCH(bool, orderly);
    const SimTerminal terminal(optionsOf(QTest::currentDataTag()));
    SimClient client(terminal);
    QVERIFY(client.waitForConnected());
    const quint16 port = client.localPort();
    client.send(Mode + Other); // the second request goes unanswered
    QTEST(client.take(1000), "bytes");
    QVERIFY(client.closed());
    if (QFile::exists(SystemConnections))
        QTRY_COMPARE(endsOrderly(terminal.port(), port), orderly);
    QCOMPARE(SimClient(terminal).ask(Mode), status(3));
}

void TestFaults::takesTime()
{
    const auto ms = [](const QString &faults, int delayMs, quint32 rate, const QByteArray &requests,
                       int replySize) {
        sim::TerminalOptions options = optionsOf(faults);
        options.faults.delayMs = delayMs;
        options.faults.bytesPerSecond = rate;
        const SimTerminal terminal(options);
        SimClient client(terminal);
        client.waitForConnected();
        QElapsedTimer timer;
        timer.start();
        client.send(requests + Other);
        const bool whole = client.take(replySize).size() == replySize;
        const qint64 taken = timer.elapsed();
        return whole && client.reply() == status(2) ? taken : -1;
    };
    QVERIFY(ms("all:delay=30 all:delay=30", 30, 0, Mode + Other, 12) >= 180);
    QVERIFY(ms("getMode:pieces=2,pause=30", 0, 0, Mode, 6) >= 60);
    QVERIFY(ms("getMode:double=60", 0, 0, Mode, 12) >= 60);
    QVERIFY(ms("", 0, 4'000'000, Frame, FrameReply) >= 77);
    QVERIFY(ms("", 0, 600, Mode.repeated(11), 66) >= 80);
    QVERIFY(ms("all:pieces=3", 0, 600, Mode.repeated(11), 66) >= 80);
}

void TestFaults::followsTheSeed()
{
    const QByteArray struck = strikes("0x99:status=7,chance=0.5", 1);
    QVERIFY2(struck.count('x') > 16 && struck.count('x') < 48, struck.constData());
    QCOMPARE(strikes("0x99:status=7,chance=0.5", 1), struck);
    QVERIFY(strikes("0x99:status=7,chance=0.5", 2) != struck);
    QCOMPARE(strikes("0x99:status=7,chance=0", 1), QByteArray(64, '-'));
    QCOMPARE(strikes("0x99:status=7,chance=0.5,times=3", 1).count('x'), 3);

    const auto garbage = [](quint32 seed) {
        return answers("getPalmprintImage:garbage", seed, Frame + Other, FrameReply + 6);
    };
    const QByteArray bytes = garbage(1);
    QVERIFY(!bytes.startsWith(hex("EAC5")));
    QCOMPARE(bytes.mid(FrameReply), status(2));
    QVERIFY(garbage(1) == bytes);
    QVERIFY(garbage(2) != bytes);
}

void TestFaults::onlyItsOwnConsoleWaits()
{
    int answered = 0;
    sim::TerminalOptions options = optionsOf("getMode:delay=3600000");
    options.log = [&](const QString &line) { answered += line.contains("getMode") ? 1 : 0; };
    const SimTerminal terminal(options);
    SimClient waiting(terminal);
    QCOMPARE(waiting.ask(Other + Mode.repeated(1000)), status(2));
    QTRY_COMPARE(answered, 1);
    QCOMPARE(SimClient(terminal).ask(Other), status(2));
    QCOMPARE(answered, 1); // the others stay unread
}

void TestFaults::lateWaitsForTheNextRequest()
{
    const SimTerminal terminal(optionsOf("getMode:late"));
    SimClient client(terminal);
    client.send(Mode);
    QCOMPARE(SimClient(terminal).ask(Other), status(2));
    client.waitForReadyRead(50); // in vain
    QCOMPARE(client.bytesAvailable(), qint64{0});
    client.send(Other);
    QCOMPARE(client.take(12), hex("EAC500000103 EAC500000102"));
}

void TestFaults::consoleLeavesAmidst()
{
    SimTerminal terminal;
    for (const char *fault : {"all:pieces=1", "all:pieces=1,pause=1", "0x99:delay=30", "0x99:late",
                              "0x99:double=30", "0x99:close=3", "0x99:reset=3"}) {
        terminal.setFaults(planOf(fault));
        for (int i = 0; i < 10; ++i) {
            SimClient client(terminal);
            client.send(Mode + Other + Frame);
            QCOMPARE(client.reply(), status(3));
            if (i % 2 == 0)
                client.abort();
        }
        QCOMPARE(SimClient(terminal).ask(Mode), status(3));
    }
}

void TestFaults::mistakes_data()
{
    QTest::addColumn<QString>("error");
    const auto row = [](const QByteArray &text, const QByteArray &error) {
        QTest::newRow(text.constData()) << QString::fromLatin1(error);
    };
    row("", "no colon in \"\"");
    row("getmode:drop", "unknown command \"getmode\"");
    row("0x100:drop", "unknown command \"0x100\"");
    row("getMode:", "unknown word \"\"");
    row("getMode:cot=1", "unknown word \"cot=1\"");
    row("getMode:from=2", "no kind of fault in \"getMode:from=2\"");
    row("getMode:drop,late", "a second kind of fault: \"late\"");
    row("getMode:drop,from=1,from=2", "said twice: \"from\"");
    row("getMode:drop,pause=1", "only pieces have a pause: \"getMode:drop,pause=1\"");
    for (const QByteArray word :
         {"drop=1", "cut=before", "cut=1=2", "delay=-1", "pieces=0", "length=0x1000000",
          "status=256", "close=-1", "double=", "status", "reset=middle", "trail=99999999999"})
        row("getMode:" + word, "bad value: \"" + word + '"');
    for (const QByteArray word : {"from=0", "chance=1.01", "chance=nan"})
        row("getMode:drop," + word, "bad value: \"" + word + '"');
}

void TestFaults::mistakes()
{
    sim::Fault fault;
    fault.command = 1234;
    QString said;
    QVERIFY(!sim::parseFault(QString::fromLatin1(QTest::currentDataTag()), &fault, &said));
    QTEST(said, "error");
    QCOMPARE(fault.command, 1234);
}

QTEST_GUILESS_MAIN(TestFaults)
#include "tst_faults.moc"
