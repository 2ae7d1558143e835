#include "tests/simclient.h"

#include <QJsonArray>
#include <QtTest>

namespace {

using Dialogue = QVector<QPair<QByteArray, QByteArray>>; // requests and replies

QByteArray import(const char *kindAndId, int size = 10240)
{
    return request(0x2A, hex(kindAndId) + QByteArray(size, '\x7F'));
}

QByteArray removeCode(int selector, const QByteArray &key)
{
    return request(0x62, QByteArray(1, static_cast<char>(selector)) + key.leftJustified(32, '\0'));
}

// From 2023-08-14 09:05:00 to 2100-01-31 23:59:59.
constexpr const char *Times = "1417080E090500 1500011F173B3B";

/// The terminal holds eight users of nine, and three QR codes of four.
sim::TerminalOptions small(int enrollMs = 60000)
{
    sim::TerminalOptions options;
    options.maxUsers = 9;
    options.maxQrCodes = 4;
    options.enrollMs = enrollMs;
    return options;
}

/// "vein,print" of a user in the list.
QString featuresOf(SimClient &client, const QString &id)
{
    const QJsonArray users = client.askJson("EAC5000001 10")["user_list"].toArray();
    for (const QJsonValue &user : users)
        if (user["id"].toString() == id)
            return QStringLiteral("%1,%2")
                .arg(user["vein_cnt"].toInt())
                .arg(user["print_cnt"].toInt());
    return {};
}

} // namespace

/// Users, enrollments, QR codes, and what is left when everything was cleared.
class TestSimulatorRules : public QObject
{
    Q_OBJECT
private slots:
    void dialogues_data();
    void dialogues();
    void enrollmentKeepsBusy();
    void enrollments();
    void recognisesInItsModesOnly();
    void importReplaces();
    void listsStayBelowTheWait();
    void longTextsAreCutAtCharacters();
};

