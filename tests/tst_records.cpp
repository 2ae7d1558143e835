#include "data/wholefile.h"
#include "dialogs/accessrecorddlg.h"
#include "simulator/faults/fault.h"
#include "simulator/terminal.h"
#include "testkit/dialogrig.h"

#include <QDateEdit>
#include <QtTest>

#include <filesystem>

class TestRecords : public QObject
{
    Q_OBJECT

private slots:
    void showsAndDeletes();
    void reachesEveryMonth();
    void exportsAMonth_data();
    void exportsAMonth();
    void exportsWholeMonthsOnly();
};

namespace {

// A month with one digit that can be chosen on any day of the year.
const QDate Month(QDate::currentDate().year(), 3, 5);

QByteArray record(int type, const QByteArray &date, const QByteArray &time, const QByteArray &user,
                  const QByteArray &department)
{
    return bigEndian(type, 1) + "\xEE\xEE\xEE" + date.leftJustified(16, '\0') +
           time.leftJustified(16, '\0') + user.leftJustified(32, '\0') +
           department.leftJustified(32, '\0');
}

QByteArray pageRequest(int start)
{
    return hex("EAC5 000008 43") + bigEndian(Month.year(), 2) + '\3' + bigEndian(start, 4);
}

QString exportPath()
{
    return QCoreApplication::applicationDirPath() + Month.toString("'/record_'yyyy'_3.txt'");
}

struct RecordRig : DialogRig
{
    RecordRig()
        : DialogRig(makeDialog<AccessRecordDlg>)
    {
        find<QDateEdit>("dateEdit")->setDate(Month);
    }
    ~RecordRig()
    {
        for (const char *end : {"", ".bak"})
            std::filesystem::remove_all((exportPath() + end).toStdString());
    }
};

} // namespace

// The last 100 records are shown.
void TestRecords::showsAndDeletes()
{
    QByteArray records = record(0, "2026-11-01", "09:05:00", "张三", "Lab").repeated(147);
    records += record(2, "<b>1</b>", QByteArray("%1\0c", 4), "", "&lt;%3");
    records += record(255, "a\nIndex1: (b", "\x1B[2K\r", "\t\x7F\xC2\x85", "\xE2\x80\xA8\xFF");
    // A text without a zero ends with the record.
    records += record(1, QByteArray(16, 'a'), QByteArray(16, 'b'), "c", QByteArray(32, 'd'));
    QString lines("The loaded data count：15003|Record loaded：150");
    for (int i = 50; i < 147; ++i)
        lines += QString("|Index%1: (2026-11-01, 09:05:00, Palm, 张三, Lab)").arg(i);
    lines += QString("|Index147: (<b>1</b>, %1, , , &lt;%3)"
                     "|Index148: (a@Index1: (b, @[2K@, , @@@, @@)"
                     "|Index149: (aaaaaaaaaaaaaaaabbbbbbbbbbbbbbbbc, bbbbbbbbbbbbbbbbc, Card, c, "
                     "dddddddddddddddddddddddddddddddd)")
                 .replace('@', QChar::ReplacementCharacter);
    RecordRig rig;
    QCOMPARE(rig.press("Load Logs", pageRequest(0), replyWith(bigEndian(150, 2) + records)), lines);
    QCOMPARE(rig.press("Acquire Logs", hex("EAC5 000001 40"),
                       replyWith(R"({"record_files": ["a", {}, ["b"], 7, "<b>%1"], "more": 1})")),
             QString("Data loaded：57|a|7|<b>%1"));
    const QByteArray month = pageRequest(0).mid(6, 3);
    QCOMPARE(rig.press("Delete Logs", hex("EAC5 000004 41") + month, hex("EAC5 000001 05")),
             QString("Unknown error."));
}

// The day, which is not shown, is today's until a shorter month reduces it.
void TestRecords::reachesEveryMonth()
{
    for (const QDate &today : {QDate(2026, 12, 31), QDate(2027, 3, 30), QDate(2028, 2, 29)}) {
        QDateEdit edit;
        AccessRecordDlg::prepareMonthEdit(&edit, today);
        QCOMPARE(edit.date(), today);
        QCOMPARE(edit.minimumDate(), QDate(today.year() - 3, today.month(), 28));
        QCOMPARE(edit.maximumDate(), today.addMonths(12));
    }
}

