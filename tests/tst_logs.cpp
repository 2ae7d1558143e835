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
    void finds();
    void copiesAndSaves();
    void servesOneTerminalAtATime();
    void findsTheLocalAddress();
};

namespace {

/// Chooses an entry of the log's context menu, which also shows the entry's key.
void choose(LogView *log, const QString &text, const QKeySequence &key)
{
    QAction *chosen = nullptr;
    QTimer::singleShot(0, log, [&] {
        QWidget *menu = QApplication::activePopupWidget();
        for (QAction *action : menu->actions()) {
            if (action->text() == text && action->shortcut() == key)
                chosen = action;
        }
        menu->close();
    });
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {10, 10});
    QApplication::sendEvent(log->viewport(), &event);
    QVERIFY(chosen);
    chosen->trigger();
}

} // namespace

void TestLogs::finds()
{
    QWidget window;
    auto *log = new LogView(&window);
    textlog::append(log, QStringList{"Palm", "a.*b palm", "palm"});
    log->moveCursor(QTextCursor::Start);
    log->moveCursor(QTextCursor::EndOfWord, QTextCursor::KeepAnchor);
    choose(log, "Find…", QKeySequence::Find); // searches for the selection
    log->setEnabled(false);                   // as the messages are without a connection
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
    drive::type(dialog, "findEdit", "a.*");
    QCOMPARE(lineFound("findNextBtnClickAct"), 1);
    drive::type(dialog, "findEdit", "PALM");
    QCOMPARE(lineFound("findNextBtnClickAct"), -1);

    drive::type(dialog, "findEdit", "palm");
    log->selectAll();
    choose(log, "Find…", QKeySequence::Find); // does not search for several lines
    QCOMPARE(lineFound("findPreviousBtnClickAct"), 2);
    textlog::append(log, "palm"); // is not selected
    QCOMPARE(log->textCursor().selectedText(), QString("palm"));
    QCOMPARE(lineFound("findNextBtnClickAct"), 3);
}

void TestLogs::copiesAndSaves()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath("日志.txt");
    LogView log;
    const QString text = "掌纹：" + QString(2000, '1') + QString("\n<b>2</b>").repeated(1001);
    textlog::append(&log, text);
    choose(&log, "Copy All", Qt::CTRL | Qt::SHIFT | Qt::Key_C);
    QCOMPARE(QApplication::clipboard()->text(), text);
    ModalDriver driver({answer::file(path), answer::click("Cancel")});
    choose(&log, "Save As…", QKeySequence::Save);
    const QByteArray saved = contentOf(path);
    const QString time("\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}  ");
    const QRegularExpression form("\\A" + time + "掌纹：1{2000}\n(" + time +
                                  "<b>2</b>\n){1001}\\z");
    QVERIFY2(form.match(QString::fromUtf8(saved)).hasMatch(), saved.constData());
    log.clear();
    choose(&log, "Save As…", QKeySequence::Save);
#ifdef Q_OS_UNIX // a full disk; what is written fits the buffer of the file, or a part of it fits
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit former;
    getrlimit(RLIMIT_FSIZE, &former);
    for (const int limit : {0, 4096}) {
        log.clear();
        textlog::append(&log, QString(limit, 'x'));
        const rlimit full{static_cast<rlim_t>(limit), former.rlim_max};
        setrlimit(RLIMIT_FSIZE, &full);
        driver.then(answer::file(path));
        driver.then(answer::yes());
        choose(&log, "Save As…", QKeySequence::Save);
        setrlimit(RLIMIT_FSIZE, &former);
        QVERIFY(log.toPlainText().endsWith("Fail to save the log：" + path));
        QCOMPARE(contentOf(path), saved);
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), 1);
    }
#endif
}

// No data are lost, and no character is split.
void TestLogs::servesOneTerminalAtATime()
{
    QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::Socks5Proxy, "127.0.0.1", 9));
    LogView log;
    WatchServer server(&log, nullptr);
    server.startListen(0);
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    const auto *tcpServer = server.findChild<QTcpServer *>();
    QTcpSocket first;
    QTcpSocket second;
    first.connectToHost("127.0.0.1", tcpServer->serverPort());
    QTRY_COMPARE(log.toPlainText(),
                 QString("Recieve connect: [127.0.0.1:%1]").arg(first.localPort()));
    QVERIFY(server.findChild<QTcpSocket *>()->socketOption(QAbstractSocket::KeepAliveOption) == 1);
    log.clear();
    QSignalSpy refusal(&second, SIGNAL(disconnected()));
    second.connectToHost("127.0.0.1", tcpServer->serverPort());
    second.write("unheard");
    QTRY_COMPARE(refusal.count(), 1);
    first.write("  <b>a\xFF\xC0z</b>\r\n");
    QTRY_COMPARE(log.toPlainText(), QString("Data In:<b>a\uFFFD\uFFFDz</b>"));
    server.stopListen();
    server.stopListen();
    QTRY_VERIFY(!tcpServer->isListening() && first.state() == QAbstractSocket::UnconnectedState);
    QVERIFY(log.toPlainText().endsWith("z</b>\nThe connection is abandoned."));

    server.startListen(0);
    server.startListen(1);
    const QString flood = 'a' + QString(100000, QChar(0x4E2D));
    second.connectToHost("127.0.0.1", tcpServer->serverPort());
    second.write(flood.toUtf8());
    second.disconnectFromHost();
    QTRY_VERIFY(log.toPlainText().count("The connection is abandoned.") == 2);
    const QStringList lines = textlog::fullText(&log).split('\n');
    const QStringList pieces = lines.mid(3, lines.size() - 4);
    QVERIFY(pieces.size() >= 5 && pieces.join(QString()).remove("Data In:") == flood);
    first.connectToHost("127.0.0.1", tcpServer->serverPort());
    first.write("next");
    QTRY_VERIFY(log.toPlainText().endsWith("Data In:next"));
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
