#include "simulator/program.h"
#include "tests/simclient.h"

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

/// Users, enrollments, QR codes, documents and records, and the files that keep them. Stands
/// above the tables because moc finds no class behind raw strings.
class TestSimulatorRules : public QObject
{
    Q_OBJECT
private slots:
    void init() { path = directory.filePath(QTest::currentTestFunction()); }
    void dialogues();
    void enrollments();
    void records();
    void everyChangeSurvives();
    void foreignFilesAreRefused();
    void failedSavesAreTriedAgain();

private:
    /// Replaces the terminals by two that keep their states; false, with the error, if they cannot.
    bool start();

    QTemporaryDir directory;
    QString path;
    QString error;
    sim::Terminals terminals;
};

namespace {

// What a terminal refuses while a person is being enrolled.
const QString Refused = R"(04 01 00000001 > 01; 04 06 000000FF > 01; 0E > 01; 31 00000001 > 01;
        34 00000001 > 01; 2A 00 00000001 '':10240 > 01; 30 00000009 00000000 '':64 > 01;)";

// Each with a new terminal: name, "request > reply; request > reply", written for bytesOf().
// Statuses: 01 busy, 02 wrong parameter, 14 user exists, 15 no such user, 16 full, 18 no room for
// features, 1E QR codes full, 1F QR data exist, 20 no such QR code.
const QString Dialogues[][2] = {
    {"settings", R"(04 04 > 00; 04 02 > 02; 04 > 02; 05 > 04; 99 > 02; 0A 03E3 > 00; 0B > 03E3;
        07 38021E050607 > 02; 07 FF0C1F173B3B > 00; 06 > FF0C1F173B3B;
        50 'KV2403abcDEF789':16 > 00; 50 'KV2403abc"EF789':16 > 02; 50 'KV2403abcDEF7890' > 02)"},
    {"all cleared", R"(0E > 00; 33 > 00 00000001; 10 > 00 '{"user_list":[]}'; 42 > 00;
        40 > 00 '{"record_files":[]}'; 61 > 00; 63 > 00 '{"qrcode data":[]}'; 41 07EA 00 > 02;
        41 07EA 0D > 02; 41 07EA > 02; 43 07EA 0D 00000000 > 02; 43 07EA 0C FFFFFFFF > 00 0000)"},
    {"add user", R"(0E > 00; 30 01020304 0A0B0C0D 'one name to fill its 32 bytes é':64 > 00;
        10 > 00 '{"user_list":[{"card_id":"168496141","id":"16909060","print_cnt":0,
        "user_name":"one name to fill its 32 bytes é","vein_cnt":0}]}')"},
    {"add no user", R"(30 00000001 00000000 'known':64 > 14; 30 00000000 00000000 '':64 > 02;
        30 00000009 00000000 C3 '':63 > 02; 30 00000009 00000000 'two' 0A 'lines':60 > 02)"},
    {"full", R"(33 > 00 00000007; 30 00000009 00000000 'Nine':64 > 00; 33 > 16;
        30 0000000A 00000000 'Ten':64 > 16; 31 00000001 > 00; 31 00000001 > 15; 31 00000000 > 02;
        31 000001 > 02; 33 > 00 00000001)"},
    {"import", R"(2A 00 00000007 '':10240 > 15; 2A 00 00000001 '':10239 > 02;
        2A 00 00000001 '':10241 > 02; 2A 01 00000001 '':10240 > 02; 2A 00 00000004 '':10240 > 16;
        34 00000004 > 00; 2A 00 00000004 '':10240 > 00)"},
    {"enroll nobody", R"(04 01 > 02; 04 06 > 02; 04 01 00000000 > 02; 04 03 00000001 > 02;
        04 01 000000FF > 15; 04 01 00000004 > 18; 27 00000000 00 > 02; 28 000000FF > 02; 05 > 03)"},
    {"enrollment", "04 01 00000003 > 00; 05 > 01;" + Refused + R"(04 06 00000003 > 01;
        04 01 00000003 > 00; 04 04 > 00; 05 > 04; 0E > 00; 04 06 FFFFFFFF > 00; 05 > 06;)" +
                       Refused + "04 06 FFFFFFFF > 01; 04 03 > 00; 05 > 03; 28 FFFFFFFF > 02"},
    {"add code", R"(61 > 00; 60 '保':32 1417080E090500 1500011F173B3B 'Q"1':512 > 00;
        63 > 00 '{"qrcode data":[{"QR":"Q\"1","et":"2100-01-31 23:59:59","name":"保",
        "st":"2023-08-14 09:05:00"}]}')"},
    {"add no code", R"(60 '':32 1417080E090500 1500011F173B3B 'no note':512 > 02;
        60 'n' 0D '':30 1417080E090500 1500011F173B3B 'return':512 > 02;
        60 'n':32 1417080E090500 1417080E090500 'no time':512 > 02;
        60 'n':32 1417080E180500 1500011F173B3B 'hour 24':512 > 02;
        60 'n':32 1364080E090500 1500011F173B3B 'year 100':512 > 02)"},
    {"delete code", R"(60 'note':32 1417080E090500 1500011F173B3B 'QR-1':512 > 00;
        60 'note':32 1417080E090500 1500011F173B3B 'QR-1':512 > 1F;
        60 'note':32 1417080E090500 1500011F173B3B 'QR-2':512 > 1E;
        62 00 'note':32 > 02; 62 01 '':32 > 02; 62 02 'note':32 > 20; 62 03 'note':32 > 02;
        62 02 'QR-1':32 > 00; 60 'note':32 1417080E090500 1500011F173B3B 'QR-2':512 > 00;
        62 01 'note':32 > 00; 62 01 'note':32 > 20)"},
    {"document", R"(19 '[1]' > 02; 19 '{"sys set":"' C3 '"}' > 02; 19 '{"dev info":{}} x' > 02;
        19 '{"dev info":{"sound volume": 3 // boom' 0A '}}' > 02;
        19 '{"dev info":{"sound volume":3,"sound volume":4}}' > 02;
        19 '{"dev info":5,"work param":{"local port":"7"}}' > 00;
        19 '{"dev info":{"sound volume":4,"other":1},"other":1}' > 00;
        18 > 00 '{"dev info":{"dev location desc":"东门 East gate","dev notes":"simulated",
        "manufacture name":"Kovant","sound volume":4,"user dev type":0},"sys set":null,
        "work param":{"auto reboot":1,"auto reboot time":270,"gateway ip":"192.168.31.1",
        "local ip":"192.168.31.5","local port":20086,"remote enroll func":1}}')"},
};

