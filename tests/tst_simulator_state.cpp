#include "simulator/terminal.h"
#include "tests/simclient.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

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

private:
    /// A terminal that keeps its state in the file; nullptr, with the reason, when it does not.
    std::unique_ptr<sim::Terminal> start(QString *error = nullptr) const;

    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_path;
};

void TestSimulatorState::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_path = m_directory->filePath("state.json");
}

std::unique_ptr<sim::Terminal> TestSimulatorState::start(QString *error) const
{
    QString reason;
    auto terminal = std::make_unique<sim::Terminal>();
    const bool kept = terminal->keepState(m_path, &reason);
    if (error)
        *error = reason;
    const bool listens = kept && terminal->listen(QHostAddress::LocalHost, 0);
    return listens ? std::move(terminal) : nullptr;
}

void TestSimulatorState::everyChangeSurvives()
{
    const QByteArray code = QByteArray("note").leftJustified(32, '\0') +
                            hex("1417080E090500 1500011F173B3B") +
                            QByteArray("QR \"1\"").leftJustified(512, '\0');
    const QVector<QByteArray> changes{
        hex("EAC5000005 31 00000002"),
        request(0x30,
                hex("FFFFFFFF FFFFFFFE") + QByteArray("\xE7\x8E\x8B").leftJustified(64, '\0')),
        request(0x2A, hex("00 00000008") + QByteArray(10240, 'x')),
        hex("EAC5000002 0404"),
        hex("EAC5000003 0A03E3"),
        hex("EAC5000007 07 3D0203040506"),
        request(0x50, QByteArray("KV2403abcDEF789", 16)),
        request(0x15, "{\"recg mode\":3}"),
        request(0x19, "{\"dev info\":{\"dev notes\":\"\xE4\xB8\x9C \\\\ \\u0001\"}}"),
        request(0x1B, "{\"data block\":{\"sys mode\":10}}"),
        request(0x60, code),
    };
    const auto everything = [](quint16 port) {
        SimClient client(port);
        QVector<QByteArray> replies;
        for (const char *read : {"05", "0B", "10", "16", "17", "18", "1A", "40", "63"})
            replies.append(client.ask(hex("EAC5000001") + hex(read)));
        // The month before this one.
        const QDate month = QDate::currentDate().addMonths(-1);
        QByteArray page = hex("0000 00 00000000");
        page[0] = static_cast<char>(month.year() >> 8);
        page[1] = static_cast<char>(month.year());
        page[2] = static_cast<char>(month.month());
        replies.append(client.ask(request(0x43, page)));
        return replies;
    };
    auto terminal = start();
    QVERIFY(terminal);
    const QVector<QByteArray> fresh = everything(terminal->port());
    SimClient client(terminal->port());
    for (const QByteArray &change : changes)
        QCOMPARE(client.ask(change), hex("EAC5000001 00"));
    const QVector<QByteArray> changed = everything(terminal->port());
    for (int i = 0; i < fresh.size(); ++i)
        QCOMPARE(changed.at(i) == fresh.at(i), i == 7 || i == 9); // all but the records

    terminal.reset();
    terminal = start();
    QVERIFY(terminal);
    QCOMPARE(everything(terminal->port()), changed);
    SimClient later(terminal->port());
    QCOMPARE(later.ask(hex("EAC5000001 06")).left(8), hex("EAC5000006 3D0203"));
}

void TestSimulatorState::savedSoonAndWhole()
{
    const auto terminal = start();
    QVERIFY(contentOf(m_path).contains("Anna Keller"));
    SimClient client(terminal->port());
    client.ask(hex("EAC5000005 31 00000003"));
    client.ask(hex("EAC5000001 42"));
    QTRY_VERIFY(!contentOf(m_path).contains("Anna Keller"));
    QVERIFY(contentOf(m_path).contains("\"months\":[]"));
    QVERIFY(contentOf(m_path).endsWith("}\n"));
    QCOMPARE(QDir(m_directory->path()).entryList(QDir::Files),
             QStringList({"state.json", "state.json.lock"}));
    QString error;
    QVERIFY(!start(&error));
    QCOMPARE(error, "Cannot use " + m_path + ": another program keeps its state there");
}

