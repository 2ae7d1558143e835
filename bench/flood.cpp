/// What a peer of the message listener can do at worst: flood it, send without end in one line,
/// connect and leave again and again. Tells what the window's process holds, the longest time in
/// which the window did not answer, and when the next honest message was shown.
///   flood [MEGABYTES [CONNECTIONS]]

#include "bench/measure.h"
#include "tests/windowrig.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTextStream>
#include <QThread>
#include <QTimer>
#include <QtTest>

#include <atomic>
#include <functional>
#include <memory>

namespace {

constexpr int DefaultMegabytes = 1024;
constexpr int DefaultConnections = 10000;
constexpr int Megabyte = 1 << 20;

constexpr int LongestGap = 1000;   // ms without an answer of the window
constexpr int Patience = 30000;    // ms
constexpr double MostGrowth = 512; // MB, what a full log of the longest lines takes

double residentMegabytes()
{
    return static_cast<double>(residentKiB()) / 1024;
}

/// Looks at the clock in every turn of the event loop.
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
    double mostMemory() const { return memory; }

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

/// What a peer of the listener does; false if it could not do all of it.
using Peer = std::function<bool(quint16 port)>;

class Bench
{
public:
    Bench();

    /// What a peer does in a thread of its own, and then an honest message.
    void run(const char *name, int megabytes, const Peer &peer);
    bool passed() const { return sound; }

private:
    bool honestMessageIsShown();

    QTextStream out{stdout};
    WindowRig rig;
    Pulse pulse;
    double memoryBefore = 0;
    int messages = 0;
    bool sound = true;
};

Bench::Bench()
{
    rig.window.show();
    rig.connectToPeer();
    rig.expectAnnouncement();
    rig.click("openWatchBtnClickAct");
    QTest::qWait(500);
    memoryBefore = residentMegabytes();
    out << "what             seconds     MB/s   longest gap ms   memory MB   honest message after "
           "ms\n";
}

bool Bench::honestMessageIsShown()
{
    const QString line = QStringLiteral("honest %1").arg(++messages);
    const quint16 port = rig.window.findChild<QTcpServer *>()->serverPort();
    QTcpSocket socket;
    // While the last peer's end is still unread, another is refused: the terminal tries again.
    const bool shown = QTest::qWaitFor(
        [&] {
            if (socket.state() == QAbstractSocket::UnconnectedState) {
                socket.connectToHost(QStringLiteral("127.0.0.1"), port);
                socket.write(line.toUtf8());
            }
            const QStringList lines = rig.lines("watchText");
            return lines.endsWith(QStringLiteral("Data In:") + line);
        },
        Patience);
    // The next peer is not to be refused.
    socket.disconnectFromHost();
    const QString farewell = QStringLiteral("The connection is abandoned.");
    return shown &&
           QTest::qWaitFor([&] { return rig.lines("watchText").endsWith(farewell); }, Patience);
}

void Bench::run(const char *name, int megabytes, const Peer &peer)
{
    const quint16 port = rig.window.findChild<QTcpServer *>()->serverPort();
    bool done = false;
    const std::unique_ptr<QThread> thread(QThread::create([&] { done = peer(port); }));
    QEventLoop loop;
    QObject::connect(thread.get(), SIGNAL(finished()), &loop, SLOT(quit()));
    pulse.begin();
    QElapsedTimer timer;
    timer.start();
    thread->start();
    loop.exec();
    const double seconds = static_cast<double>(timer.restart()) / 1000;
    const qint64 gap = pulse.longestGap();
    const bool shown = honestMessageIsShown();
    const double memory = pulse.mostMemory();
    out << QString::asprintf("%-16s %7.1f %8.1f %16lld %11.1f ", name, seconds, megabytes / seconds,
                             gap, memory)
        << (shown ? QString::number(timer.elapsed()) : QStringLiteral("never"))
        << (done ? "" : "   not all was taken") << Qt::endl;
    sound = sound && done && shown && gap <= LongestGap && memory - memoryBefore <= MostGrowth;
}

Peer flood(const QByteArray &pattern, int megabytes)
{
    return [=](quint16 port) {
        const QByteArray chunk = pattern.repeated(Megabyte / pattern.size() + 1).left(Megabyte);
        QTcpSocket socket;
        socket.connectToHost(QStringLiteral("127.0.0.1"), port);
        socket.waitForConnected(Patience);
        bool sent = true;
        for (int i = 0; sent && i < megabytes; ++i) {
            sent = socket.write(chunk) == chunk.size();
            while (sent && socket.bytesToWrite() > 0)
                sent = socket.waitForBytesWritten(Patience);
        }
        socket.disconnectFromHost();
        if (socket.state() != QAbstractSocket::UnconnectedState)
            socket.waitForDisconnected(Patience);
        return sent;
    };
}

Peer visits(int count)
{
    return [=](quint16 port) {
        int made = 0;
        for (int i = 0; i < count; ++i) {
            QTcpSocket socket;
            socket.connectToHost(QStringLiteral("127.0.0.1"), port);
            made += socket.waitForConnected(Patience) ? 1 : 0;
            if (i % 2 == 0)
                socket.abort();
        }
        return made == count;
    };
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "default.debug=false");
    QApplication application(argc, argv);
    const int megabytes = argc > 1 ? atoi(argv[1]) : DefaultMegabytes;
    const int connections = argc > 2 ? atoi(argv[2]) : DefaultConnections;

    const std::pair<const char *, QByteArray> patterns[] = {
        {"messages", "a message of the terminal, no longer than most\n"},
        {"shortest lines", "a\n"},
        {"line separators", "a\xE2\x80\xA8"},
        {"longest lines", QByteArray(4095, 'x') + '\n'},
        {"one line", "x"},
        {"no text", "\xFF\xE2\x80\xAE\xCC\x81"},
    };
    Bench bench;
    for (const auto &[name, pattern] : patterns)
        bench.run(name, megabytes, flood(pattern, megabytes));
    bench.run("visits", 0, visits(connections));
    return bench.passed() ? 0 : 1;
}

#include "flood.moc"
