#include "dialogs/accessrecorddlg.h"
#include "simulator/faults/fault.h"
#include "simulator/terminal.h"
#include "testkit/dialogrig.h"

#include <QDateEdit>
#include <QPushButton>
#include <QtTest>

Q_DECLARE_METATYPE(ScriptedPeer::Exchange)

class TestRecords : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { clear(folder()); }
    void showsAPage_data();
    void showsAPage();
    void listsTheFiles_data();
    void listsTheFiles();
    void exportsAMonth_data();
    void exportsAMonth();
    void exportsUtf8Only();
    void keepsTheOldFile_data();
    void keepsTheOldFile();
    void asksAgainForARepeatedPage();
    void keepsALongerFile();
    void removes();
    void reachesEveryMonth_data();
    void reachesEveryMonth();

private:
    static QDir folder() { return QCoreApplication::applicationDirPath(); }
    static void clear(const QDir &folder)
    {
        for (const QFileInfo &entry : folder.entryInfoList({"record_*"}))
            entry.isDir() ? QDir(entry.filePath()).removeRecursively()
                          : QFile::remove(entry.filePath());
    }
};

namespace {

// A month with one digit that can be chosen on any day of the year.
const QDate Month(QDate::currentDate().year(), 3, 5);
const QByteArray Ok = hex("EAC5 000001 00");

QByteArray record(int type, const QByteArray &first, const QByteArray &second,
                  const QByteArray &third, const QByteArray &fourth)
{
    return QByteArray(1, static_cast<char>(type)) + "\xEE\xEE\xEE" + first.leftJustified(16, '\0') +
           second.leftJustified(16, '\0') + third.leftJustified(32, '\0') +
           fourth.leftJustified(32, '\0');
}

QByteArray bigEndian(quint32 number, int width)
{
    QByteArray bytes;
    while (--width >= 0)
        bytes.append(static_cast<char>(number >> (8 * width)));
    return bytes;
}

QByteArray monthRequest(const char *code, const QDate &month)
{
    return hex(code) + bigEndian(static_cast<quint32>(month.year()), 2) +
           static_cast<char>(month.month());
}

QByteArray pageRequest(quint32 start)
{
    return hex("EAC5 000008") + monthRequest("43", Month) + bigEndian(start, 4);
}

QByteArray page(const QList<QByteArray> &records)
{
    return head(3 + 100 * records.size()) + '\0' +
           bigEndian(static_cast<quint32>(records.size()), 2) + records.join();
}

QString exportPath()
{
    return QCoreApplication::applicationDirPath() +
           QString("/record_%1_%2.txt").arg(Month.year()).arg(Month.month());
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
}

struct RecordRig : DialogRig
{
    RecordRig()
        : DialogRig(makeDialog<AccessRecordDlg>)
    {
        find<QDateEdit>("dateEdit")->setDate(Month);
    }
};

} // namespace

void TestRecords::showsAPage_data()
{
    QTest::addColumn<QList<QByteArray>>("records");
    QTest::addColumn<QStringList>("lines");
    const auto row = [](const char *tag, const QList<QByteArray> &records,
                        const QStringList &lines) { QTest::newRow(tag) << records << lines; };
    row("none", {}, {});
    row("types",
        {record(0, "2026-11-01", "09:05:00", "张三", "Lab"), record(1, "a", "b", "c", "d"),
         record(255, "", "", "", ""), record(2, "a", "b", "c", "d")},
        {"Index0: (2026-11-01, 09:05:00, Palm, 张三, Lab)", "Index1: (a, b, Card, c, d)",
         "Index2: (, , , , )", "Index3: (a, b, , c, d)"});
    row("literal", {record(0, "<b>1</b>", "%1 %2", "ab", "&lt;%3")},
        {"Index0: (<b>1</b>, %1 %2, Palm, ab, &lt;%3)"});
    row("control-characters",
        {record(0, "a\nIndex1: (b", "\x1B[2K\r", "\t\x7F\xC2\x85", "\xE2\x80\xA8\xE2\x80\xA9")},
        {QString("Index0: (a%1Index1: (b, %1[2K%1, Palm, %1%1%1, %1%1)").arg(QChar(0xFFFD))});
    row("behind-zero", {record(0, QByteArray("a\0b", 3), QByteArray("\0c", 2), "d", "e")},
        {"Index0: (a, , Palm, d, e)"});
    row("full-field", {record(0, QByteArray(16, 'a'), "b", "c", "d")},
        {"Index0: (aaaaaaaaaaaaaaaab, b, Palm, c, d)"});
    // The last field ends with the record, even without a zero.
    row("full-record",
        {record(0, QByteArray(16, '1'), QByteArray(16, '2'), QByteArray(32, '3'),
                QByteArray(32, '4')),
         record(1, "a", "b", "c", "d")},
        {"Index0: (" + QString(16, '1') + QString(16, '2') + QString(32, '3') + QString(32, '4') +
             ", " + QString(16, '2') + QString(32, '3') + QString(32, '4') + ", Palm, " +
             QString(32, '3') + QString(32, '4') + ", " + QString(32, '4') + ")",
         "Index1: (a, b, Card, c, d)"});
    row("no-utf-8", {record(0, "\xFF", "b", "c", "d")},
        {QString("Index0: (%1, b, Palm, c, d)").arg(QChar(0xFFFD))});
    QList<QByteArray> many;
    QStringList last;
    for (int i = 0; i < 150; ++i) {
        many << record(0, QByteArray::number(i), "b", "c", "d");
        if (i >= 50)
            last << QString("Index%1: (%1, b, Palm, c, d)").arg(i);
    }
    row("150", many, last);
}