// A text of a stored state, what replaces it, and why the state is refused then.
const QByteArray Spoilings[][3] = {
    {"}\n", "} // boom\n", "not a JSON object"},
    {"\"users\":[", "\"users\":[" + QByteArray("1,").repeated(3000),
     "3008 users, more than --max-users 3000"},
    {"state 1", "state 2", "bad value of \"format\""},
    {"\"mode\":3", "\"mode\":1", "bad value of \"mode\""},
    {"bias\":12", "bias\":99999999999999999999", "bad value of \"sensor bias\""},
    {"\"id\":1,", "\"id\":2,", "bad value of \"users\""},
    {"Anna", "A\\n", "bad value of \"name\""},
    {"\"vein features\":6", "\"vein features\":7", "bad value of \"print features\""},
    {"KV-VISIT-7F31C2", "KV-CLEAN-0042", "bad value of \"qr codes\""},
    {"\"recg mode\":2", "\"recg mode\":\"2\"", "bad value of \"user\""},
};

} // namespace

void TestSimulatorRules::dialogues()
{
    sim::TerminalOptions options;
    options.maxUsers = 9;   // eight are there
    options.maxQrCodes = 4; // three are there
    options.enrollMs = 60000;
    for (const auto &[name, dialogue] : Dialogues) {
        sim::Terminal terminal(options);
        SimClient client(terminal);
        for (const QString &exchange : dialogue.split(';')) {
            const QByteArray reply = client.ask(exchange.section('>', 0, 0));
            QVERIFY2(reply == bytesOf(exchange.section('>', 1)),
                     qPrintable(name + ": " + exchange + ", not " + reply.left(50).toHex()));
        }
    }
}

