#include "widgets/textlog.h"

#include <QScrollBar>
#include <QTextBlock>
#include <QTextEdit>
#include <QtTest>

class TestTextLog : public QObject
{
    Q_OBJECT

private slots:
    void showsAndStoresEntries_data();
    void showsAndStoresEntries();
    void beginsWithoutAnEmptyLine();
    void indentsContinuationLines();
    void keepsTheNewestLines();
    void keepsTheNewestCharacters_data();
    void keepsTheNewestCharacters();
    void scrollsToTheEndOnlyFromTheEnd();
    void keepsThePositionWhenOldLinesAreRemoved();
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

void TestTextLog::showsAndStoresEntries_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("full");
    const auto row = [](const char *name, const QString &entry, const QString &shown,
                        const QString &full) { QTest::newRow(name) << entry << shown << full; };
    for (const char *text : {"<b>bold</b>", "%1 of %2, 100%", "  two  and\ttab ", "发送：张三"})
        row(text, text, text, text);
    const QString a(1024, 'a');
    const QString line = a + '\n' + a + "b\nc";
    row("line", line, a + '\n' + a + "…\nc", line);
    row("surrogates", a.mid(1) + "😀", a.mid(1) + "…", a.mid(1) + "😀");
    row("endless", QString(800000, 'a'), a + "…", QString(65536, 'a') + "…");
    const QString most = "a" + QString("\nb").repeated(999);
    row("most-lines", most, most, most);
    row("lines", most + "\nc\nd", most + "\n…", most + "\nc\nd");
    const QString wide = a.mid(1) + '\n';
    row("characters", wide.repeated(80), wide.repeated(8) + "…", wide.repeated(64) + "…");
    const QString ends = QString("a\r\nb\rc\u2029d") + QChar(0xFDD0) + 'e' + QChar(0xFDD1) + 'f';
    row("all-line-ends", ends + "\u2028g", "a\nb\nc\nd\ne\nf\ng", "a\nb\nc\nd\ne\nf\ng");
    const QString hidden = QString(QChar(0)) + "\x1F\x7F\u0085\u061C\u200E\u202A\u202E\u2066\u2069";
    row("hidden", '.' + hidden, '.' + QString(10, 0xFFFD), '.' + QString(10, 0xFFFD));
}

void TestTextLog::showsAndStoresEntries()
{
    QFETCH(QString, entry);
    QFETCH(QString, shown);
    QFETCH(QString, full);
    QTextEdit log;
    textlog::append(&log, entry);
    textlog::append(&log, QStringList{"between", entry});
    QCOMPARE(log.toPlainText(), shown + "\nbetween\n" + shown);
    QCOMPARE(textlog::fullText(&log), full + "\nbetween\n" + full);
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

void TestTextLog::indentsContinuationLines()
{
    QTextEdit log;
    textlog::append(&log, "before\nclearing");
    log.clear();
    textlog::append(&log, QStringList{"entry", "שלום\nUser cleared.", "entry"});
    textlog::append(&log, "entry\nUser cleared.\n");
    QList<qreal> edges;
    for (QTextBlock line = log.document()->begin(); line.isValid(); line = line.next()) {
        const QTextBlockFormat format = line.blockFormat();
        edges.append(format.leftMargin() + format.textIndent());
        QVERIFY(format.leftMargin() > 0); // indents wrapped lines
        QCOMPARE(line.textDirection(), Qt::LeftToRight);
    }
    QCOMPARE(edges, (QList<qreal>{0, 0, 24, 0, 0, 24, 24}));
}

void TestTextLog::keepsTheNewestLines()
{
    QTextEdit log;
    textlog::prepare(&log);
    textlog::append(&log, numbered(0, 60000));
    int next = 60000;
    while (next < 72000)
        textlog::append(&log, QString::number(next++));

    QTest::keyClicks(&log, "x\t"); // the log is read-only
    const QStringList shown = log.toPlainText().split('\n');
    QVERIFY2(shown.size() >= 50000 && shown.size() <= 60000,
             qPrintable(QString::number(shown.size())));
    QVERIFY(shown == numbered(72000 - shown.size(), shown.size()));
}

void TestTextLog::keepsTheNewestCharacters_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("entries");
    QTest::addColumn<int>("least");
    QTest::addColumn<int>("most");
    QTest::newRow("shown") << 1000 << 6400 << 4994 << 5496;
    QTest::newRow("kept-only") << 60000 << 200 << 82 << 91;
}

void TestTextLog::keepsTheNewestCharacters()
{
    QFETCH(int, width);
    QFETCH(int, entries);
    QFETCH(int, least);
    QFETCH(int, most);
    QTextEdit log;
    for (int i = 0; i < entries; ++i)
        textlog::append(&log, QString::number(i).rightJustified(width, '.'));
    const QStringList lines = textlog::fullText(&log).split('\n');
    QVERIFY2(lines.size() >= least && lines.size() <= most,
             qPrintable(QString::number(lines.size())));
    QVERIFY(lines.first().endsWith('.' + QString::number(entries - lines.size())));
    QVERIFY(lines.last().endsWith('.' + QString::number(entries - 1)));
}

void TestTextLog::scrollsToTheEndOnlyFromTheEnd()
{
    QTextEdit log;
    textlog::prepare(&log);
    log.resize(200, 100);
    log.show();
    QScrollBar *bar = log.verticalScrollBar();

    textlog::append(&log, numbered(0, 200));
    QVERIFY(bar->maximum() > 0);
    QCOMPARE(bar->value(), bar->maximum());

    for (const int up : {bar->maximum() / 2, bar->singleStep()}) {
        bar->setValue(bar->maximum() - up);
        const int place = bar->value();
        textlog::append(&log, "unread");
        QCOMPARE(bar->value(), place);
    }

    QTest::keyClick(&log, Qt::Key_End, Qt::ControlModifier);
    QVERIFY(bar->value() < bar->maximum()); // by the document margin
    textlog::append(&log, numbered(0, 10));
    QCOMPARE(bar->value(), bar->maximum());
}

void TestTextLog::keepsThePositionWhenOldLinesAreRemoved()
{
    QTextEdit log;
    textlog::prepare(&log);
    log.resize(200, 100);
    log.show();
    textlog::append(&log, numbered(0, 50000));
    QScrollBar *bar = log.verticalScrollBar();
    bar->setValue(bar->maximum() / 2);
    const auto read = [&log] { return log.cursorForPosition({5, 5}).block().text(); };
    const QString line = read();
    textlog::append(&log, numbered(50000, 5500));
    QCOMPARE(log.document()->firstBlock().text(), QString("5500"));
    QCOMPARE(read(), line);
}

void TestTextLog::showsTheEndOfALongList()
{
    QTextEdit log;
    textlog::prepare(&log);
    log.resize(320, 200);
    log.show();
    textlog::append(&log, numbered(100000000, 20000));
    QVERIFY(log.document()->pageCount() > 0); // completes the layout
    QCOMPARE(log.cursorForPosition(log.viewport()->rect().bottomLeft()).block().text(),
             QString("100019999"));
}

// Arrival times stay with their lines when older lines are removed.
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
