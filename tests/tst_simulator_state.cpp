#include "simulator/program.h"
#include "tests/simclient.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#endif

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
}

} // namespace

/// The file in which a terminal's state outlives the program.
class TestSimulatorState : public QObject
{
    Q_OBJECT
private slots:
    void init();

    void everyChangeSurvives();
    void savedSoonAndWhole();
    void foreignFilesAreRefused_data();
    void foreignFilesAreRefused();
    void placesWithoutAFileAreRefused();
    void failedSavesAreTriedAgain();
    void severalTerminals();

private:
    /// A terminal that keeps its state in the file; nullptr, with the reason, when it does not.
    std::unique_ptr<sim::Terminal> start(QString *error = nullptr) const;

    std::unique_ptr<QTemporaryDir> directory;
    QString path;
};

void TestSimulatorState::init()
{
    directory = std::make_unique<QTemporaryDir>();
    path = directory->filePath("state.json");
}

std::unique_ptr<sim::Terminal> TestSimulatorState::start(QString *error) const
{
    QString reason;
    auto terminal = std::make_unique<sim::Terminal>();
    const bool kept = terminal->keepState(path, &reason);
    if (error)
        *error = reason;
    const bool listens = kept && terminal->listen(QHostAddress::LocalHost, 0);
    return listens ? std::move(terminal) : nullptr;
}

void TestSimulatorState::everyChangeSurvives()
{
    const QVector<QByteArray> changes{
        hex("EAC5000005 31 00000002"),
        addUser("FFFFFFFF FFFFFFFE", "\xE7\x8E\x8B"),
        request(0x2A, hex("00 00000008") + QByteArray(10240, 'x')),
        hex("EAC5000002 0404"),
        hex("EAC5000003 0A03E3"),
        hex("EAC5000007 07 3D0203040506"),
        request(0x50, QByteArray("KV2403abcDEF789", 16)),
        request(0x15, "{\"recg mode\":3}"),
        request(0x19, "{\"dev info\":{\"dev notes\":\"\xE4\xB8\x9C \\\" / \\u0001\"}}"),
        request(0x1B, "{\"data block\":{\"sys mode\":10}}"),
        addCode("note", "1417080E090500 1500011F173B3B", "QR \"1\""),
    };
    const auto everything = [](const sim::Terminal &asked) {
        SimClient client(asked);
        QVector<QByteArray> replies;
        for (const char *read : {"05", "0B", "10", "16", "17", "18", "1A", "40", "63"})
            replies.append(client.ask(hex("EAC5000001") + hex(read)));
        const QDate before = QDate::currentDate().addMonths(-1);
        replies.append(
            client.ask(request(0x43, monthBytes(before.year(), before.month()) + hex("00000000"))));
        return replies;
    };
    auto terminal = start();
    QVERIFY(terminal);
    const QVector<QByteArray> fresh = everything(*terminal);
    SimClient client(*terminal);
    for (const QByteArray &change : changes)
        QCOMPARE(client.ask(change), hex("EAC5000001 00"));
    const QVector<QByteArray> changed = everything(*terminal);
    for (int i = 0; i < fresh.size(); ++i)
        QCOMPARE(changed.at(i) == fresh.at(i), i == 7 || i == 9); // all but the records

    terminal.reset();
    terminal = start();
    QVERIFY(terminal);
    QCOMPARE(everything(*terminal), changed);
    QCOMPARE(terminal->device().state.users.at(8).features, QByteArray(10240, 'x'));
    SimClient later(*terminal);
    QCOMPARE(later.ask(hex("EAC5000001 06")).left(8), hex("EAC5000006 3D0203"));
}

void TestSimulatorState::savedSoonAndWhole()
{
    const auto terminal = start();
    QVERIFY(contentOf(path).contains("Anna Keller"));
    SimClient client(*terminal);
    client.ask(hex("EAC5000005 31 00000003"));
    client.ask(hex("EAC5000001 42"));
    QTRY_VERIFY(!contentOf(path).contains("Anna Keller"));
    QVERIFY(contentOf(path).contains("\"months\":[]"));
    QVERIFY(contentOf(path).endsWith("}\n"));
    QCOMPARE(QDir(directory->path()).entryList(QDir::Files),
             QStringList({"state.json", "state.json.lock"}));
    QString error;
    QVERIFY(!start(&error));
    QCOMPARE(error, "Cannot use " + path + ": another program keeps its state there");
}

