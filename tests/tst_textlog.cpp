#include "link/textlog.h"

#include <QScrollBar>
#include <QTextBlock>
#include <QTextEdit>
#include <QtTest>

class TestTextLog : public QObject
{
    Q_OBJECT

private slots:
    void showsTextLiterally_data();
    void showsTextLiterally();
    void beginsWithoutAnEmptyLine();
    void cutsLongEntriesVisibly_data();
    void cutsLongEntriesVisibly();
    void keepsTheNewestLines();
    void keepsTheNewestCharacters();
    void followsTheEndOnlyFromTheEnd();
    void showsTheEndOfALongList();
    void keepsArrivalTimes();
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

void TestTextLog::cutsLongEntriesVisibly_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("shown");
    const QString a(1024, 'a');
    QTest::newRow("line") << a + '\n' + a + "b\nc" << a + '\n' + a + "…\nc";
    QTest::newRow("endless") << QString(800000, 'a') << a + "…";
    QTest::newRow("most-lines") << "a" + QString("\nb").repeated(999)
                                << "a" + QString("\nb").repeated(999);
    QTest::newRow("lines") << "a" + QString("\nb").repeated(1000)
                           << "a" + QString("\nb").repeated(999) + "\n…";
    QTest::newRow("characters") << (a.left(1023) + '\n').repeated(80)
                                << (a.left(1023) + '\n').repeated(64) + "\n…";
    const QString lines = QString("a\r\nb\rc\u2029d") + QChar(0xFDD0) + 'e' + QChar(0xFDD1) + 'f';
    QTest::newRow("all-line-ends") << lines + QString("\u2028g").repeated(1000)
                                   << "a\nb\nc\nd\ne\nf" + QString("\ng").repeated(994) + "\n…";
}

void TestTextLog::cutsLongEntriesVisibly()
{
    QFETCH(QString, entry);
    QTextEdit log;
    textlog::append(&log, entry);
    QTEST(log.toPlainText(), "shown");
}

void TestTextLog::keepsTheNewestLines()
{
    QTextEdit log;
    textlog::prepare(&log);
    textlog::append(&log, numbered(0, 60000));
    int next = 60000;
    while (next < 72000)
        textlog::append(&log, QString::number(next++));

    QTest::keyClicks(&log, "x\t"); // in vain
    const QStringList shown = log.toPlainText().split('\n');
    QVERIFY2(shown.size() >= 50000 && shown.size() <= 60000,
             qPrintable(QString::number(shown.size())));
    QVERIFY(shown == numbered(72000 - shown.size(), shown.size()));
}

void TestTextLog::keepsTheNewestCharacters()
{
    QTextEdit log;
    for (int i = 0; i < 6400; ++i)
        textlog::append(&log, QString::number(i).rightJustified(1000, '.'));
    const QStringList shown = log.toPlainText().split('\n');
    QVERIFY2(shown.size() >= 4994 && shown.size() <= 5496,
             qPrintable(QString::number(shown.size())));
    QVERIFY(shown.first().endsWith(QString::number(6400 - shown.size())));
    QVERIFY(shown.last().endsWith("6399"));
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

void TestTextLog::showsTheEndOfALongList()
{
    QTextEdit log;
    textlog::prepare(&log);
    log.resize(320, 200);
    log.show();
    textlog::append(&log, numbered(100000000, 20000));
    QVERIFY(log.document()->pageCount() > 0); // ends what is left of the layout
    QCOMPARE(log.cursorForPosition(log.viewport()->rect().bottomLeft()).block().text(),
             QString("100019999"));
}

// Also when older lines have gone.
void TestTextLog::keepsArrivalTimes()
{
    QTextEdit log;
    const QString form("yyyy-MM-dd HH:mm:ss.zzz");
    const auto timesOf = [&](int lines) {
        QList<QDateTime> times;
        for (const QString &line : textlog::timedText(&log).split('\n', Qt::SkipEmptyParts)) {
            times.append(QDateTime::fromString(line.left(23), form));
            lines -= line.mid(23).startsWith("  ") ? 1 : 0;
        }
        return lines == 0 ? times : QList<QDateTime>();
    };
    textlog::append(&log, numbered(0, 50000));
    const QDateTime before = QDateTime::currentDateTime();
    QTRY_VERIFY(QDateTime::currentDateTime() > before);
    textlog::append(&log, "first\nsecond");
    textlog::append(&log, numbered(0, 5500));
    const QList<QDateTime> times = timesOf(50000);
    QCOMPARE(times.size(), 50000);
    QVERIFY(std::is_sorted(times.begin(), times.end()));
    QVERIFY(times.first().isValid() && times.first() <= before);
    QVERIFY(times[50000 - 5502] > before);
    QCOMPARE(times[50000 - 5501], times[50000 - 5502]);

    log.clear();
    textlog::append(&log, "anew");
    QCOMPARE(timesOf(1).size(), 1);
}

QTEST_MAIN(TestTextLog)
#include "tst_textlog.moc"
