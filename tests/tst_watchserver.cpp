#include "app/watchserver.h"
#include "widgets/textlog.h"

#include <QNetworkProxy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTextEdit>
#include <QtTest>

#ifdef Q_OS_LINUX
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#endif

namespace {

/// A listening server and its log.
struct Watch
{
    Watch() { server.startListen(0); }

    quint16 port() const { return server.findChild<QTcpServer *>()->serverPort(); }
    QStringList lines() const { return log.toPlainText().split('\n', Qt::SkipEmptyParts); }

    QTextEdit log;
    WatchServer server{&log, nullptr};
};

/// A terminal that pushes messages.
struct Pusher : QTcpSocket
{
    explicit Pusher(const Watch &watch) { connectToHost("127.0.0.1", watch.port()); }

    QString connectLine() const
    {
        return QString("Recieve connect: [127.0.0.1:%1]").arg(localPort());
    }
};

QByteArray octets(quint8 address[4])
{
    return QByteArray(reinterpret_cast<char *>(address), 4).toHex('.');
}

} // namespace

class TestWatchServer : public QObject
{
    Q_OBJECT

private slots:
    void logsMessages_data();
    void logsMessages();
    void readsAFloodInPieces();
    void usesKeepAlive();
    void refusesASecondPeer();
    void servesTheNextPeer();
    void stopsAndStartsAgain();
    void ignoresTheProxy();
    void findsTheLocalAddress();
    void refusesMalformedHosts();
};

void TestWatchServer::logsMessages_data()
{
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<QString>("line");
    QTest::newRow("trimmed") << QByteArray("  hello\r\n") << "Data In:hello";
    QTest::newRow("markup") << QByteArray("<b>x</b>&lt;") << "Data In:<b>x</b>&lt;";
    QTest::newRow("no-text") << QByteArray("a\xFF\xC0z") << "Data In:a\uFFFD\uFFFDz";
}

void TestWatchServer::logsMessages()
{
    QFETCH(QByteArray, message);
    QFETCH(QString, line);
    Watch watch;
    Pusher pusher(watch);
    QTRY_COMPARE(watch.lines(), QStringList(pusher.connectLine()));
    pusher.write(message);
    QTRY_COMPARE(watch.lines(), (QStringList{pusher.connectLine(), line}));
}

// No data are lost, and no character is split.
void TestWatchServer::readsAFloodInPieces()
{
    Watch watch;
    const QString flood = 'a' + QString(100000, QChar(0x4E2D));
    Pusher pusher(watch);
    QTRY_COMPARE(watch.lines().size(), 1);
    pusher.write(flood.toUtf8());
    pusher.disconnectFromHost();
    QTRY_VERIFY(watch.lines().endsWith("The connection is abandoned."));
    const QStringList lines = textlog::fullText(&watch.log).split('\n');
    const QStringList pieces = lines.mid(1, lines.size() - 2);
    QVERIFY(pieces.size() >= 5);
    QVERIFY(pieces.join(QString()).remove("Data In:") == flood);
}

void TestWatchServer::usesKeepAlive()
{
#ifdef Q_OS_LINUX
    Watch watch;
    Pusher pusher(watch);
    QTRY_COMPARE(watch.lines().size(), 1);
    const int socket = static_cast<int>(watch.server.findChild<QTcpSocket *>()->socketDescriptor());
    const auto option = [socket](int level, int name) {
        int value = 0;
        socklen_t size = sizeof value;
        return getsockopt(socket, level, name, &value, &size) == 0 ? value : -1;
    };
    QCOMPARE(option(SOL_SOCKET, SO_KEEPALIVE), 1);
    const int probes = option(IPPROTO_TCP, TCP_KEEPCNT);
    const int seconds =
        option(IPPROTO_TCP, TCP_KEEPIDLE) + probes * option(IPPROTO_TCP, TCP_KEEPINTVL);
    QVERIFY2(probes > 1 && seconds < 30, qPrintable(QString::number(seconds)));
#else
    QSKIP("The options of the socket cannot be read here.");
#endif
}

void TestWatchServer::refusesASecondPeer()
{
    Watch watch;
    Pusher first(watch);
    QTRY_COMPARE(watch.lines().size(), 1);

    Pusher second(watch);
    QSignalSpy refusal(&second, SIGNAL(disconnected()));
    second.write("unheard");
    QTRY_COMPARE(refusal.count(), 1);

    first.write("heard");
    QTRY_COMPARE(watch.lines(), (QStringList{first.connectLine(), "Data In:heard"}));
}

void TestWatchServer::servesTheNextPeer()
{
    Watch watch;
    QStringList expected;
    for (const QString &name : QStringList{"one", "two", "three"}) {
        Pusher pusher(watch);
        pusher.write(name.toUtf8());
        QTRY_VERIFY(watch.lines().endsWith("Data In:" + name));
        expected << pusher.connectLine() << "Data In:" + name << "The connection is abandoned.";
        pusher.disconnectFromHost();
        QTRY_COMPARE(watch.lines(), expected);
    }
}

void TestWatchServer::stopsAndStartsAgain()
{
    Watch watch;
    Pusher first(watch);
    QSignalSpy farewell(&first, SIGNAL(disconnected()));
    QTRY_COMPARE(watch.lines().size(), 1);
    const QString firstLine = watch.lines().constFirst();

    watch.server.stopListen();
    watch.server.stopListen();
    QCOMPARE(watch.port(), quint16(0));
    QTRY_COMPARE(farewell.count(), 1);
    watch.server.startListen(0);
    watch.server.startListen(1);
    Pusher second(watch);
    second.write("again");
    QTRY_COMPARE(watch.lines(), (QStringList{firstLine, "The connection is abandoned.",
                                             second.connectLine(), "Data In:again"}));
}

void TestWatchServer::ignoresTheProxy()
{
    QNetworkProxy::setApplicationProxy(QNetworkProxy(QNetworkProxy::Socks5Proxy, "127.0.0.1", 9));
    const quint16 port = Watch().port();
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    QVERIFY(port != 0);
}

void TestWatchServer::findsTheLocalAddress()
{
    for (const char *host : {"127.0.0.1", "127.0.0.200"}) {
        quint8 out[4] = {9, 9, 9, 9};
        QVERIFY(WatchServer::findLocalAddress(out, host));
        QCOMPARE(octets(out), QByteArray("7f.00.00.01"));
    }
    for (const char *host : {"0.1.2.3", "127.0.77.1"}) {
        quint8 out[4];
        QVERIFY2(!WatchServer::findLocalAddress(out, host), host);
    }
}

void TestWatchServer::refusesMalformedHosts()
{
    for (const char *host : {"", "localhost", "127.0.0", "127.0.0.1.1", "127..0.1", "127.0.0.",
                             "127.0.0.x", "127.0.0.-1"}) {
        quint8 out[4] = {9, 8, 7, 6};
        QVERIFY2(!WatchServer::findLocalAddress(out, host), host);
        QCOMPARE(octets(out), QByteArray("09.08.07.06"));
    }
}

QTEST_MAIN(TestWatchServer)
#include "tst_watchserver.moc"
