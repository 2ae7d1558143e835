#include "app/finddialog.h"
#include "app/logview.h"
#include "app/watchserver.h"
#include "testkit/bytes.h"
#include "testkit/drive.h"
#include "testkit/modaldriver.h"
#include "widgets/textlog.h"

#include <QtNetwork>
#include <QtTest>
#include <QtWidgets>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

/// The log, its dialogs, and the listener that fills the log of messages.
class TestLogs : public QObject
{
    Q_OBJECT

private slots:
    void hasAMenu();
    void finds();
    void savesWithTimes();
    void servesOneTerminalAtATime();
    void readsAFloodInPieces();
    void findsTheLocalAddress();
};

namespace {

void trigger(const LogView &log, const QString &text)
{
    for (QAction *action : log.actions()) {
        if (action->text() == text)
            action->trigger();
    }
}

/// The log of a server that listens.
struct Listener : LogView
{
    Listener() { server.startListen(0); }

    void connectFrom(QTcpSocket *terminal) const
    {
        terminal->connectToHost("127.0.0.1", tcpServer->serverPort());
    }

    WatchServer server{this, nullptr};
    QTcpServer *tcpServer = server.findChild<QTcpServer *>();
};

} // namespace

void TestLogs::hasAMenu()
{
    LogView log;
    const QStringList lines{"记录：" + QString(2000, '1'), "<b>2</b>"};
    textlog::append(&log, lines);
    log.show();
    QVERIFY(QTest::qWaitForWindowActive(&log));
    QTest::keyClick(&log, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(QApplication::clipboard()->text(), lines.join('\n'));

    log.setEnabled(false); // as the messages are without a connection
    QStringList texts;
    QTimer::singleShot(0, &log, [&texts] {
        QWidget *menu = QApplication::activePopupWidget();
        for (const QAction *entry : menu->actions())
            texts.append(entry->text().section('\t', 0, 0));
        menu->close();
    });
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {10, 10});
    QApplication::sendEvent(log.viewport(), &event);
    QCOMPARE(texts, (QStringList{"&Copy", "", "Select All", "", "Copy All", "Find…", "Save As…"}));
}

void TestLogs::finds()
{
    QWidget window;
    auto *log = new LogView(&window);
    textlog::append(log, QStringList{"Palm", "a.*b palm", "palm"});
    log->setEnabled(false);
    log->moveCursor(QTextCursor::Start);
    log->moveCursor(QTextCursor::EndOfWord, QTextCursor::KeepAnchor);
    trigger(*log, "Find…"); // searches for the selection
    const auto *dialog = window.findChild<FindDialog *>();
    const auto lineFound = [&](const char *button) {
        drive::click(dialog, button);
        const QVariant result = drive::find<QWidget>(dialog, "findResultLabel")->property("text");
        return result == "Not found." ? -1 : log->textCursor().blockNumber();
    };
    for (const int line : {1, 2, 0})
        QCOMPARE(lineFound("findNextBtnClickAct"), line);
    QCOMPARE(lineFound("findPreviousBtnClickAct"), 2);
    drive::clickCaption(dialog, "Match case");
    QCOMPARE(lineFound("findPreviousBtnClickAct"), 0);
    QCOMPARE(lineFound("findNextBtnClickAct"), 0);
    drive::type(dialog, "findEdit", "a.*");
    QCOMPARE(lineFound("findNextBtnClickAct"), 1);
    drive::type(dialog, "findEdit", "PALM");
    QCOMPARE(lineFound("findNextBtnClickAct"), -1);

    drive::type(dialog, "findEdit", "palm");
    log->selectAll();
    trigger(*log, "Find…"); // does not search for several lines
    QCOMPARE(lineFound("findPreviousBtnClickAct"), 2);
    textlog::append(log, "palm"); // is not selected
    QCOMPARE(log->textCursor().selectedText(), QString("palm"));
    QCOMPARE(lineFound("findNextBtnClickAct"), 3);
}