void TestSimulatorRules::enrollments()
{
    sim::TerminalOptions options;
    options.enrollMs = 100;
    options.importReplaces = true;
    sim::Terminal terminal(options);
    SimClient client(terminal);
    QCOMPARE(client.ask("04 06 000000FF"), hex("00"));
    QTRY_COMPARE(client.ask("05"), hex("03"));
    const QByteArray pair = client.ask("27 000000FF 04");
    QVERIFY(pair != client.ask("27 000000FF 00") && pair.mid(1, 388800) != pair.mid(388801));
    QCOMPARE(client.ask("27 000000FF 05"), hex("02"));

    QSignalSpy spy(&terminal.device(), SIGNAL(happened(QString)));
    QCOMPARE(client.ask("04 01 00000003"), hex("00"));
    QVERIFY(spy.wait());
    QCOMPARE(client.ask("04 01 00000003"), hex("00")); // begins anew
    QTRY_COMPARE(client.ask("05"), hex("03"));
    QCOMPARE(spy.count({QString("palm image 1 of 5 taken")}), 2);
    QVERIFY(
        client.ask("10").contains("print_cnt\":6,\"user_name\":\"Anna Keller\",\"vein_cnt\":6"));
    QCOMPARE(client.ask("2A 00 00000004 '':10240"), hex("00")); // replaces what fills the user
}

void TestSimulatorRules::records()
{
    sim::TerminalOptions options;
    options.records = 12001; // 6001 of them of this month, 3000 of the one before
    options.passages = 6000;
    options.ring = 9800;
    options.enrollMs = 100;
    const QDate today = QDate::currentDate();
    sim::Terminal terminal(options);
    SimClient client(terminal);
    const QString month = QString::asprintf("%04X %02X", today.year(), today.month());
    const auto page = [&](const char *from) { return client.ask("43" + month + from); };
    QTRY_VERIFY(page("00001770").size() > 103); // a passage
    QCOMPARE(client.ask("04 00"), hex("00"));   // idle: nobody passes, nor during an enrollment
    const QByteArray first = page("00000000");
    const QByteArray last = page("00001770");
    QCOMPARE(client.ask("04 01 00000003"), hex("00"));
    QTRY_COMPARE(client.ask("05"), hex("00"));
    QCOMPARE(page("00001770"), last);
    QCOMPARE(client.ask("04 03"), hex("00"));
    QTRY_VERIFY(page("00001770").size() > last.size());
    QVERIFY(page("00001770").mid(3).startsWith(last.mid(3)));
    QCOMPARE(page("00000000"), first);
    QVERIFY(first.startsWith(hex("00 0BB8")) && first.size() == 300003);
    const QByteArray all = first + page("00001770").mid(3);
    const auto time = [&](int at) { return all.mid(at + 4, 10) + all.mid(at + 20, 8); };
    if (QDate::currentDate() != today)
        return records(); // it was midnight
    QCOMPARE(last.mid(107, 10), today.toString(Qt::ISODate).toLatin1());
    for (int at = 103; at < all.size(); at += 100)
        QVERIFY(time(at) >= time(at - 100));
    QCOMPARE(client.ask("40").count(".dat"), 3); // of the newest records
    QCOMPARE(client.ask("41" + month), hex("00"));
    QVERIFY(page("00000000").size() < first.size());
    QCOMPARE(sim::textField(QString(16, QChar(0xE9)), 32), bytesOf("'ééééééééééééééé':32"));
}

bool TestSimulatorRules::start()
{
    terminals.clear();
    sim::Settings settings;
    settings.address = QHostAddress(QHostAddress::LocalHost);
    settings.terminals = 2;
    settings.dataFile = path;
    return sim::startTerminals(settings, &terminals, &error);
}