void TestSimulatorState::foreignFilesAreRefused_data()
{
    QTest::addColumn<QByteArray>("from"); // empty: the whole file
    QTest::addColumn<QByteArray>("to");
    QTest::addColumn<QString>("reason");
    const QString notJson = QStringLiteral("not a JSON object");
    QTest::newRow("empty") << QByteArray() << QByteArray() << notJson;
    QTest::newRow("comment") << QByteArray("}\n") << QByteArray("} // boom\n") << notJson;
    QTest::newRow("cut") << QByteArray("}\n") << QByteArray() << notJson;
    QTest::newRow("nested-deeply") << QByteArray() << QByteArray(20000, '[') << notJson;
    QTest::newRow("other-object") << QByteArray() << QByteArray("{\"name\":1}") << "\"format\"";
    QTest::newRow("format-no-text")
        << QByteArray() << QByteArray("{\"format\":[]}") << "\"format\"";
    const auto row = [](const char *name, const char *from, const char *to, const char *member) {
        QTest::newRow(name) << QByteArray(from) << QByteArray(to)
                            << QStringLiteral("\"%1\"").arg(member);
    };
    QTest::newRow("too-long") << QByteArray() << QByteArray(64'000'001, ' ') << "too long";
    QTest::newRow("too-many-users")
        << QByteArray("\"users\":[") << "\"users\":[" + QByteArray("{},").repeated(3000)
        << "3008 users, more than --max-users 3000";
    row("name-of-two-lines", "Anna Keller", "Anna\\nKeller", "name");
    row("no-clock", "\"clock offset\"", "\"clock\"", "clock offset");
    row("newer", "state 1", "state 2", "format");
    row("mode-enroll", "\"mode\":3", "\"mode\":1", "mode");
    row("mode-text", "\"mode\":3", "\"mode\":\"3\"", "mode");
    row("bias-64536", "\"sensor bias\":12", "\"sensor bias\":64536", "sensor bias");
    row("bias-huge", "\"sensor bias\":12", "\"sensor bias\":99999999999999999999", "sensor bias");
    row("serial-short", "KV2601SIM", "KV", "serial number");
    row("users-no-list", "\"users\":[{", "\"users\":{},\"was\":[{", "users");
    row("users-numbers", "\"users\":[{", "\"users\":[1,{", "users");
    row("user-0", "\"id\":1,", "\"id\":0,", "id");
    row("user-twice", "\"id\":1,", "\"id\":2,", "users");
    row("user-without-name", "\"name\":\"Anna", "\"mane\":\"Anna", "name");
    row("name-33-bytes", "Anna Keller", "123456789012345678901234567890123", "name");
    QTest::newRow("name-not-utf-8")
        << QByteArray("Anna Keller") << QByteArray("Ann\xFF") << notJson;
    row("too-many-features", "\"vein features\":6", "\"vein features\":7", "print features");
    row("features-negative", "\"vein features\":6", "\"vein features\":-1", "vein features");
    row("code-twice", "KV-VISIT-7F31C2", "KV-CLEAN-0042", "qr codes");
    row("code-empty", "KV-VISIT-7F31C2", "", "qr codes");
    row("code-time", "\"start\":\"2", "\"start\":\"x", "start");
    row("month-13", "\"month\":", "\"month\":13,\"was\":", "month");
    row("too-many-records", "\"count\":", "\"count\":200001,\"was\":", "count");
    row("no-seed", "\"seed\"", "\"eed\"", "seed");
    row("document-kind", "\"recg mode\":2", "\"recg mode\":\"2\"", "user");
    row("document-more", "\"recg mode\":2", "\"recg mode\":2,\"more\":1", "user");
    row("document-less", "\"recg mode\":2,", "", "user");
    row("documents-none", "\"documents\":{", "\"documents\":[],\"was\":{", "documents");
}

void TestSimulatorState::foreignFilesAreRefused()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QFETCH(QString, reason);
    start().reset();
    QByteArray text = contentOf(m_path);
    if (from.isEmpty()) {
        text = to;
    } else {
        const int place = text.indexOf(from);
        QVERIFY(place >= 0);
        text.replace(place, from.size(), to);
    }
    write(m_path, text);
    QString error;
    QVERIFY(!start(&error));
    QVERIFY2(error.startsWith("Cannot use " + m_path) && error.endsWith(reason), qPrintable(error));
    QCOMPARE(contentOf(m_path), text);
}

void TestSimulatorState::placesWithoutAFileAreRefused()
{
    QString error;
    m_path = m_directory->path();
    QVERIFY(!start(&error));
    QVERIFY2(error.startsWith("Cannot use " + m_path), qPrintable(error));
    m_path += "/none/state.json";
    QVERIFY(!start(&error));
    QVERIFY2(error.startsWith("Cannot write " + m_path), qPrintable(error));
}

QTEST_GUILESS_MAIN(TestSimulatorState)
#include "tst_simulator_state.moc"