void TestLogs::savesWithTimes()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("日志.txt");
    LogView log;
    textlog::append(&log, "掌纹：1" + QString("\n1234567").repeated(200));
    ModalDriver driver({answer::file(path), answer::click("Cancel")});
    trigger(log, "Save As…");
    trigger(log, "Save As…");
    const QByteArray saved = contentOf(path);
    const QString time("\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}  ");
    const QRegularExpression form("\\A" + time + "掌纹：1\n(" + time + "1234567\n){200}\\z");
    QVERIFY2(form.match(QString::fromUtf8(saved)).hasMatch(), saved.constData());
    QVERIFY(log.toPlainText().endsWith("\n1234567"));
#ifdef Q_OS_UNIX // a full disk; the text fits the buffer of the file
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit former;
    getrlimit(RLIMIT_FSIZE, &former);
    const rlimit full{4096, former.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
    driver.then(answer::file(path));
    driver.then(answer::yes());
    trigger(log, "Save As…");
    setrlimit(RLIMIT_FSIZE, &former);
    QVERIFY(log.toPlainText().endsWith("\n1234567\nFail to save the log：" + path));
    QCOMPARE(contentOf(path), saved);
#endif
}

void TestLogs::servesOneTerminalAtATime()
{
    QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::Socks5Proxy, "127.0.0.1", 9));
    Listener log;
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    QTcpSocket first;
    QTcpSocket second;
    log.connectFrom(&first);
    QTRY_COMPARE(log.toPlainText(),
                 QString("Recieve connect: [127.0.0.1:%1]").arg(first.localPort()));
    auto *served = log.server.findChild<QTcpSocket *>();
    QCOMPARE(served->socketOption(QAbstractSocket::KeepAliveOption).toInt(), 1);
    log.clear();
    log.connectFrom(&second);
    QSignalSpy refusal(&second, SIGNAL(disconnected()));
    second.write("unheard");
    QTRY_COMPARE(refusal.count(), 1);
    first.write("  hello\r\n");
    QTRY_COMPARE(log.toPlainText(), QString("Data In:hello"));
    first.disconnectFromHost();
    QTRY_COMPARE(log.toPlainText(), QString("Data In:hello\nThe connection is abandoned."));

    log.connectFrom(&second);
    second.write("<b>a\xFF\xC0z</b>");
    QTRY_VERIFY(log.toPlainText().endsWith("]\nData In:<b>a\uFFFD\uFFFDz</b>"));
    log.server.stopListen();
    log.server.stopListen();
    QVERIFY(!log.tcpServer->isListening());
    QTRY_COMPARE(second.state(), QAbstractSocket::UnconnectedState);
    QVERIFY(log.toPlainText().endsWith("z</b>\nThe connection is abandoned."));
    log.server.startListen(0);
    log.server.startListen(1);
    log.connectFrom(&second);
    second.write("again");
    QTRY_VERIFY(log.toPlainText().endsWith("]\nData In:again"));
}

// No data are lost, and no character is split.
void TestLogs::readsAFloodInPieces()
{
    Listener log;
    const QString flood = 'a' + QString(100000, QChar(0x4E2D));
    QTcpSocket terminal;
    log.connectFrom(&terminal);
    terminal.write(flood.toUtf8());
    terminal.disconnectFromHost();
    QTRY_VERIFY(log.toPlainText().endsWith("The connection is abandoned."));
    const QStringList lines = textlog::fullText(&log).split('\n');
    const QStringList pieces = lines.mid(1, lines.size() - 2);
    QVERIFY(pieces.size() >= 5);
    QVERIFY(pieces.join(QString()).remove("Data In:") == flood);
}

void TestLogs::findsTheLocalAddress()
{
    quint8 out[4] = {};
    for (const char *host : {"", "127.0.0", "127.0.0.1.1", "127.0.0.x", "0.1.2.3", "127.0.77.1"})
        QVERIFY2(!WatchServer::findLocalAddress(out, host), host);
    QVERIFY(WatchServer::findLocalAddress(out, "127.0.0.200"));
    QCOMPARE(QByteArray(reinterpret_cast<char *>(out), 4), hex("7F000001"));
}

QTEST_MAIN(TestLogs)
#include "tst_logs.moc"