void TestSimulatorState::foreignFilesAreRefused_data()
{
    QTest::addColumn<QByteArray>("from"); // empty: the whole file
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<QByteArray>("reason");
    const auto row = [](const QByteArray &name, const QByteArray &from, const QByteArray &to,
                        const QByteArray &reason) {
        QTest::newRow(name.constData()) << from << to << reason;
    };
    row("empty", "", "", "not a JSON object");
    row("comment", "}\n", "} // boom\n", "not a JSON object");
    row("nested-deeply", "", QByteArray(20000, '['), "not a JSON object");
    row("name-not-utf-8", "Anna Keller", "Ann\xFF", "not a JSON object");
    row("too-many-users", "\"users\":[", "\"users\":[" + QByteArray("{},").repeated(3000),
        "3008 users, more than --max-users 3000");

    const auto value = [&](const char *from, const char *to, const char *member) {
        row(QByteArray(from) + " -> " + to, from, to, '"' + QByteArray(member) + '"');
    };
    value("\"quirel-simulator state 1\"", "[]", "format");
    value("state 1", "state 2", "format");
    value("\"clock offset\"", "\"clock\"", "clock offset");
    value("\"mode\":3", "\"mode\":1", "mode");
    value("\"sensor bias\":12", "\"sensor bias\":64536", "sensor bias");
    value("\"sensor bias\":12", "\"sensor bias\":99999999999999999999", "sensor bias");
    value("KV2601SIM", "KV", "serial number");
    value("\"users\":[{", "\"users\":{},\"was\":[{", "users");
    value("\"users\":[{", "\"users\":[1,{", "users");
    value("\"id\":1,", "\"id\":0,", "id");
    value("\"id\":1,", "\"id\":2,", "users");
    value("Anna Keller", "Anna\\nKeller", "name");
    value("Anna Keller", "123456789012345678901234567890123", "name");
    value("\"vein features\":6", "\"vein features\":7", "print features");
    value("KV-VISIT-7F31C2", "KV-CLEAN-0042", "qr codes");
    value("KV-VISIT-7F31C2", "", "qr codes");
    value("\"start\":\"2", "\"start\":\"x", "start");
    value("\"month\":", "\"month\":13,\"was\":", "month");
    value("\"count\":", "\"count\":200001,\"was\":", "count");
    value("\"recg mode\":2", "\"recg mode\":\"2\"", "user");
    value("\"recg mode\":2", "\"recg mode\":2,\"more\":1", "user");
    value("\"recg mode\":2,", "", "user");
    value("\"documents\":{", "\"documents\":[],\"was\":{", "documents");
}

void TestSimulatorState::foreignFilesAreRefused()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QFETCH(QByteArray, reason);
    start().reset();
    QByteArray text = contentOf(path);
    if (from.isEmpty()) {
        text = to;
    } else {
        const int place = text.indexOf(from);
        QVERIFY(place >= 0);
        text.replace(place, from.size(), to);
    }
    write(path, text);
    QString error;
    QVERIFY(!start(&error));
    QVERIFY2(error.startsWith("Cannot use " + path) && error.endsWith(QString(reason)),
             qPrintable(error));
    QCOMPARE(contentOf(path), text);
}

void TestSimulatorState::placesWithoutAFileAreRefused()
{
    QString error;
    path = directory->path();
    QVERIFY(!start(&error));
    QCOMPARE(error, "Cannot use " + path + ": not a regular file");
    path += "/none/state.json";
    QVERIFY(!start(&error));
    QVERIFY2(error.startsWith("Cannot write " + path), qPrintable(error));
#ifdef Q_OS_UNIX
    path = directory->filePath("long.json");
    QVERIFY(QFile(path).open(QIODevice::WriteOnly) && QFile::resize(path, 900'000'001)); // sparse
    QVERIFY(!start(&error));
    QCOMPARE(error, "Cannot use " + path + ": too long");
    path = directory->filePath("state.json");
    for (const char *pipe : {".lock", ""}) { // neither is waited for
        QCOMPARE(mkfifo(QFile::encodeName(path + pipe).constData(), 0600), 0);
        QVERIFY(!start(&error));
        QCOMPARE(error, "Cannot use " + path + pipe + ": not a regular file");
    }
#endif
}

void TestSimulatorState::failedSavesAreTriedAgain()
{
#ifdef Q_OS_UNIX
    static QStringList lines;
    const auto terminal = start();
    for (quint32 id = 100; id < 200; ++id)
        terminal->device().state.users[id] = {id, id, QString(32, 'u'), QString(), 3, 3};
    const auto handler = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &, const QString &line) { lines << line; });
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit former;
    getrlimit(RLIMIT_FSIZE, &former);
    const rlimit full{4096, former.rlim_max}; // a part of the file still fits
    setrlimit(RLIMIT_FSIZE, &full);
    SimClient(*terminal).ask(hex("EAC5000005 31 00000003"));
    const bool failed = QTest::qWaitFor([] { return !lines.isEmpty(); });
    setrlimit(RLIMIT_FSIZE, &former);
    const bool saved = QTest::qWaitFor([] { return lines.size() > 1; });
    qInstallMessageHandler(handler);
    QVERIFY(failed && saved);
    QCOMPARE(lines, QStringList({"Cannot write " + path + ": File too large", "Saved " + path}));
    QVERIFY(contentOf(path).size() > 4096 && !contentOf(path).contains("Anna Keller"));
#endif
}

void TestSimulatorState::severalTerminals()
{
    sim::Settings settings;
    settings.address = QHostAddress(QHostAddress::LocalHost);
    settings.terminals = 3;
    settings.dataFile = path;
    sim::Terminals terminals;
    QString error;
    QVERIFY2(sim::startTerminals(settings, &terminals, &error), qPrintable(error));
    QStringList names;
    QSet<QByteArray> records;
    const QByteArray month = monthBytes(QDate::currentDate().year(), QDate::currentDate().month());
    for (const auto &terminal : terminals) {
        QCOMPARE(terminal->port(), terminals[0]->port() + names.size());
        SimClient client(*terminal);
        const QJsonObject info = client.askJson("EAC5000001 17");
        names << info["dev_serial"].toString() + ' ' + info["dev_name"].toString();
        records << client.ask(request(0x43, month + hex("00000000")));
    }
    QCOMPARE(names, QStringList({"KV2601SIM000001 Palm terminal (simulated)",
                                 "KV2601SIM000002 Palm terminal 2 (simulated)",
                                 "KV2601SIM000003 Palm terminal 3 (simulated)"}));
    QCOMPARE(records.size(), 3);
    QVERIFY(QFile::exists(path + ".3"));
    settings.dataFile.clear();
    settings.port = terminals[2]->port();
    QVERIFY(!sim::startTerminals(settings, &terminals, &error));
    QVERIFY(error.endsWith(": The bound address is already in use"));
}

QTEST_GUILESS_MAIN(TestSimulatorState)
#include "tst_simulator_state.moc"