void TestRecords::showsAPage()
{
    QFETCH(QList<QByteArray>, records);
    QFETCH(QStringList, lines);
    RecordRig rig;
    rig.peer.expect({pageRequest(0), {page(records)}});
    rig.click("readRecordBtnClickAct");
    const QStringList told{QString("The loaded data count：%1").arg(3 + 100 * records.size()),
                           QString("Record loaded：%1").arg(records.size())};
    QCOMPARE(rig.lines(), told + lines);

    rig.log.clear();
    rig.peer.expect({pageRequest(0), {hex("EAC5 000001 07")}});
    rig.click("readRecordBtnClickAct");
    QCOMPARE(rig.lines(), QStringList("Unknown error: 7"));
}

void TestRecords::listsTheFiles_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QStringList>("lines");
    const auto row = [](const char *tag, const QByteArray &document, const QStringList &lines) {
        QTest::newRow(tag) << document << lines;
    };
    const QStringList unreadable("json parsing failed.");
    row("files", R"({"record_files": ["record_2026_11.dat", "记录<b>%1"], "more": 1})",
        {"record_2026_11.dat", "记录<b>%1"});
    row("other-kinds", R"({"record_files": ["a", {}, ["b"], 7, "c"]})", {"a", "7", "c"});
    row("empty", R"({"record_files": []})", {});
    row("no-array", R"({"record_files": "a"})", {});
    row("absent", "{}", {});
    row("no-object", "[1]", unreadable);
    row("no-json", "record", unreadable);
    row("nothing", "", unreadable);
}

void TestRecords::listsTheFiles()
{
    QFETCH(QByteArray, document);
    QFETCH(QStringList, lines);
    RecordRig rig;
    rig.peer.expect({hex("EAC5 000001 40"), {head(document.size() + 1) + '\0' + document}});
    rig.click("getRecordFilesBtnClickAct");
    QCOMPARE(rig.lines(), QStringList(QString("Data loaded：%1").arg(document.size())) + lines);
}

void TestRecords::exportsAMonth_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("last"); ///< number of records in the last page
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QString>("complaint"); ///< expected error line; empty: none is required
    QTest::newRow("0") << 0 << 0 << ""
                       << "";
    QTest::newRow("150") << 150 << 150 << ""
                         << "";
    QTest::newRow("2999") << 2999 << 2999 << ""
                          << "";
    QTest::newRow("3000") << 3000 << 0 << ""
                          << "";
    QTest::newRow("3001") << 3001 << 1 << ""
                          << "";
    QTest::newRow("4500") << 4500 << 1500 << ""
                          << "";
    QTest::newRow("100000") << 100000 << 1000 << ""
                            << "";
    QTest::newRow("cut-short") << 6001 << 1 << "getMonthRecords:cut=299999,from=2,times=1"
                               << "Fail to accept ACK.";
    QTest::newRow("refused") << 6001 << 1 << "getMonthRecords:status=9,from=2,times=40"
                             << "Unknown error: 9";
    // On a busy machine the timeout may be longer than the delay.
    QTest::newRow("slow") << 3001 << 1 << "getMonthRecords:delay=1200"
                          << "";
    QTest::newRow("late") << 6001 << 1 << "getMonthRecords:late,from=2,times=1"
                          << "Fail to accept ACK.";
    QTest::newRow("doubled") << 6001 << 1 << "getMonthRecords:double=1"
                             << "";
    QTest::newRow("doubled-later") << 6001 << 1 << "getMonthRecords:double=4"
                                   << "";
    QTest::newRow("counts-too-many") << 6001 << 1 << "getMonthRecords:length=200003,from=2,times=1"
                                     << "Unknown error: 0";
}

