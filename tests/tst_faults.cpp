#include "simulator/faultspec.h"
#include "simulator/terminal.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTcpSocket>
#include <QtTest>

namespace {

using Texts = QStringList;

// Two short requests whose replies nothing changes: the mode, and a code that no command has.
const QByteArray Mode = QByteArray::fromHex("EAC5000001 05");
const QByteArray Other = QByteArray::fromHex("EAC5000001 99");
const QByteArray Frame = QByteArray::fromHex("EAC5000001 01");
constexpr int FrameReply = 388805;

// Where some systems list their connections.
const QString SystemConnections = QStringLiteral("/proc/net/tcp");

sim::FaultPlan planOf(const Texts &texts)
{
    sim::FaultPlan plan;
    for (const QString &text : texts) {
        sim::Fault fault;
        QString error;
        if (!sim::parseFault(text, &fault, &error))
            qFatal("%s", qPrintable(error));
        plan.faults << fault;
    }
    return plan;
}

sim::TerminalOptions optionsOf(const sim::FaultPlan &plan)
{
    sim::TerminalOptions options;
    options.faults = plan;
    return options;
}

/// Listens on a free port.
class Terminal : public sim::Terminal
{
public:
    explicit Terminal(const sim::TerminalOptions &options)
        : sim::Terminal(options)
    {
        if (!listen(QHostAddress::LocalHost, 0))
            qFatal("no port");
    }
    explicit Terminal(const Texts &faults)
        : Terminal(optionsOf(planOf(faults)))
    {
    }
};

/// Gathers whatever comes.
class Client : public QTcpSocket
{
public:
    explicit Client(const sim::Terminal &terminal)
    {
        connectToHost(QHostAddress::LocalHost, terminal.port());
    }

    /// Waits until `size` bytes are there or the connection has gone.
    QByteArray take(int size)
    {
        QElapsedTimer timer;
        timer.start();
        while (m_bytes.size() < size && state() != UnconnectedState && timer.elapsed() < 20000) {
            QTest::qWait(1);
            const QByteArray piece = readAll();
            m_pieces += piece.isEmpty() ? 0 : 1;
            m_bytes += piece;
        }
        QByteArray taken = m_bytes.left(size);
        m_bytes.remove(0, size);
        return taken;
    }

    QByteArray ask(const QByteArray &requests, int size)
    {
        write(requests);
        return take(size);
    }

    int pieces() const { return m_pieces; }

private:
    QByteArray m_bytes;
    int m_pieces = 0;
};

/// Whether the end of a connection is being waited for, which follows an orderly end only.
bool endsOrderly(quint16 terminalPort, quint16 consolePort)
{
    QFile file(SystemConnections);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QString ends = QString::asprintf(":%04X 0100007F:%04X 06", terminalPort, consolePort);
    return file.readAll().contains(ends.toLatin1());
}

/// The strikes of a fault among 64 requests, one character each.
QByteArray strikes(const QString &text, quint32 seed)
{
    sim::FaultPlan plan = planOf({text});
    plan.seed = seed;
    const Terminal terminal(optionsOf(plan));
    Client client(terminal);
    const QByteArray replies = client.ask(Other.repeated(64), 64 * 6);
    QByteArray struck;
    for (int i = 5; i < replies.size(); i += 6)
        struck += replies.at(i) == '\x02' ? '-' : 'x';
    return struck;
}

} // namespace

class TestFaults : public QObject
{
    Q_OBJECT
private slots:
    void replies_data();
    void replies();
    void endings_data();
    void endings();
    void takesTime_data();
    void takesTime();
    void comesInPieces();
    void chanceFollowsTheSeed();
    void garbageFollowsTheSeed();
    void plantedWhileConnected();
    void onlyItsOwnConsoleWaits();
    void rebootWaitsForItsReply();
    void consoleLeavesAmidst_data();
    void consoleLeavesAmidst();
    void mistakes_data();
    void mistakes();
};

