#include "simulator/terminal.h"
#include "tests/simclient.h"

#include <QJsonArray>
#include <QtTest>

#include <memory>

namespace {

using Dialogue = QVector<QPair<QByteArray, QByteArray>>; // requests and replies

QByteArray addUser(const char *numbers, const QByteArray &name)
{
    return request(0x30, hex(numbers) + name.leftJustified(64, '\0'));
}

QByteArray import(const char *kindAndId, int size)
{
    return request(0x2A, hex(kindAndId) + QByteArray(size, '\x7F'));
}

QByteArray addCode(const QByteArray &note, const char *times, const QByteArray &data)
{
    return request(0x60, note.leftJustified(32, '\0') + hex(times) + data.leftJustified(512, '\0'));
}

QByteArray removeCode(int selector, const QByteArray &key)
{
    return request(0x62, QByteArray(1, static_cast<char>(selector)) + key.leftJustified(32, '\0'));
}

// From 2023-08-14 09:05:00 to 2100-01-31 23:59:59.
constexpr const char *Times = "1417080E090500 1500011F173B3B";

} // namespace

/// Users, enrollments, records and QR codes. The terminal holds eight users of nine,
/// and three QR codes of four.
class TestSimulatorRules : public QObject
{
    Q_OBJECT
private slots:
    void init();

    void dialogues_data();
    void dialogues();
    void userList();
    void importedFeaturesCount();
    void enrollmentKeepsBusy_data();
    void enrollmentKeepsBusy();
    void localEnrollment();
    void remoteEnrollment();
    void remotePairsOutliveALocalEnrollment();
    void recordPages();
    void listsStayBelowTheWait();
    void longTextsAreCutAtCharacters();

private:
    void start(int enrollMs);
    void start(const sim::TerminalOptions &options);
    /// "id,vein,print" of a user in the list.
    QString featuresOf(SimClient &client, const QString &id) const;

    std::unique_ptr<sim::Terminal> m_terminal;
    quint16 m_port = 0;
};

void TestSimulatorRules::init()
{
    start(60000);
}

void TestSimulatorRules::start(int enrollMs)
{
    sim::TerminalOptions options;
    options.maxUsers = 9;
    options.maxQrCodes = 4;
    options.enrollMs = enrollMs;
    options.records = 12001;
    start(options);
}

void TestSimulatorRules::start(const sim::TerminalOptions &options)
{
    m_terminal = std::make_unique<sim::Terminal>(options);
    QVERIFY(m_terminal->listen(QHostAddress::LocalHost, 0));
    m_port = m_terminal->port();
}

QString TestSimulatorRules::featuresOf(SimClient &client, const QString &id) const
{
    const QJsonArray users = client.askJson("EAC5000001 10")["user_list"].toArray();
    for (const QJsonValue &user : users)
        if (user["id"].toString() == id)
            return QStringLiteral("%1,%2")
                .arg(user["vein_cnt"].toInt())
                .arg(user["print_cnt"].toInt());
    return {};
}