void TestRecords::exportsAMonth()
{
    QFETCH(int, count);
    QFETCH(int, last);
    QFETCH(QString, fault);
    QFETCH(QString, complaint);
    sim::TerminalOptions options;
    if (!fault.isEmpty()) {
        sim::Fault parsed;
        QString error;
        QVERIFY2(sim::parseFault(fault, &parsed, &error), qPrintable(error));
        options.faults.faults << parsed;
    }
    sim::Terminal terminal(options);
    QVERIFY(terminal.listen(QHostAddress::LocalHost, 0));
    sim::RecordBook &book = terminal.device().state.records;
    const sim::Month month(Month.year(), Month.month());
    book.months = {{month, {count}}};

    RecordRig rig;
    rig.client.connectToDevice("127.0.0.1", terminal.port());
    rig.log.clear();
    rig.click("exportRecordBtnClickAct");
    const QStringList lines = rig.lines();
    QCOMPARE(lines.mid(lines.size() - 2), QStringList({QString("Record loaded：%1").arg(last),
                                                       "Record data saved to " + exportPath()}));
    QVERIFY(complaint.isEmpty() || lines.contains(complaint));

    const QByteArray content = contentOf(exportPath());
    QCOMPARE(content.count('\n'), count);
    QVERIFY(count == 0 || content.endsWith(")\n"));
    int i = 0;
    for (const QByteArray &line : content.split('\n').mid(0, count)) {
        const sim::AccessRecord expected = sim::recordAt(book, month, i);
        const QString text =
            QString("Index%1: (%2, %3, %4, %5, %6)")
                .arg(i)
                .arg(expected.time.toString("yyyy-MM-dd"), expected.time.toString("hh:mm:ss"),
                     expected.type == sim::AccessRecord::Type::Card ? "Card" : "Palm",
                     expected.userName, expected.department);
        if (line != text.toUtf8())
            QCOMPARE(QString::fromUtf8(line), text);
        ++i;
    }
}

void TestRecords::exportsUtf8Only()
{
    RecordRig rig;
    rig.peer.expect(
        {pageRequest(0), {hex("EAC5 000067 00 0001") + record(1, "\xFF", "", "é", "d")}});
    rig.click("exportRecordBtnClickAct");
    QCOMPARE(contentOf(exportPath()), QByteArray("Index0: (\xEF\xBF\xBD, , Card, é, d)\n"));
}

void TestRecords::keepsTheOldFile_data()
{
    QTest::addColumn<bool>("blocked"); ///< a folder has the name of the file
    QTest::addColumn<bool>("ended");   ///< by Esc while the dialog waits for the second page
    QTest::addColumn<QList<ScriptedPeer::Exchange>>("script");
    const QByteArray whole =
        hex("EAC5 0493E3 00 0BB8") + record(0, "a", "b", "c", "d").repeated(3000);
    const QByteArray tooMany =
        hex("EAC5 04944700 0BB9") + record(0, "a", "b", "c", "d").repeated(3001);
    const ScriptedPeer::Exchange first{pageRequest(0), {whole}};
    const ScriptedPeer::Exchange again{pageRequest(3000), {whole}};
    using Script = QList<ScriptedPeer::Exchange>;
    QTest::newRow("not-writable") << true << false << Script();
    QTest::newRow("connection-gone")
        << false << false << Script{first, {pageRequest(3000), {whole.left(5000)}, true}};
    QTest::newRow("ended-by-operator") << false << true << Script{first, {pageRequest(3000), {}}};
    QTest::newRow("same-page-again") << false << false << Script{first, again, again, again};
    QTest::newRow("too-long-a-page") << false << false << Script{{pageRequest(0), {tooMany}}};
}

void TestRecords::keepsTheOldFile()
{
    QFETCH(bool, blocked);
    QFETCH(bool, ended);
    QFETCH(QList<ScriptedPeer::Exchange>, script);
    if (blocked)
        QVERIFY(folder().mkpath(exportPath() + "/full"));
    else
        write(exportPath(), "old\n");
    RecordRig rig;
    for (const ScriptedPeer::Exchange &exchange : script)
        rig.peer.expect(exchange);
    QStringList titles;
    QTimer operatorTimer;
    connect(&operatorTimer, &QTimer::timeout, [&] {
        titles.append(rig.dialog->windowTitle());
        QVERIFY(!rig.find<QPushButton>("delRecordBtnClickAct")->isEnabled());
        if (ended)
            QTest::keyClick(rig.dialog.get(), Qt::Key_Escape);
    });
    operatorTimer.start(100);
    rig.click("exportRecordBtnClickAct");
    operatorTimer.stop();
    QCOMPARE(rig.lines().last(), QString("Fail to save the data file."));
    QCOMPARE(folder().entryList({"record_*"}).size(), 1); // there is no temporary file
    if (!blocked)
        QCOMPARE(contentOf(exportPath()), QByteArray("old\n"));
    QVERIFY(!ended || titles.contains("Access Record Management: 3000 records"));
    QVERIFY(rig.find<QPushButton>("delRecordBtnClickAct")->isEnabled());
    QVERIFY(rig.dialog->isVisible());
    QCOMPARE(rig.dialog->windowTitle(), QString("Access Record Management"));
}

