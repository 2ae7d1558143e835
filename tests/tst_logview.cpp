#include "app/finddialog.h"
#include "app/logview.h"
#include "testkit/bytes.h"
#include "testkit/drive.h"
#include "testkit/modaldriver.h"
#include "widgets/textlog.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

class TestLogView : public QObject
{
    Q_OBJECT

private slots:
    void extendsTheContextMenu_data();
    void extendsTheContextMenu();
    void copiesAll();
    void finds_data();
    void finds();
    void searchesForTheSelection();
    void findsNewLines();
    void savesWithTimes();
    void reportsAFailedSave();
};

namespace {

QAction *action(const LogView &log, const QString &text)
{
    for (QAction *candidate : log.actions()) {
        if (candidate->text() == text)
            return candidate;
    }
    return nullptr;
}

} // namespace

void TestLogView::extendsTheContextMenu_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::newRow("connected") << true;
    QTest::newRow("disconnected") << false;
}

void TestLogView::extendsTheContextMenu()
{
    QFETCH(bool, enabled);
    LogView log;
    log.setEnabled(enabled);
    log.show();
    textlog::append(&log, "line");
    QStringList texts;
    QTimer::singleShot(0, &log, [&texts] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        for (const QAction *entry : menu->actions())
            texts.append(entry->text().section('\t', 0, 0));
        menu->close();
    });
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {10, 10});
    QApplication::sendEvent(log.viewport(), &event);
    QCOMPARE(texts, (QStringList{"&Copy", "", "Select All", "", "Copy All", "Find…", "Save As…"}));
}

void TestLogView::copiesAll()
{
    LogView log;
    const QString line = "记录：" + QString(2000, '1');
    textlog::append(&log, QStringList{line, "<b>2</b>"});
    log.show();
    QVERIFY(QTest::qWaitForWindowActive(&log));
    QTest::keyClick(&log, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(QApplication::clipboard()->text(), line + "\n<b>2</b>");
}

void TestLogView::finds_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("matchCase");
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QList<int>>("lines"); ///< lines found by repeated clicks; -1: not found
    const QByteArray next("findNextBtnClickAct");
    const QByteArray previous("findPreviousBtnClickAct");
    QTest::newRow("next") << "palm" << false << next << QList<int>{0, 2, 0};
    QTest::newRow("previous") << "palm" << false << previous << QList<int>{2, 0, 2};
    QTest::newRow("case") << "palm" << true << next << QList<int>{2, 2};
    QTest::newRow("literal") << "a.*" << false << next << QList<int>{1};
    QTest::newRow("absent") << "card" << false << previous << QList<int>{-1};
    QTest::newRow("nothing") << "" << false << next << QList<int>{-1};
}

void TestLogView::finds()
{
    QFETCH(QString, text);
    QFETCH(bool, matchCase);
    QFETCH(QByteArray, button);
    QFETCH(QList<int>, lines);
    LogView log;
    textlog::append(&log, QStringList{"Palm", "a.*b", "palm"});
    action(log, "Find…")->trigger();
    auto *dialog = log.findChild<FindDialog *>();
    QVERIFY(dialog->isVisible());
    dialog->findChild<QLineEdit *>("findEdit")->setText(text);
    dialog->findChild<QCheckBox *>()->setChecked(matchCase);
    for (const int line : lines) {
        drive::click(dialog, button);
        const bool found = log.textCursor().hasSelection();
        QCOMPARE(found ? log.textCursor().blockNumber() : -1, line);
        QCOMPARE(dialog->findChild<QLabel *>("findResultLabel")->text(),
                 QString(found ? "" : "Not found."));
    }
}

void TestLogView::searchesForTheSelection()
{
    LogView log;
    textlog::append(&log, QStringList{"palm", "vein"});
    const auto sought = [&log](int selected) {
        QTextCursor cursor = log.textCursor();
        cursor.setPosition(0);
        cursor.setPosition(selected, QTextCursor::KeepAnchor);
        log.setTextCursor(cursor);
        action(log, "Find…")->trigger();
        return log.findChild<QLineEdit *>("findEdit")->text();
    };
    QCOMPARE(sought(3), QString("pal"));
    QCOMPARE(sought(7), QString("pal")); // a selection of two lines is not searched for
    QCOMPARE(sought(0), QString("pal"));
}

void TestLogView::findsNewLines()
{
    QWidget window;
    auto *log = new LogView(&window);
    textlog::append(log, "palm");
    action(*log, "Find…")->trigger();
    log->setEnabled(false);
    auto *dialog = window.findChild<FindDialog *>();
    QVERIFY(dialog->isEnabled());
    dialog->findChild<QLineEdit *>("findEdit")->setText("palm");
    drive::click(dialog, "findNextBtnClickAct");
    textlog::append(log, "palm 2");
    QCOMPARE(log->textCursor().selectedText(), QString("palm"));
    drive::click(dialog, "findNextBtnClickAct");
    QCOMPARE(log->textCursor().blockNumber(), 1);
}

void TestLogView::savesWithTimes()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("日志.txt");
    LogView log;
    textlog::append(&log, "掌纹：1" + QString("\n2").repeated(1001));
    const ModalDriver driver(answer::file(path));
    action(log, "Save As…")->trigger();
    const QString saved = QString::fromUtf8(contentOf(path));
    const QString time("\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}  ");
    const QRegularExpression form("\\A" + time + "掌纹：1\n(" + time + "2\n){1001}\\z");
    QVERIFY2(form.match(saved).hasMatch(), qPrintable(saved));
    QVERIFY(log.toPlainText().startsWith("掌纹：1\n2\n"));
}

void TestLogView::reportsAFailedSave()
{
    const QTemporaryDir folder;
    LogView log;
    textlog::append(&log, "line");
    {
        const ModalDriver driver(answer::click("Cancel"));
        action(log, "Save As…")->trigger();
    }
    QCOMPARE(log.toPlainText(), QString("line"));
    const QString path = folder.filePath("gone") + "/log.txt";
    const ModalDriver driver([&](QWidget *box) {
        QDir(folder.path()).mkdir("gone");
        answer::file(path)(box);
        QDir(folder.filePath("gone")).removeRecursively();
    });
    action(log, "Save As…")->trigger();
    QCOMPARE(log.toPlainText(), "line\nFail to save the log：" + path);
}

QTEST_MAIN(TestLogView)
#include "tst_logview.moc"