void TestSimulatorRules::dialogues_data()
{
    QTest::addColumn<Dialogue>("dialogue");
    const auto row = [](const char *name, const Dialogue &dialogue) {
        QTest::newRow(name) << dialogue;
    };
    row("mode", {{hex("EAC5000002 0404"), status(0)},
                 {hex("EAC5000002 0402"), status(2)},
                 {hex("EAC5000001 04"), status(2)},
                 {hex("EAC5000001 05"), status(4)}});
    row("sensor-bias", {{hex("EAC5000003 0A03E3"), status(0)},
                        {hex("EAC5000002 0A03"), status(2)},
                        {hex("EAC5000001 0B"), hex("EAC5000002 03E3")}});
    row("all-cleared", {{hex("EAC5000001 0E"), status(0)},
                        {hex("EAC5000001 33"), hex("EAC5000005 00 00000001")},
                        {hex("EAC5000001 10"), hex("EAC5000011 00") + "{\"user_list\":[]}"},
                        {hex("EAC5000001 42"), status(0)},
                        {hex("EAC5000001 40"), hex("EAC5000014 00") + "{\"record_files\":[]}"},
                        {hex("EAC5000001 61"), status(0)},
                        {hex("EAC5000001 63"), hex("EAC5000013 00") + "{\"qrcode data\":[]}"}});
    const QByteArray name32 = QByteArray(30, 'n') + hex("C3A9"); // fills its field
    row("add-user", {{hex("EAC5000001 0E"), status(0)},
                     {addUser("01020304 0A0B0C0D", name32), status(0)},
                     {hex("EAC5000001 10"),
                      hex("EAC5000082 00") +
                          "{\"user_list\":[{\"card_id\":\"168496141\",\"id\":\"16909060\","
                          "\"print_cnt\":0,\"user_name\":\"" +
                          name32 + "\",\"vein_cnt\":0}]}"}});
    row("add-no-user", {{addUser("00000001 00000000", "known"), status(20)},
                        {addUser("00000000 00000000", "no ID"), status(2)},
                        {addUser("00000009 00000000", "not UTF-8 \xC3"), status(2)},
                        {addUser("00000009 00000000", "two\nlines"), status(2)},
                        {addUser("00000009 00000000", QByteArray(32, 'n') + "\x7F"), status(2)},
                        {request(0x30, hex("00000009") + QByteArray(67, '\0')), status(2)}});
    row("add-to-full", {{hex("EAC5000001 33"), hex("EAC5000005 00 00000007")},
                        {addUser("00000009 00000000", "Nine"), status(0)},
                        {addUser("0000000A 00000000", "Ten"), status(22)},
                        {addUser("00000009 00000000", "Nine"), status(20)},
                        {hex("EAC5000001 33"), status(22)},
                        {hex("EAC5000005 31 00000001"), status(0)},
                        {hex("EAC5000001 33"), hex("EAC5000005 00 00000001")}});
    row("delete", {{hex("EAC5000005 31 0000000C"), status(0)},
                   {hex("EAC5000005 31 0000000C"), status(21)},
                   {hex("EAC5000005 31 00000000"), status(2)},
                   {hex("EAC5000004 31 000001"), status(2)},
                   {hex("EAC5000005 34 0000000C"), status(21)}});
    row("import", {{import("00 00000007"), status(21)},
                   {import("00 00000001", 10239), status(2)},
                   {import("00 00000001", 10241), status(2)},
                   {import("01 00000001"), status(2)},
                   {import("00 00000004"), status(22)},
                   {hex("EAC5000005 34 00000004"), status(0)},
                   {import("00 00000004"), status(0)}});
    Dialogue imports(6, {import("00 00000008"), status(0)}); // each takes two of twelve places
    imports.append({import("00 00000008"), status(22)});
    row("import-until-full", imports);
    row("enroll-nobody", {{hex("EAC5000002 04 01"), status(2)},
                          {hex("EAC5000002 04 06"), status(2)},
                          {hex("EAC5000006 04 01 00000000"), status(2)},
                          {hex("EAC5000006 04 03 00000001"), status(2)},
                          {hex("EAC5000006 04 01 000000FF"), status(21)},
                          {hex("EAC5000006 04 01 00000004"), status(24)},
                          {hex("EAC5000006 27 00000000 00"), status(2)},
                          {hex("EAC5000005 28 000000FF"), status(2)},
                          {hex("EAC5000001 05"), status(3)}});
    row("no-such-month", {{hex("EAC5000004 41 07EA 00"), status(2)},
                          {hex("EAC5000004 41 07EA 0D"), status(2)},
                          {hex("EAC5000008 43 07EA 0D 00000000"), status(2)},
                          {hex("EAC5000003 41 07EA"), status(2)}});
    const QByteArray code = addCode("note", Times, "QR-1");
    row("add-code", {{hex("EAC5000001 61"), status(0)},
                     {addCode("\xE4\xBF\x9D", Times, "Q\"1"), status(0)},
                     {hex("EAC5000001 63"),
                      hex("EAC5000063 00") +
                          "{\"qrcode data\":[{\"QR\":\"Q\\\"1\",\"et\":\"2100-01-31 23:59:59\","
                          "\"name\":\"\xE4\xBF\x9D\",\"st\":\"2023-08-14 09:05:00\"}]}"}});
    row("add-code-to-full",
        {{code, status(0)}, {code, status(31)}, {addCode("note", Times, "QR-2"), status(30)}});
    row("add-no-code",
        {{addCode("", Times, "QR"), status(2)},
         {addCode("note", Times, ""), status(2)},
         {addCode("n\r", Times, "QR"), status(2)},
         {addCode("n", "1417080E090500 1417080E090500", "no time between"), status(2)},
         {addCode("n", "1417080E090500 1500021E173B3B", "February 30"), status(2)},
         {addCode("n", "1417080E180500 1500011F173B3B", "24 o'clock"), status(2)},
         {addCode("n", "1364080E090500 1500011F173B3B", "year 100 of a century"), status(2)}});
    row("remove-code", {{code, status(0)},
                        {removeCode(2, "note"), status(32)},
                        {removeCode(1, "QR-1"), status(32)},
                        {removeCode(2, "QR"), status(32)},
                        {removeCode(0, "note"), status(2)},
                        {removeCode(3, "note"), status(2)},
                        {removeCode(1, ""), status(2)},
                        {removeCode(2, "QR-1"), status(0)},
                        {code, status(0)},
                        {removeCode(1, "note"), status(0)},
                        {removeCode(1, "note"), status(32)}});
    row("remove-long-code", {{addCode("n", Times, QByteArray(33, 'x')), status(0)},
                             {removeCode(2, QByteArray(32, 'x')), status(32)},
                             {removeCode(1, "n"), status(0)},
                             {addCode("m", Times, QByteArray(32, 'x')), status(0)},
                             {removeCode(2, QByteArray(32, 'x')), status(0)}});
}

void TestSimulatorRules::dialogues()
{
    QFETCH(Dialogue, dialogue);
    const SimTerminal terminal(small());
    SimClient client(terminal);
    for (const auto &exchange : qAsConst(dialogue))
        QCOMPARE(client.ask(exchange.first), exchange.second);
}