// The second copy of a page may come after the page that follows it.
void TestRecords::asksAgainForARepeatedPage()
{
    const auto full = [](const char *name) {
        return hex("EAC5 0493E3 00 0BB8") + record(0, name, "b", "c", "d").repeated(3000);
    };
    RecordRig rig;
    rig.peer.expect({pageRequest(0), {full("first")}});
    rig.peer.expect({pageRequest(3000), {full("second")}});
    rig.peer.expect({pageRequest(6000), {full("first")}});
    rig.peer.expect({pageRequest(6000), {page({record(0, "third", "b", "c", "d")})}});
    rig.click("exportRecordBtnClickAct");
    const QList<QByteArray> lines = contentOf(exportPath()).split('\n');
    QCOMPARE(lines.size(), 6002);
    QCOMPARE(lines.at(3000), QByteArray("Index3000: (second, b, Palm, c, d)"));
    QCOMPARE(lines.at(6000), QByteArray("Index6000: (third, b, Palm, c, d)"));
}

void TestRecords::keepsALongerFile()
{
    const QByteArray one = "Index0: (a, b, Palm, c, d)\n";
    const QByteArray none = head(3) + QByteArray(3, '\0');
    const auto exported = [](const QByteArray &reply) {
        RecordRig rig;
        rig.peer.expect({pageRequest(0), {reply}});
        rig.click("exportRecordBtnClickAct");
        return rig.lines().last().startsWith("Record data saved to ");
    };
    write(exportPath(), one);
    QVERIFY(exported(page({record(0, "e", "f", "g", "h")}))); // of the same length
    QCOMPARE(contentOf(exportPath() + ".bak"), QByteArray("no file"));
    write(exportPath() + ".bak", "older\n");
    write(exportPath(), one);
    QVERIFY(exported(none));
    QCOMPARE(contentOf(exportPath()), QByteArray());
    QCOMPARE(contentOf(exportPath() + ".bak"), one);

    write(exportPath(), one);
    QFile::remove(exportPath() + ".bak");
    QVERIFY(folder().mkpath(exportPath() + ".bak/full"));
    QVERIFY(!exported(none));
    QCOMPARE(contentOf(exportPath()), one);
}

void TestRecords::removes()
{
    RecordRig rig;
    const QDate other = Month.addMonths(-7);
    rig.find<QDateEdit>("dateEdit")->setDate(other);
    for (const QByteArray &answer : {Ok, hex("EAC5 000001 05")}) {
        rig.peer.expect({hex("EAC5 000004") + monthRequest("41", other), {answer}});
        rig.click("delRecordBtnClickAct");
        rig.peer.expect({hex("EAC5 000001 42"), {answer}});
        rig.click("clearRecordBtnClickAct");
    }
    QCOMPARE(rig.lines(), QStringList({"Record deleted.", "Record cleared.", "Unknown error.",
                                       "Unknown error."}));
}

void TestRecords::reachesEveryMonth_data()
{
    QTest::addColumn<QDate>("today");
    for (const char *day : {"2026-11-23", "2026-12-31", "2027-01-31", "2027-03-30", "2027-03-29",
                            "2028-02-29", "2027-02-28", "2026-05-31"})
        QTest::newRow(day) << QDate::fromString(day, Qt::ISODate);
}

// The day, which is not shown, is today's until a shorter month reduces it.
void TestRecords::reachesEveryMonth()
{
    QFETCH(QDate, today);
    QDateEdit edit;
    AccessRecordDlg::prepareMonthEdit(&edit, today);
    QCOMPARE(edit.date(), today);
    const QDate first(today.year(), today.month(), 1);
    for (int months = -37; months <= 13; ++months) {
        const QDate month = first.addMonths(months);
        for (const int day : {qMin(today.day(), month.daysInMonth()), qMin(today.day(), 28)}) {
            edit.setDate(today);
            const QDate date(month.year(), month.month(), day);
            edit.setDate(date);
            QCOMPARE(edit.date() == date, months >= -36 && months <= 12);
        }
    }
}

QTEST_MAIN(TestRecords)
#include "tst_records.moc"