void TestFaults::replies_data()
{
    QTest::addColumn<Texts>("faults");
    QTest::addColumn<QByteArray>("requests"); // sent at once; m: mode, o: other
    QTest::addColumn<QByteArray>("replies");

    const auto row = [](const char *name, const Texts &faults, const char *requests,
                        const char *replies) {
        QTest::newRow(name) << faults << QByteArray(requests) << QByteArray::fromHex(replies);
    };
    row("none", {}, "mo", "EAC500000103 EAC500000102");
    row("drop", {"getMode:drop"}, "mo", "EAC500000102");
    row("by-code", {"0x99:drop"}, "om", "EAC500000103");
    row("all-from-second-twice", {"all:drop,from=2,times=2"}, "moom", "EAC500000103 EAC500000103");
    row("from-counts-its-own-command", {"0x99:drop,from=2"}, "mmoom",
        "EAC500000103 EAC500000103 EAC500000102 EAC500000103");
    row("once", {"all:drop,times=1"}, "mo", "EAC500000102");
    row("cut-in-head", {"getMode:cut=3"}, "mo", "EAC500 EAC500000102");
    row("cut-one-byte-short", {"getMode:cut=-1"}, "mo", "EAC5000001 EAC500000102");
    row("cut-more-than-all", {"getMode:cut=-7"}, "mo", "EAC500000102");
    row("cut-beyond-the-end", {"getMode:cut=7"}, "mo", "EAC500000103 EAC500000102");
    row("length-0", {"getMode:length=0"}, "mo", "EAC500000003 EAC500000102");
    row("length-most", {"getMode:length=0xFFFFFF"}, "mo", "EAC5FFFFFF03 EAC500000102");
    row("length-one-more", {"getMode:length=+1"}, "mo", "EAC500000203 EAC500000102");
    row("length-one-less", {"getMode:length=-1"}, "mo", "EAC500000003 EAC500000102");
    row("length-below-0", {"getMode:length=-300"}, "mo", "EAC500000003 EAC500000102");
    row("length-of-no-head", {"all:cut=4", "all:length=9"}, "mo", "EAC50000 EAC50000");
    row("status", {"getMode:status=255"}, "mo", "EAC5000001FF EAC500000102");
    row("trail", {"getMode:trail=2"}, "mo", "EAC500000103EEEE EAC500000102");
    row("late", {"getMode:late"}, "moo", "EAC500000103 EAC500000102 EAC500000102");
    row("late-twice", {"getMode:late"}, "mmo", "EAC500000103 EAC500000103 EAC500000102");
    row("late-then-none", {"getMode:late", "0x99:drop,times=1"}, "moo",
        "EAC500000103 EAC500000102");
    row("late-in-pieces", {"getMode:late", "getMode:pieces=4,pause=5"}, "moo",
        "EAC500000103 EAC500000102 EAC500000102");
    row("faults-in-their-order", {"all:status=7", "all:trail=1", "all:cut=-2"}, "mo",
        "EAC5000001 EAC5000001");
    row("delayed-keeps-order", {"getMode:delay=20"}, "mom",
        "EAC500000103 EAC500000102 EAC500000103");
    row("pieces-keep-order", {"getMode:pieces=4,pause=5"}, "mom",
        "EAC500000103 EAC500000102 EAC500000103");
}

void TestFaults::replies()
{
    QFETCH(Texts, faults);
    QFETCH(QByteArray, requests);
    QFETCH(QByteArray, replies);

    const Terminal terminal(faults);
    Client client(terminal);
    requests.replace('m', Mode).replace('o', Other);
    QCOMPARE(client.ask(requests, replies.size()), replies);
    QCOMPARE(client.state(), QAbstractSocket::ConnectedState);
}

void TestFaults::endings_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("orderly");

    const QByteArray inside = QByteArray::fromHex("EAC500");
    const QByteArray after = QByteArray::fromHex("EAC500000103");
    QTest::newRow("close-before") << "getMode:close=before" << QByteArray() << true;
    QTest::newRow("close-inside") << "getMode:close=3" << inside << true;
    QTest::newRow("close-after") << "getMode:close=after" << after << true;
    QTest::newRow("reset-before") << "getMode:reset=before" << QByteArray() << false;
    QTest::newRow("reset-inside") << "getMode:reset=3" << inside << false;
    QTest::newRow("reset-after") << "getMode:reset=after" << after << false;
}

void TestFaults::endings()
{
    QFETCH(QString, fault);
    QFETCH(QByteArray, bytes);
    QFETCH(bool, orderly);

    const Terminal terminal(Texts{fault + ",times=1"});
    Client client(terminal);
    QVERIFY(client.waitForConnected());
    const quint16 port = client.localPort();
    QCOMPARE(client.ask(Mode + Other, 1000), bytes); // the second request goes unanswered
    QCOMPARE(client.state(), QAbstractSocket::UnconnectedState);
    if (QFile::exists(SystemConnections))
        QTRY_COMPARE(endsOrderly(terminal.port(), port), orderly);
    QCOMPARE(Client(terminal).ask(Mode, 6), QByteArray::fromHex("EAC500000103"));
}