void TestSimulatorRules::enrollmentKeepsBusy()
{
    for (const QByteArray &start :
         {hex("EAC5000006 04 01 00000003"), hex("EAC5000006 04 06 FFFFFFFF")}) {
        SimTerminal terminal(small());
        SimClient client(terminal);
        QCOMPARE(client.ask(start), status(0));
        QCOMPARE(client.ask(hex("EAC5000001 05")), status(at(start, 6)));
        for (const QByteArray &change :
             {hex("EAC5000006 04 01 00000001"), hex("EAC5000006 04 06 000000FF"),
              hex("EAC5000001 0E"), addUser("00000009 00000000", "A"),
              hex("EAC5000005 31 00000001"), hex("EAC5000005 34 00000001"), import("00 00000001")})
            QCOMPARE(client.ask(change), status(1));
        QCOMPARE(client.ask(hex("EAC5000006 04 01 00000000")), status(2));
        QCOMPARE(client.ask(hex("EAC5000006 04 05 00000003")), status(2));
        QSignalSpy spy(&terminal.device(), SIGNAL(happened(QString)));
        const bool local = at(start, 6) == 1; // begins anew for the same user
        QCOMPARE(client.ask(start), status(local ? 0 : 1));
        QCOMPARE(client.ask(hex("EAC5000006 04 06 00000003")), status(1));
        QCOMPARE(client.ask(hex("EAC5000002 0404")), status(0));
        QCOMPARE(spy.at(0).at(0).toString().endsWith("place the palm over the sensor"), local);
        QVERIFY(spy.at(local).at(0).toString().endsWith("cancelled"));
        QCOMPARE(client.ask(hex("EAC5000001 05")), status(4));
        QCOMPARE(client.ask(hex("EAC5000005 28 FFFFFFFF")), status(2));
        QCOMPARE(featuresOf(client, "3"), QString("3,3"));
        QCOMPARE(client.ask(hex("EAC5000001 0E")), status(0));
    }
}

void TestSimulatorRules::enrollments()
{
    QSet<QByteArray> features;
    for (int round = 0; round < 2; ++round) {
        SimTerminal terminal(small(20));
        SimClient client(terminal);
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
        features << client.ask(hex("EAC5000005 28 000000FF"));
        QCOMPARE(features.constBegin()->size(), 10246);

        QSignalSpy spy(&terminal.device(), SIGNAL(happened(QString)));
        QCOMPARE(client.ask(hex("EAC5000006 04 01 00000003")), status(0));
        QTRY_COMPARE(client.ask(hex("EAC5000001 05")), status(3));
        QStringList lines;
        for (const QList<QVariant> &line : qAsConst(spy))
            lines.append(line.at(0).toString());
        QCOMPARE(lines.filter("place the palm over the sensor").size(), 1);
        QCOMPARE(lines.filter("palm image ").size(), 5);
        QCOMPARE(lines.filter(QRegularExpression("^user 3 enrolled$")).size(), 1);
        QCOMPARE(featuresOf(client, "3"), QString("6,6"));
        QCOMPARE(client.ask(hex("EAC5000006 27 00000003 00")), status(2));
        QCOMPARE(client.ask(hex("EAC5000006 27 000000FF 00")).size(), 777606);
    }
    QCOMPARE(features.size(), 1); // the same from terminals of one seed
}

void TestSimulatorRules::recognisesInItsModesOnly()
{
    sim::Device device({});
    for (const DeviceMode mode : {DeviceMode::LocalRecognition, DeviceMode::Idle,
                                  DeviceMode::RemoteRecognition, DeviceMode::Enroll}) {
        if (!device.setMode(static_cast<quint8>(mode)))
            device.startEnrollment(mode, 1);
        QRandomGenerator random(1);
        QString told;
        for (int i = 0; i < 100; ++i)
            told += sim::chatLine(device, random);
        const bool recognises = mode != DeviceMode::Idle && mode != DeviceMode::Enroll;
        QCOMPARE(told.contains("recognised"), recognises);
        QCOMPARE(told.contains("relay"), recognises);
        QVERIFY(told.contains("heartbeat"));
    }
}

void TestSimulatorRules::importReplaces()
{
    sim::TerminalOptions options;
    options.importReplaces = true;
    SimTerminal terminal(options);
    SimClient client(terminal);
    for (int i = 0; i < 2; ++i)
        QCOMPARE(client.ask(import("00 00000004")), status(0));
    QCOMPARE(featuresOf(client, "4"), QString("1,1"));
    const sim::User &user = terminal.device().state.users.at(4);
    QCOMPARE(user.features, QByteArray(10240, '\x7F'));
    QCOMPARE(client.ask(hex("EAC5000005 34 00000004")), status(0));
    QVERIFY(user.features.isEmpty());
}

void TestSimulatorRules::listsStayBelowTheWait()
{
    sim::TerminalOptions options;
    options.maxUsers = 10000;
    options.maxQrCodes = 2000;
    SimTerminal terminal(options);
    sim::State &state = terminal.device().state;
    state.users.clear();
    for (quint32 id = 10000; id < 10000 + 7406; ++id)
        state.users[id] = {id, id, QString(32, 'u'), QString(), 3, 3};
    state.qrCodes = QVector<sim::QrCode>(
        1061, {"note", QString(500, 'q'), state.records.until, state.records.until});
    SimClient client(terminal);
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

QTEST_GUILESS_MAIN(TestSimulatorRules)
#include "tst_simulator_rules.moc"
