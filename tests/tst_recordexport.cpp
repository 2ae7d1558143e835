#include "simulator/faults/fault.h"
#include "simulator/terminal.h"
#include "tests/recordrig.h"

#include <QPushButton>

Q_DECLARE_METATYPE(ScriptedPeer::Exchange)

class TestRecordExport : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { clear(folder()); }
    void exportsAMonth_data();
    void exportsAMonth();
    void exportsUtf8Only();
    void keepsTheOldFile_data();
    void keepsTheOldFile();
    void asksAgainForARepeatedPage();
    void keepsALongerFile();

private:
    static QDir folder() { return QCoreApplication::applicationDirPath(); }
    static void clear(const QDir &folder)
    {
        for (const QFileInfo &entry : folder.entryInfoList({"record_*"}))
            entry.isDir() ? QDir(entry.filePath()).removeRecursively()
                          : QFile::remove(entry.filePath());
    }
};

void TestRecordExport::exportsAMonth_data()
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

void TestRecordExport::exportsAMonth()
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

void TestRecordExport::exportsUtf8Only()
{
    RecordRig rig;
    rig.peer.expect(
        {pageRequest(0), {hex("EAC5 000067 00 0001") + record(1, "\xFF", "", "é", "d")}});
    rig.click("exportRecordBtnClickAct");
    QCOMPARE(contentOf(exportPath()), QByteArray("Index0: (\xEF\xBF\xBD, , Card, é, d)\n"));
}

void TestRecordExport::keepsTheOldFile_data()
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

void TestRecordExport::keepsTheOldFile()
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
void TestRecordExport::asksAgainForARepeatedPage()
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

void TestRecordExport::keepsALongerFile()
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

QTEST_MAIN(TestRecordExport)
#include "tst_recordexport.moc"
