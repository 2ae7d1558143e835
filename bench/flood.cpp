/// Measures the window while a peer floods the message listener: with texts of all kinds, with
/// lines that never end, and with connections that are closed at once. Prints for each kind how
/// long a command without a reply takes, the preview's frame rate, the duration of "Stop
/// Listening", the longest time without a turn of the event loop, the memory of the process, and
/// the time until the next ordinary message is shown. Fails if a limit is exceeded.
///   flood [SECONDS [CONNECTIONS]]

#include "bench/framecounter.h"
#include "bench/measure.h"
#include "testkit/windowrig.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPushButton>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTextBlock>
#include <QTextEdit>
#include <QTextStream>
#include <QThread>
#include <QTimer>
#include <QtTest>

#include <atomic>
#include <functional>
#include <memory>

namespace {

constexpr int DefaultSeconds = 10; // for each kind, before anything is measured
constexpr int DefaultConnections = 10000;
constexpr int Megabyte = 1 << 20;
constexpr int PreviewTime = 2000; // ms
constexpr int Timeout = 30000;    // ms

constexpr int MaxGap = 1000;          // ms without a turn of the event loop
constexpr int MaxCommand = 2000;      // ms
constexpr int MaxStop = 1000;         // ms
constexpr double MinFrameShare = 0.5; // of the frame rate without a flood
constexpr double MaxGrowth = 512;     // MB: the size of a full log of the longest lines

double residentMegabytes()
{
    return static_cast<double>(residentKiB()) / 1024;
}

/// Measures the longest time between two turns of the event loop.
class Pulse : public QObject
{
    Q_OBJECT

public:
    Pulse()
    {
        connect(&timer, SIGNAL(timeout()), this, SLOT(beat()));
        timer.start(1);
        sinceBeat.start();
    }
    void begin() { longest = 0; }
    qint64 longestGap() const { return longest; }
    double maxMemory() const { return memory; }

private slots:
    void beat()
    {
        longest = qMax(longest, sinceBeat.restart());
        memory = qMax(memory, residentMegabytes());
    }

private:
    QTimer timer;
    QElapsedTimer sinceBeat;
    qint64 longest = 0;
    double memory = 0;
};

/// Runs a peer of the listener until `over` is set or the connection ends. Returns the number of
/// bytes sent.
using Peer = std::function<qint64(quint16 port, const std::atomic<bool> &over)>;

/// Runs a peer in its own thread.
class Attack
{
public:
    Attack(const Peer &peer, quint16 port)
        : thread(QThread::create([this, peer, port] { sent = peer(port, over); }))
    {
        thread->start();
    }
    ~Attack() { end(); }

    bool isRunning() const { return thread->isRunning(); }
    double end()
    {
        over = true;
        while (!thread->wait(1))
            QCoreApplication::processEvents();
        return static_cast<double>(sent) / Megabyte;
    }

private:
    std::atomic<bool> over{false};
    qint64 sent = 0;
    const std::unique_ptr<QThread> thread;
};

class Bench
{
public:
    Bench();

    /// Measures the window during a flood, and how it shows an ordinary message afterwards.
    void run(const char *name, int seconds, const Peer &peer);
    bool passed() const { return sound; }

private:
    quint16 port() const { return rig.window.findChild<QTcpServer *>()->serverPort(); }
    QString lastMessage() const;
    void startListening();
    qint64 commandWithoutReply();
    double framesPerSecond();
    qint64 stopListening();
    bool ordinaryMessageIsShown();