void TestFaults::takesTime_data()
{
    QTest::addColumn<Texts>("faults");
    QTest::addColumn<int>("delayMs");
    QTest::addColumn<quint32>("rate");
    QTest::addColumn<QByteArray>("requests");
    QTest::addColumn<int>("replySize");
    QTest::addColumn<int>("leastMs");

    QTest::newRow("delay") << Texts{"getMode:delay=60"} << 0 << 0U << Mode << 6 << 60;
    QTest::newRow("delays-add-up")
        << Texts{"all:delay=30", "all:delay=30"} << 30 << 0U << Mode + Other << 12 << 180;
    QTest::newRow("pauses") << Texts{"getMode:pieces=2,pause=30"} << 0 << 0U << Mode << 6 << 60;
    QTest::newRow("rate-of-one") << Texts{} << 0 << 4'000'000U << Frame << FrameReply << 77;
    QTest::newRow("rate-of-many") << Texts{} << 0 << 600U << Mode.repeated(11) << 66 << 80;
    QTest::newRow("rate-and-pieces")
        << Texts{"all:pieces=3"} << 0 << 600U << Mode.repeated(11) << 66 << 80;
}

void TestFaults::takesTime()
{
    QFETCH(Texts, faults);
    QFETCH(int, delayMs);
    QFETCH(quint32, rate);
    QFETCH(QByteArray, requests);
    QFETCH(int, replySize);
    QFETCH(int, leastMs);

    sim::FaultPlan plan = planOf(faults);
    plan.delayMs = delayMs;
    plan.bytesPerSecond = rate;
    const Terminal terminal(optionsOf(plan));
    Client client(terminal);
    QVERIFY(client.waitForConnected());
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(client.ask(requests + Other, replySize).size(), replySize);
    QVERIFY2(timer.elapsed() >= leastMs, qPrintable(QString::number(timer.elapsed())));
    QCOMPARE(client.take(6), QByteArray::fromHex("EAC500000102"));
}

void TestFaults::comesInPieces()
{
    const Terminal terminal(Texts{"all:pieces=1,pause=20"});
    Client client(terminal);
    QCOMPARE(client.ask(Mode, 6), QByteArray::fromHex("EAC500000103"));
    QVERIFY(client.pieces() > 3); // a host that stalls may join some
}

void TestFaults::chanceFollowsTheSeed()
{
    const QByteArray struck = strikes("0x99:status=7,chance=0.5", 1);
    QVERIFY2(struck.count('x') > 16 && struck.count('x') < 48, struck.constData());
    QCOMPARE(strikes("0x99:status=7,chance=0.5", 1), struck);
    QVERIFY(strikes("0x99:status=7,chance=0.5", 2) != struck);
    QCOMPARE(strikes("0x99:status=7,chance=0", 1), QByteArray(64, '-'));
    QCOMPARE(strikes("0x99:status=7,chance=0.5,times=3", 1).count('x'), 3);
}

void TestFaults::garbageFollowsTheSeed()
{
    const auto garbage = [](quint32 seed) {
        sim::FaultPlan plan = planOf({"getPalmprintImage:garbage"});
        plan.seed = seed;
        const Terminal terminal(optionsOf(plan));
        Client client(terminal);
        const QByteArray bytes = client.ask(Frame + Other, FrameReply + 6);
        return bytes.endsWith(QByteArray::fromHex("EAC500000102")) ? bytes : QByteArray();
    };
    const QByteArray bytes = garbage(1);
    QCOMPARE(bytes.size(), FrameReply + 6);
    for (int value = 0; value < 256; ++value)
        QVERIFY(bytes.contains(static_cast<char>(value)));
    QVERIFY(!bytes.startsWith(QByteArray::fromHex("EAC5")));
    QVERIFY(garbage(1) == bytes);
    QVERIFY(garbage(2) != bytes);
}

void TestFaults::plantedWhileConnected()
{
    Terminal terminal(Texts{});
    Client client(terminal);
    const QByteArray good = QByteArray::fromHex("EAC500000103");
    QCOMPARE(client.ask(Mode, 6), good);
    for (int round = 0; round < 2; ++round) { // a plan starts counting anew
        terminal.setFaults(planOf({"all:cut=2,times=1"}));
        QCOMPARE(client.ask(Mode + Mode, 8), QByteArray::fromHex("EAC5") + good);
    }
    terminal.setFaults(planOf({"all:cut=-1"}));
    QCOMPARE(client.ask(Mode, 5), QByteArray::fromHex("EAC5000001"));
    terminal.setFaults({});
    QCOMPARE(client.ask(Mode, 6), good);
}