void TestSimulatorRules::dialogues_data()
{
    QTest::addColumn<Dialogue>("dialogue");
    const QByteArray clear = hex("EAC5000001 0E");
    const QByteArray full = addUser("00000009 00000000", "Nine");
    const QByteArray name32 = QByteArray(30, 'n') + hex("C3A9"); // fills its field
    QTest::newRow("add-user") << Dialogue{
        {clear, status(0)},
        {addUser("01020304 0A0B0C0D", name32), status(0)},
        {hex("EAC5000001 10"), hex("EAC5000082 00") +
                                   "{\"user_list\":[{\"card_id\":\"168496141\",\"id\":\"16909060\","
                                   "\"print_cnt\":0,\"user_name\":\"" +
                                   name32 + "\",\"vein_cnt\":0}]}"}};
    QTest::newRow("add-known-user") << Dialogue{{addUser("00000001 00000000", "A"), status(20)}};
    QTest::newRow("add-user-0") << Dialogue{{addUser("00000000 00000000", "A"), status(2)}};
    QTest::newRow("add-not-utf-8") << Dialogue{{addUser("00000009 00000000", "\xC3"), status(2)}};
    QTest::newRow("add-two-lines")
        << Dialogue{{addUser("00000009 00000000", "A\nB"), status(2)},
                    {addUser("00000009 00000000", QByteArray(32, 'n') + "\x7F"), status(2)},
                    {addCode("n\r", Times, "QR"), status(2)}};
    QTest::newRow("add-too-short")
        << Dialogue{{full.left(3) + hex("0048") + full.mid(5, 72), status(2)}};
    QTest::newRow("add-to-full") << Dialogue{{full, status(0)},
                                             {addUser("0000000A 00000000", "Ten"), status(22)},
                                             {full, status(20)},
                                             {hex("EAC5000001 33"), status(22)}};
    QTest::newRow("free-id-in-a-gap")
        << Dialogue{{hex("EAC5000001 33"), hex("EAC5000005 00 00000007")},
                    {hex("EAC5000005 31 00000001"), status(0)},
                    {hex("EAC5000001 33"), hex("EAC5000005 00 00000001")}};
    QTest::newRow("delete-unknown") << Dialogue{{hex("EAC5000005 31 00000007"), status(21)}};
    QTest::newRow("delete-user-0") << Dialogue{{hex("EAC5000005 31 00000000"), status(2)}};
    QTest::newRow("delete-too-short") << Dialogue{{hex("EAC5000004 31 000001"), status(2)}};
    QTest::newRow("delete-twice") << Dialogue{{hex("EAC5000005 31 0000000C"), status(0)},
                                              {hex("EAC5000005 31 0000000C"), status(21)}};
    QTest::newRow("features-of-unknown") << Dialogue{{hex("EAC5000005 34 00000007"), status(21)}};
    QTest::newRow("import-unknown") << Dialogue{{import("00 00000007", 10240), status(21)}};
    QTest::newRow("import-short") << Dialogue{{import("00 00000001", 10239), status(2)}};
    QTest::newRow("import-long") << Dialogue{{import("00 00000001", 10241), status(2)}};
    QTest::newRow("import-kind-1") << Dialogue{{import("01 00000001", 10240), status(2)}};
    QTest::newRow("import-to-full") << Dialogue{{import("00 00000004", 10240), status(22)},
                                                {hex("EAC5000005 34 00000004"), status(0)},
                                                {import("00 00000004", 10240), status(0)}};
    QTest::newRow("enroll-unknown") << Dialogue{{hex("EAC5000006 04 01 000000FF"), status(21)}};
    QTest::newRow("enroll-full") << Dialogue{{hex("EAC5000006 04 01 00000004"), status(24)}};
    QTest::newRow("enroll-nobody") << Dialogue{{hex("EAC5000002 04 01"), status(2)},
                                               {hex("EAC5000002 04 06"), status(2)},
                                               {hex("EAC5000006 04 01 00000000"), status(2)},
                                               {hex("EAC5000006 04 03 00000001"), status(2)},
                                               {hex("EAC5000001 05"), status(3)}};
    QTest::newRow("nothing-enrolled") << Dialogue{{hex("EAC5000006 27 00000000 00"), status(2)},
                                                  {hex("EAC5000006 27 000000FF 00"), status(2)},
                                                  {hex("EAC5000005 28 000000FF"), status(2)}};
    QTest::newRow("no-such-month") << Dialogue{{hex("EAC5000004 41 07EA 00"), status(2)},
                                               {hex("EAC5000004 41 07EA 0D"), status(2)},
                                               {hex("EAC5000008 43 07EA 0D 00000000"), status(2)},
                                               {hex("EAC5000003 41 07EA"), status(2)}};
    const QByteArray code = addCode("note", Times, "QR-1");
    QTest::newRow("add-code") << Dialogue{
        {hex("EAC5000001 61"), status(0)},
        {addCode("\xE4\xBF\x9D", Times, "Q\"1"), status(0)},
        {hex("EAC5000001 63"),
         hex("EAC5000063 00") +
             "{\"qrcode data\":[{\"QR\":\"Q\\\"1\",\"et\":\"2100-01-31 23:59:59\","
             "\"name\":\"\xE4\xBF\x9D\",\"st\":\"2023-08-14 09:05:00\"}]}"}};
    QTest::newRow("add-known-code") << Dialogue{{code, status(0)}, {code, status(31)}};
    QTest::newRow("add-code-to-full")
        << Dialogue{{code, status(0)}, {addCode("note", Times, "QR-2"), status(30)}};
    QTest::newRow("empty-code") << Dialogue{{addCode("", Times, "QR"), status(2)},
                                            {addCode("note", Times, ""), status(2)}};
    QTest::newRow("bad-times") << Dialogue{
        {addCode("n", "1417080E090500 1417080E090500", "QR"), status(2)},  // none between
        {addCode("n", "1417080E090500 1500021E173B3B", "QR"), status(2)},  // February 30
        {addCode("n", "1417080E180500 1500011F173B3B", "QR"), status(2)},  // 24 o'clock
        {addCode("n", "1364080E090500 1500011F173B3B", "QR"), status(2)}}; // year 100 of 19
    QTest::newRow("remove-code") << Dialogue{{code, status(0)},
                                             {removeCode(2, "note"), status(32)},
                                             {removeCode(1, "QR-1"), status(32)},
                                             {removeCode(2, "QR"), status(32)},
                                             {removeCode(2, "QR-1"), status(0)},
                                             {code, status(0)},
                                             {removeCode(1, "note"), status(0)},
                                             {removeCode(1, "note"), status(32)}};
    QTest::newRow("remove-long-code")
        << Dialogue{{addCode("n", Times, QByteArray(33, 'x')), status(0)},
                    {removeCode(2, QByteArray(32, 'x')), status(32)},
                    {addCode("m", Times, QByteArray(32, 'x')), status(30)},
                    {removeCode(1, "n"), status(0)},
                    {addCode("m", Times, QByteArray(32, 'x')), status(0)},
                    {removeCode(2, QByteArray(32, 'x')), status(0)}};
    QTest::newRow("remove-by-what") << Dialogue{{removeCode(0, "note"), status(2)},
                                                {removeCode(3, "note"), status(2)},
                                                {removeCode(1, ""), status(2)}};
}

