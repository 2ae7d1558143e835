#include "tests/recordrig.h"

class TestRecords : public QObject
{
    Q_OBJECT

private slots:
    void showsAPage_data();
    void showsAPage();
    void listsTheFiles_data();
    void listsTheFiles();
    void removes();
    void reachesEveryMonth_data();
    void reachesEveryMonth();
};

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