void TestFaults::onlyItsOwnConsoleWaits()
{
    int answered = 0;
    sim::TerminalOptions options;
    options.faults = planOf({"getMode:delay=3600000"});
    options.log = [&](const QString &line) { answered += line.contains("getMode") ? 1 : 0; };
    const Terminal terminal(options);
    Client waiting(terminal);
    QCOMPARE(waiting.ask(Other + Mode.repeated(1000), 6), QByteArray::fromHex("EAC500000102"));
    QTRY_COMPARE(answered, 1);
    QCOMPARE(Client(terminal).ask(Other, 6), QByteArray::fromHex("EAC500000102"));
    QCOMPARE(answered, 1); // the others stay unread
}

void TestFaults::rebootWaitsForItsReply()
{
    sim::TerminalOptions options;
    options.rebootMs = 2000;
    options.faults = planOf({"rebootDevice:pieces=2,pause=20"});
    const Terminal terminal(options);
    Client client(terminal);
    QCOMPARE(client.ask(QByteArray::fromHex("EAC5000001 EF"), 7),
             QByteArray::fromHex("EAC500000100"));
    QCOMPARE(client.state(), QAbstractSocket::UnconnectedState);
}

void TestFaults::consoleLeavesAmidst_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<int>("taken"); // bytes, before it leaves

    QTest::newRow("pieces") << "all:pieces=1" << 3;
    QTest::newRow("pause") << "all:pieces=1,pause=1" << 3;
    QTest::newRow("delay") << "0x99:delay=30" << 6;
    QTest::newRow("late") << "0x99:late" << 6;
    QTest::newRow("close") << "0x99:close=3" << 6;
    QTest::newRow("reset") << "0x99:reset=3" << 6;
}

void TestFaults::consoleLeavesAmidst()
{
    QFETCH(QString, fault);
    QFETCH(int, taken);

    Terminal terminal(Texts{fault});
    for (int i = 0; i < 10; ++i) {
        Client client(terminal);
        QCOMPARE(client.ask(Mode + Other + Frame, taken).size(), taken);
        if (i % 2 == 0)
            client.abort();
    }
    QCOMPARE(Client(terminal).ask(Mode, 6), QByteArray::fromHex("EAC500000103"));
}

void TestFaults::mistakes_data()
{
    QTest::addColumn<QString>("error");

    const auto row = [](const char *text, const char *error) { QTest::newRow(text) << error; };
    row("", "no colon in \"\"");
    row("getmode:drop", "unknown command \"getmode\"");
    row("0x100:drop", "unknown command \"0x100\"");
    row("getMode:", "unknown word \"\"");
    row("getMode:cot=1", "unknown word \"cot=1\"");
    row("getMode:from=2", "no kind of fault in \"getMode:from=2\"");
    row("getMode:drop,late", "a second kind of fault: \"late\"");
    row("getMode:drop,from=1,from=2", "said twice: \"from\"");
    row("getMode:drop=1", "bad value: \"drop=1\"");
    row("getMode:cut=before", "bad value: \"cut=before\"");
    row("getMode:cut=1=2", "bad value: \"cut=1=2\"");
    row("getMode:delay=-1", "bad value: \"delay=-1\"");
    row("getMode:pieces=0", "bad value: \"pieces=0\"");
    row("getMode:length=0x1000000", "bad value: \"length=0x1000000\"");
    row("getMode:status=256", "bad value: \"status=256\"");
    row("getMode:close=-1", "bad value: \"close=-1\"");
    row("getMode:reset=middle", "bad value: \"reset=middle\"");
    row("getMode:trail=99999999999", "bad value: \"trail=99999999999\"");
    row("getMode:drop,from=0", "bad value: \"from=0\"");
    row("getMode:drop,chance=1.01", "bad value: \"chance=1.01\"");
    row("getMode:drop,chance=nan", "bad value: \"chance=nan\"");
    row("getMode:drop,pause=1", "only pieces have a pause: \"getMode:drop,pause=1\"");
}

void TestFaults::mistakes()
{
    QFETCH(QString, error);

    sim::Fault fault;
    fault.command = 1234;
    QString said;
    QVERIFY(!sim::parseFault(QString::fromLatin1(QTest::currentDataTag()), &fault, &said));
    QCOMPARE(said, error);
    QCOMPARE(fault.command, 1234);
}

QTEST_GUILESS_MAIN(TestFaults)
#include "tst_faults.moc"