    QTextStream out{stdout};
    WindowRig rig;
    Pulse pulse;
    FrameCounter frames;
    double memoryBefore = 0;
    double quietRate = 0;
    int messages = 0;
    bool sound = true;
};

Bench::Bench()
{
    rig.window.show();
    rig.connectToPeer();
    rig.servePictures();
    startListening();
    QTest::qWait(500);
    memoryBefore = residentMegabytes();
    const qint64 command = commandWithoutReply();
    quietRate = framesPerSecond();
    out << QString::asprintf("%-16s %7s %15s %9s %8s %15s %10s %10s\n", "what", "MB/s",
                             "no-reply cmd ms", "frames/s", "stop ms", "longest gap ms",
                             "memory MB", "message ms")
        << QString::asprintf("%-16s %7.1f %15lld %9.1f\n", "nothing", 0.0, command, quietRate)
        << Qt::flush;
}

QString Bench::lastMessage() const
{
    return rig.find<QTextEdit>("watchText")->document()->lastBlock().text();
}

void Bench::startListening()
{
    rig.expectAnnouncement();
    rig.click("openWatchBtnClickAct");
}

/// Returns the duration of a command to which the terminal does not reply.
qint64 Bench::commandWithoutReply()
{
    rig.peer.expect({hex("EAC5 000001 10"), {}});
    QElapsedTimer timer;
    timer.start();
    rig.click("getUserListBtnClickAct");
    return timer.elapsed();
}

double Bench::framesPerSecond()
{
    rig.click("showRgbBtnClickAct");
    frames.mark();
    QElapsedTimer timer;
    timer.start();
    QTest::qWait(PreviewTime);
    const double rate = frames.sinceMark() * 1000.0 / static_cast<double>(timer.elapsed());
    rig.click("showRgbBtnClickAct");
    return rate;
}

/// Returns the time from a click that is queued in the event loop to the end of the connection.
qint64 Bench::stopListening()
{
    QElapsedTimer timer;
    timer.start();
    QMetaObject::invokeMethod(rig.find<QPushButton>("openWatchBtnClickAct"), "click",
                              Qt::QueuedConnection);
    const bool stopped = QTest::qWaitFor(
        [this] {
            return port() == 0 && lastMessage() == QStringLiteral("The connection is abandoned.");
        },
        Timeout);
    return stopped ? timer.elapsed() : Timeout;
}

bool Bench::ordinaryMessageIsShown()
{
    const QString line = QStringLiteral("ordinary %1").arg(++messages);
    QTcpSocket socket;
    // The listener refuses a peer until it has read the last one's end, so the peer tries again.
    const bool shown = QTest::qWaitFor(
        [&] {
            if (socket.state() == QAbstractSocket::UnconnectedState) {
                socket.connectToHost(QStringLiteral("127.0.0.1"), port());
                socket.write(line.toUtf8());
            }
            return lastMessage() == QStringLiteral("Data In:") + line;
        },
        Timeout);
    // The listener must have read the end before the next peer connects.
    socket.disconnectFromHost();
    const QString endLine = QStringLiteral("The connection is abandoned.");
    return QTest::qWaitFor([&] { return lastMessage() == endLine; }, Timeout) && shown;
}

void Bench::run(const char *name, int seconds, const Peer &peer)
{
    pulse.begin();
    QElapsedTimer timer;
    timer.start();
    Attack flood(peer, port());
    QTest::qWait(1000 * seconds);
    const qint64 command = commandWithoutReply();
    const double rate = framesPerSecond();
    const bool stillRunning = flood.isRunning();
    const double flooded = static_cast<double>(timer.elapsed()) / 1000;
    const double sent = flood.end();
    timer.start();
    const bool shown = ordinaryMessageIsShown();
    const qint64 message = timer.elapsed();

    Attack another(peer, port());
    QTest::qWait(1000);
    const qint64 stop = stopListening();
    another.end();
    startListening();

    const qint64 gap = pulse.longestGap();
    const double memory = pulse.maxMemory();
    sound = sound && stillRunning && shown && command <= MaxCommand && stop <= MaxStop &&
            rate >= quietRate * MinFrameShare && gap <= MaxGap &&
            memory - memoryBefore <= MaxGrowth;
    out << QString::asprintf("%-16s %7.1f %15lld %9.1f %8lld %15lld %10.1f ", name, sent / flooded,
                             command, rate, stop, gap, memory)
        << (shown ? QString::number(message).rightJustified(10) : QStringLiteral("     never"))
        << (stillRunning ? "" : "   ended early") << Qt::endl;
}

Peer flood(const QByteArray &pattern)
{
    return [=](quint16 port, const std::atomic<bool> &over) -> qint64 {
        QTcpSocket socket;
        socket.connectToHost(QStringLiteral("127.0.0.1"), port);
        socket.waitForConnected(Timeout);
        qint64 sent = 0;
        while (!over && socket.state() == QAbstractSocket::ConnectedState) {
            if (socket.bytesToWrite() == 0)
                sent += socket.write(pattern);
            socket.waitForBytesWritten(100);
        }
        sent -= socket.bytesToWrite();
        socket.abort();
        return sent;
    };
}

Peer visits(int count)
{
    return [=](quint16 port, const std::atomic<bool> &over) -> qint64 {
        for (int i = 0; i < count || !over; ++i) {
            QTcpSocket socket;
            socket.connectToHost(QStringLiteral("127.0.0.1"), port);
            if (!socket.waitForConnected(Timeout))
                break;
            if (i % 2 == 0)
                socket.abort();
        }
        return 0;
    };
}

} // namespace

int main(int argc, char *argv[])
{
    drive::stayOffScreen();
    qputenv("QT_LOGGING_RULES", "default.debug=false");
    QApplication application(argc, argv);
    const int seconds = argc > 1 ? atoi(argv[1]) : DefaultSeconds;
    const int connections = argc > 2 ? atoi(argv[2]) : DefaultConnections;

    const QByteArray thai("สวัสดีครับนี่คือข้อความ");
    const QByteArray mixed("aשЖกअ中한αع𝔸é");
    const std::pair<const char *, QByteArray> patterns[] = {
        {"shortest lines", "a\n"},
        {"messages", "a message of the terminal, no longer than most\n"},
        {"line separators", "a\u2028"},
        {"lines of 4 KB", QByteArray(4095, 'x') + '\n'},
        {"lines of 1 MB", QByteArray(Megabyte - 1, 'x') + '\n'},
        {"Thai", thai},
        {"Thai lines", thai.repeated(40) + '\n'},
        {"mixed scripts", mixed},
        {"mixed lines", mixed.repeated(80) + '\n'},
        {"both directions", QByteArray("aא").repeated(500) + '\n'},
        {"no text", "\xFF\xE2\x80\xAE\xCC\x81"},
    };
    Bench bench;
    for (const auto &[name, pattern] : patterns)
        bench.run(name, seconds, flood(pattern.repeated(Megabyte / pattern.size() + 1)));
    bench.run("visits", seconds, visits(connections));
    return bench.passed() ? 0 : 1;
}

#include "flood.moc"
