#include "widgets/windowhost.h"

#include "link/cmdclient.h"
#include "widgets/busycursor.h"
#include "widgets/textlog.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <QTimer>

namespace {

constexpr unsigned long RoundPause = 1; // ms
constexpr int LastRounds = 10;

} // namespace

CmdClient::CmdClient(QTextEdit *infoText, QObject *parent)
    : CmdClient(std::make_unique<WindowHost>(infoText), parent)
{
}

void WindowHost::say(const QString &line)
{
    textlog::append(log, line);
}

bool WindowHost::wait(const std::function<bool()> &complete, int rounds)
{
    // While this timer runs, the system tick of Windows, and so the shortest sleep, is 1 ms.
    QTimer precise;
    precise.setTimerType(Qt::PreciseTimer);
    precise.start(1);
    QElapsedTimer clock;
    clock.start();
    BusyCursor cursor;
    for (int round = 0; round < rounds; ++round) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        if (complete())
            return true;
        cursor.showIfLong();
        // Sleeps that last too long extend the wait by at most half. After a long interruption a
        // few rounds are left for the reply.
        if (clock.elapsed() - round <= rounds / 2 || round >= rounds - LastRounds)
            QThread::msleep(RoundPause); // usleep(1000) takes two ticks on Windows
    }
    return false;
}