void TestSimulatorRules::dialogues()
{
    QFETCH(Dialogue, dialogue);
    SimClient client(m_port);
    for (const auto &exchange : qAsConst(dialogue))
        QCOMPARE(client.ask(exchange.first), exchange.second);
}

void TestSimulatorRules::importedFeaturesCount()
{
    SimClient client(m_port);
    QCOMPARE(featuresOf(client, "8"), QString("0,0"));
    for (int i = 0; i < 6; ++i)
        QCOMPARE(client.ask(import("00 00000008", 10240)), status(0));
    QCOMPARE(client.ask(import("00 00000008", 10240)), status(22));
    QCOMPARE(featuresOf(client, "8"), QString("6,6"));
}

void TestSimulatorRules::enrollmentKeepsBusy_data()
{
    QTest::addColumn<QByteArray>("start");
    QTest::addColumn<int>("mode");
    QTest::newRow("local") << hex("EAC5000006 04 01 00000003") << 1;
    QTest::newRow("remote") << hex("EAC5000006 04 06 FFFFFFFF") << 6;
}

void TestSimulatorRules::enrollmentKeepsBusy()
{
    QFETCH(QByteArray, start);
    QFETCH(int, mode);
    SimClient client(m_port);
    QCOMPARE(client.ask(start), status(0));
    QCOMPARE(client.ask(hex("EAC5000001 05")), status(mode));
    for (const QByteArray &change :
         {hex("EAC5000006 04 01 00000003"), hex("EAC5000006 04 06 000000FF"), hex("EAC5000001 0E"),
          addUser("00000009 00000000", "A"), hex("EAC5000005 31 00000001"),
          hex("EAC5000005 34 00000001"), import("00 00000001", 10240)})
        QCOMPARE(client.ask(change), status(1));
    QCOMPARE(client.ask(hex("EAC5000006 04 01 00000000")), status(2));
    QCOMPARE(client.ask(hex("EAC5000006 04 05 00000003")), status(2));
    QSignalSpy told(&m_terminal->device(), SIGNAL(happened(QString)));
    QCOMPARE(client.ask(hex("EAC5000002 0404")), status(0));
    QVERIFY(told.at(0).at(0).toString().endsWith("cancelled"));
    QCOMPARE(client.ask(hex("EAC5000001 05")), status(4));
    QCOMPARE(client.ask(hex("EAC5000005 28 FFFFFFFF")), status(2));
    QCOMPARE(featuresOf(client, "3"), QString("3,3"));
    QCOMPARE(client.ask(hex("EAC5000001 0E")), status(0));
}

void TestSimulatorRules::localEnrollment()
{
    start(20);
    SimClient client(m_port);
    QSignalSpy told(&m_terminal->device(), SIGNAL(happened(QString)));
    QCOMPARE(client.ask(hex("EAC5000006 04 01 00000003")), status(0));
    QTRY_COMPARE(client.ask(hex("EAC5000001 05")), status(3));
    QStringList lines;
    for (const QList<QVariant> &line : qAsConst(told))
        lines.append(line.at(0).toString());
    QCOMPARE(lines.filter("place the palm over the sensor").size(), 1);
    QCOMPARE(lines.filter("palm image ").size(), 5);
    QCOMPARE(lines.last(), QString("user 3 enrolled"));
    QCOMPARE(featuresOf(client, "3"), QString("6,6"));
    QCOMPARE(client.ask(hex("EAC5000006 27 00000003 00")), status(2));
}