void TestSimulatorRules::everyChangeSurvives()
{
    const auto everything = [&](size_t index) {
        SimClient client(*terminals[index]);
        QByteArrayList replies;
        for (const char *request : {"05", "0B", "10", "16", "17", "18", "1A", "63", "40"})
            replies << client.ask(request);
        return replies;
    };
    QVERIFY2(start() && terminals[1]->port() == terminals[0]->port() + 1, qPrintable(error));
    const QByteArrayList fresh = everything(0);
    const QByteArrayList other = everything(1);
    QVERIFY(other.at(4).contains("terminal 2 (simulated)\",\"dev_serial\":\"KV2601SIM000002\""));
    SimClient client(*terminals[0]);
    for (const char *change :
         {"31 00000003", "30 FFFFFFFF FFFFFFFE '王':64", "2A 00 00000008 'features':10240", "04 04",
          "0A 03E3", "07 3D0203040506", "50 'KV2403abcDEF789':16", R"(15 '{"recg mode":3}')",
          R"(19 '{"dev info":{"dev notes":"东 \" / \u0001"}}')",
          R"(1B '{"data block":{"sys mode":10}}')",
          R"(60 'note':32 1417080E090500 1500011F173B3B 'QR "1"':512)", "42"})
        QCOMPARE(client.ask(change), hex("00"));
    const QByteArrayList changed = everything(0);
    for (int i = 0; i < fresh.size(); ++i)
        QVERIFY2(changed.at(i) != fresh.at(i), fresh.at(i).constData());
    QTRY_VERIFY(contentOf(path).contains("\"months\":[]")); // saved soon
    QVERIFY(!sim::Terminal().keepState(path, &error));
    QCOMPARE(error, "Cannot use " + path + ": another program keeps its state there");

    QVERIFY2(start(), qPrintable(error));
    QCOMPARE(everything(0), changed);
    QCOMPARE(everything(1), other);
    QCOMPARE(terminals[0]->device().state.users[8].features, bytesOf("'features':10240"));
    QCOMPARE(SimClient(*terminals[0]).ask("06").left(3), hex("3D0203"));
}

void TestSimulatorRules::foreignFilesAreRefused()
{
    QVERIFY(start());
    const QByteArray good = contentOf(path);
    for (const auto &[from, to, reason] : Spoilings) {
        terminals.clear();
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(good).replace(good.indexOf(from), from.size(), to));
        file.close();
        const QByteArray spoilt = contentOf(path);
        QVERIFY2(!start(), from.constData());
        QCOMPARE(error, "Cannot use " + path + ": " + reason);
        QCOMPARE(contentOf(path), spoilt);
    }
    path += "2";
    QVERIFY(QFile(path).open(QIODevice::WriteOnly) && QFile::resize(path, 900'000'001)); // sparse
    QVERIFY(!start());
    QCOMPARE(error, "Cannot use " + path + ": too long");
    path += "3";
    QVERIFY(QDir().mkdir(path + ".lock") && !start());
    QCOMPARE(error, "Cannot use " + path + ".lock: not a regular file");
}

void TestSimulatorRules::failedSavesAreTriedAgain()
{
#ifdef Q_OS_UNIX
    QVERIFY(start());
    terminals[0]->device().state.users[3].features = QByteArray(10240, 'x');
    static QStringList lines;
    const auto handler = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &, const QString &line) { lines << line; });
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit former;
    getrlimit(RLIMIT_FSIZE, &former);
    const rlimit full{4096, former.rlim_max}; // a part of the file still fits
    const QByteArray before = contentOf(path);
    setrlimit(RLIMIT_FSIZE, &full);
    SimClient(*terminals[0]).ask("04 00");
    const bool failed = QTest::qWaitFor([] { return !lines.isEmpty(); });
    const bool isKept = contentOf(path) == before;
    setrlimit(RLIMIT_FSIZE, &former);
    const bool saved = QTest::qWaitFor([] { return lines.size() > 1; });
    qInstallMessageHandler(handler);
    QVERIFY(failed && isKept && saved);
    QCOMPARE(lines, QStringList({"Cannot write " + path + ": File too large", "Saved " + path}));
#endif
}

QTEST_GUILESS_MAIN(TestSimulatorRules)
#include "tst_simulator_rules.moc"
