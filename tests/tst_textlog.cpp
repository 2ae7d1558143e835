#include "link/textlog.h"

#include <QScrollBar>
#include <QTextEdit>
#include <QtTest>

class TestTextLog : public QObject
{
    Q_OBJECT

private slots:
    void showsTextLiterally_data();
    void showsTextLiterally();
    void beginsWithoutAnEmptyLine();
    void cutsLongLinesVisibly();
    void keepsTheNewestLines();
    void followsTheEndOnlyFromTheEnd();
};

namespace {

QStringList numbered(int first, int count)
{
    QStringList lines;
    for (int i = first; i < first + count; ++i)
        lines.append(QString::number(i));
    return lines;
}

} // namespace

void TestTextLog::showsTextLiterally_data()
{
    QTest::addColumn<QString>("line");
    QTest::newRow("bold") << "<b>bold</b>";
    QTest::newRow("placeholders") << "%1 of %2, 100%";
    QTest::newRow("blanks") << "  two  and\ttab ";
    QTest::newRow("chinese") << "发送：张三";
}

void TestTextLog::showsTextLiterally()
{
    QFETCH(QString, line);
    QTextEdit log;
    textlog::append(&log, line);
    textlog::append(&log, QStringList{line, "between", line});
    QCOMPARE(log.toPlainText(), line + "\n" + line + "\nbetween\n" + line);
}

void TestTextLog::beginsWithoutAnEmptyLine()
{
    QTextEdit log;
    textlog::append(&log, QStringList());
    textlog::append(&log, "first");
    textlog::append(&log, QStringList());
    textlog::append(&log, "second");
    QCOMPARE(log.toPlainText(), QString("first\nsecond"));

    log.clear();
    textlog::append(&log, QStringList{"anew", "again"});
    QCOMPARE(log.toPlainText(), QString("anew\nagain"));
}

void TestTextLog::cutsLongLinesVisibly()
{
    QTextEdit log;
    textlog::append(&log, QString(4096, 'a') + '\n' + QString(800000, 'b') + "\nc");
    QCOMPARE(log.toPlainText(), QString(4096, 'a') + '\n' + QString(4096, 'b') + "…\nc");
}

void TestTextLog::keepsTheNewestLines()
{
    QTextEdit log;
    textlog::prepare(&log);
    textlog::append(&log, numbered(0, 60000));
    int next = 60000;
    while (next < 72000)
        textlog::append(&log, QString::number(next++));

    const QStringList shown = log.toPlainText().split('\n');
    QVERIFY2(shown.size() >= 50000 && shown.size() <= 60000,
             qPrintable(QString::number(shown.size())));
    QVERIFY(shown == numbered(72000 - shown.size(), shown.size()));
}

void TestTextLog::followsTheEndOnlyFromTheEnd()
{
    QTextEdit log;
    textlog::prepare(&log);
    log.resize(200, 100);
    log.show();
    QScrollBar *bar = log.verticalScrollBar();

    textlog::append(&log, numbered(0, 200));
    QVERIFY(bar->maximum() > 0);
    QCOMPARE(bar->value(), bar->maximum());

    bar->setValue(bar->maximum() / 2);
    const int place = bar->value();
    textlog::append(&log, "unread");
    QCOMPARE(bar->value(), place);

    bar->setValue(bar->maximum());
    textlog::append(&log, numbered(0, 10));
    QCOMPARE(bar->value(), bar->maximum());
}

QTEST_MAIN(TestTextLog)
#include "tst_textlog.moc"