void TestRecords::exportsAMonth_data()
{
    QTest::addColumn<int>("count"); ///< number of records; the row's tag is a fault
    QTest::newRow("delay=0") << 0;
    QTest::newRow("delay=1200") << 3000;
    for (const char *fault :
         {"cut=299999,from=2,times=1", "status=9,from=2,times=40", "late,from=2,times=1",
          "double=1", "double=4", "length=200003,from=2,times=1"})
        QTest::newRow(fault) << 6001;
}

// The old file is kept if the new one is shorter.
void TestRecords::exportsAMonth()
{
    QFETCH(int, count);
    sim::Terminal terminal;
    QVERIFY(terminal.listen(QHostAddress::LocalHost, 0));
    sim::RecordBook &book = terminal.device().state.records;
    book.months = {{{Month.year(), 3}, {count}}};
    sim::Fault fault;
    QString error;
    QVERIFY(sim::parseFault(QString("getMonthRecords:") + QTest::currentDataTag(), &fault, &error));
    terminal.setFaults({{fault}});
    RecordRig rig;
    rig.client.connectToDevice("127.0.0.1", terminal.port());
    QVERIFY(writeWholeFile(exportPath(), "old"));
    const QString end = QString("Record loaded：%1|Record data saved to %2");
    QVERIFY(rig.press("Export Logs").endsWith(end.arg(count % 3000).arg(exportPath())));
    QString content;
    for (int i = 0; i < count; ++i) {
        const auto [type, time, user, department] = sim::recordAt(book, {Month.year(), 3}, i);
        const char *typeText = type == sim::AccessRecord::Type::Card ? "Card" : "Palm";
        content += QString("Index%1: (%2, %3, %4, %5)\n")
                       .arg(i)
                       .arg(time.toString("yyyy-MM-dd, hh:mm:ss"), typeText, user, department);
    }
    QVERIFY(contentOf(exportPath()) == content.toUtf8());
    QCOMPARE(contentOf(exportPath() + ".bak"), QByteArray(count > 0 ? "no file" : "old"));
}

void TestRecords::exportsWholeMonthsOnly()
{
    using Exchange = ScriptedPeer::Exchange;
    const auto sends = [](int start, const char *name, int count = 3000) {
        const QByteArray records = record(0, name, "b", "c", "d").repeated(count);
        return Exchange{pageRequest(start), {replyWith(bigEndian(count, 2) + records)}};
    };
    int connections = 0;
    const auto exported = [&connections](const QList<Exchange> &script) {
        RecordRig rig;
        for (const Exchange &exchange : script)
            rig.peer.expect(exchange);
        writeWholeFile(exportPath(), "old");
        if (script.last().pieces.isEmpty()) // the operator ends the export
            QTimer::singleShot(50, [&rig] { QTest::keyClick(rig.dialog.get(), Qt::Key_Escape); });
        const bool failed = rig.press("Export Logs").endsWith("|Fail to save the data file.");
        connections = rig.peer.connectionCount();
        return (failed ? "failed, " : "saved, ") + contentOf(exportPath());
    };
    const QByteArray kept = "failed, old";
    const Exchange first = sends(0, "one");
    const Exchange again = sends(3000, "one");
    QCOMPARE(exported({first, {pageRequest(3000), {}}}), kept);
    QCOMPARE(exported({first, {pageRequest(3000), {"\xEA"}, true}}), kept);
    QCOMPARE(exported({first, again, again, again}), kept);
    QCOMPARE(exported({sends(0, "one", 3001)}), kept);
    // The second copy of a page may come after the page that follows it. The page itself, which is
    // still to come then, cannot arrive on a new connection.
    const QByteArray whole =
        exported({first, sends(3000, "two"), sends(6000, "one"), sends(6000, "end", 1)});
    QCOMPARE(connections, 2);
    QVERIFY(whole.startsWith("saved, ") &&
            whole.endsWith("Index5999: (two, b, Palm, c, d)\nIndex6000: (end, b, Palm, c, d)\n"));
}

QTEST_MAIN(TestRecords)
#include "tst_records.moc"