void TestSimulatorRules::remoteEnrollment()
{
    QByteArray before;
    for (int terminal = 0; terminal < 2; ++terminal) {
        start(20);
        SimClient client(m_port);
        QCOMPARE(client.ask(hex("EAC5000006 04 06 000000FF")), status(0));
        QTRY_COMPARE(client.ask(hex("EAC5000001 05")), status(3));
        QSet<QByteArray> frames;
        for (char index = 0; index < 5; ++index) {
            const QByteArray pair = client.ask(hex("EAC5000006 27 000000FF") + index);
            QCOMPARE(pair.size(), 777606);
            QCOMPARE(pair.left(6), hex("EAC50BDD81 00"));
            frames << pair.mid(6, 388800) << pair.mid(388806);
        }
        QCOMPARE(frames.size(), 10);
        QCOMPARE(client.ask(hex("EAC5000006 27 000000FF 05")), status(2));
        QCOMPARE(client.ask(hex("EAC5000006 27 000000FE 00")), status(2));
        const QByteArray features = client.ask(hex("EAC5000005 28 000000FF"));
        QCOMPARE(features.size(), 10246);
        QVERIFY(before.isEmpty() || before == features);
        before = features;
    }
}

void TestSimulatorRules::remotePairsOutliveALocalEnrollment()
{
    start(20);
    SimClient client(m_port);
    for (const char *enroll : {"EAC5000006 04 06 00000003", "EAC5000006 04 01 00000008"}) {
        QCOMPARE(client.ask(hex(enroll)), status(0));
        QTRY_COMPARE(client.ask(hex("EAC5000001 05")), status(3));
    }
    QCOMPARE(featuresOf(client, "3") + ' ' + featuresOf(client, "8"), QString("6,6 3,3"));
    QCOMPARE(client.ask(hex("EAC5000006 27 00000003 00")).size(), 777606);
    QCOMPARE(client.ask(hex("EAC5000006 27 00000008 00")), status(2));
}

void TestSimulatorRules::recordPages()
{
    SimClient client(m_port);
    const QJsonArray files = client.askJson("EAC500000140")["record_files"].toArray();
    QCOMPARE(files.size(), 6);
    const QString month = files.last().toString(); // record_2026_11.dat
    QByteArray address = hex("0000 00");
    address[0] = static_cast<char>(month.mid(7, 4).toInt() >> 8);
    address[1] = static_cast<char>(month.mid(7, 4).toInt());
    address[2] = static_cast<char>(month.mid(12, 2).toInt());
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

void TestSimulatorRules::listsStayBelowTheWait()
{
    sim::TerminalOptions options;
    options.maxUsers = 10000;
    options.maxQrCodes = 2000;
    start(options);
    sim::State &state = m_terminal->device().state;
    state.users.clear();
    for (quint32 id = 10000; id < 10000 + 7406; ++id)
        state.users[id] = {id, id, QString(32, 'u'), QString(), 3, 3};
    state.qrCodes = QVector<sim::QrCode>(
        1061, {"note", QString(500, 'q'), state.records.until, state.records.until});
    SimClient client(m_port);
    const QByteArray name(31, 'u');
    QCOMPARE(client.ask(addUser("00002000 00002000", name)), status(0));
    QCOMPARE(client.ask(addUser("00002001 00002001", name)), status(22));
    const QByteArray users = client.ask(hex("EAC5000001 10"));
    QVERIFY(users.size() <= 800000 && users.size() > 790000 && users.endsWith("}]}"));
    QCOMPARE(client.ask(addCode("note", Times, QByteArray(500, 'r'))), status(0));
    QCOMPARE(client.ask(addCode("note", Times, QByteArray(500, 's'))), status(30));
    const QByteArray codes = client.ask(hex("EAC5000001 63"));
    QVERIFY(codes.size() <= 614400 && codes.size() > 613000 && codes.endsWith("}]}"));
}

void TestSimulatorRules::longTextsAreCutAtCharacters()
{
    QCOMPARE(sim::textField(QString(40, QChar(0x7814)), 32),
             hex("E7A094").repeated(10) + hex("0000"));
    QCOMPARE(sim::textField(QString(32, 'x'), 32), QByteArray(31, 'x') + '\0');
}

void TestSimulatorRules::userList()
{
    SimClient client(m_port);
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

QTEST_GUILESS_MAIN(TestSimulatorRules)
#include "tst_simulator_rules.moc"
