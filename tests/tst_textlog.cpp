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
    void indentsContinuationLines();
    void removesLinesWithTooManyCharacters();
    void scrollsToTheEndOnlyFromTheEnd();
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
    const QString literal = "<b>bold</b> %1 of %2,  two  and\ttab 发送：张三 ";
    row("literal", literal, literal, literal);
    const QString a(1024, 'a');
    const QString line = a + '\n' + a + "b\nc";
    row("line", line, a + '\n' + a + "…\nc", line);
    row("surrogates", a.mid(1) + "😀", a.mid(1) + "…", a.mid(1) + "😀");
    row("endless", QString(800000, 'a'), a + "…", QString(65536, 'a') + "…");
    const QString most = "a" + QString("\nb").repeated(999);
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

void TestTextLog::indentsContinuationLines()
{
    QTextEdit log;
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

// Of the longest lines only the beginnings are shown, and all their characters count.
void TestTextLog::removesLinesWithTooManyCharacters()
{
    const auto linesKept = [](int width, int appended) {
        QTextEdit log;
        for (int i = 0; i < 10; ++i)
            textlog::append(&log, QVector<QString>(appended / 10, QString(width, 'x')).toList());
        return log.document()->blockCount();
    };
    QCOMPARE(linesKept(1000, 6000), 4996);
    QCOMPARE(linesKept(60000, 100), 82);
}

void TestTextLog::scrollsToTheEndOnlyFromTheEnd()
{
    QTextEdit log;
    textlog::prepare(&log);
    log.resize(320, 200);
    log.show();
    QScrollBar *bar = log.verticalScrollBar();
    const auto lineAt = [&log](const QPoint &place) {
        return log.cursorForPosition(place).block().text();
    };
    textlog::append(&log, numbered(100000000, 50000));
    QTest::keyClicks(&log, "x\t");            // the log is read-only
    QVERIFY(log.document()->pageCount() > 0); // completes the layout
    QCOMPARE(lineAt(log.viewport()->rect().bottomLeft()), QString("100049999"));

    for (const int up : {bar->maximum() / 2, bar->singleStep()}) {
        bar->setValue(bar->maximum() - up);
        const QString line = lineAt({5, 5});
        textlog::append(&log, numbered(100050000, 5500)); // removes as many
        QCOMPARE(lineAt({5, 5}), line);
    }
    QTest::keyClick(&log, Qt::Key_End, Qt::ControlModifier);
    QVERIFY(bar->value() < bar->maximum()); // by the document margin
    textlog::append(&log, numbered(0, 10));
    QCOMPARE(bar->value(), bar->maximum());
}

// The times stay with their lines when older lines are removed.
void TestTextLog::keepsArrivalTimes()
{
    QTextEdit log;
    const QString form("yyyy-MM-dd HH:mm:ss.zzz");
    textlog::append(&log, numbered(0, 50000));
    const QString before = QDateTime::currentDateTime().toString(form);
    QTRY_VERIFY(QDateTime::currentDateTime().toString(form) > before);
    textlog::append(&log, "first\nsecond");
    textlog::append(&log, numbered(0, 5498));
    const QStringList lines = textlog::timedText(&log).split('\n');
    const QString time = lines.at(44500).left(23);
    QVERIFY(lines.at(44499).left(23) <= before && before < time);
    QCOMPARE(lines.mid(44500, 2), QStringList({time + "  first", time + "  second"}));
}

QTEST_MAIN(TestTextLog)
#include "tst_textlog.moc"
