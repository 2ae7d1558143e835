#include "simulator/program.h"
#include "version.h"

#include <QCoreApplication>
#include <QFile>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <thread>

namespace {

std::atomic<bool> stopAsked{false};
static_assert(std::atomic<bool>::is_always_lock_free); // set by a signal

void askToStop(int /*signal*/)
{
    stopAsked = true;
}

/// Waits for the end of the standard input. Reads without stdio, whose lock would keep the process
/// from ending meanwhile.
void stopWithInput()
{
    QFile input;
    input.open(0, QIODevice::ReadOnly | QIODevice::Unbuffered);
    while (!input.read(1).isEmpty()) {
    }
    stopAsked = true;
}

/// Leaves the event loop when the program is asked to end, so that states are saved.
class Stopper : public QObject
{
public:
    Stopper()
    {
        std::signal(SIGINT, askToStop);
        std::signal(SIGTERM, askToStop);
        startTimer(100);
    }

protected:
    void timerEvent(QTimerEvent * /*event*/) override
    {
        if (stopAsked)
            QCoreApplication::quit();
    }
};

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("quirel-simulator"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QUIREL_VERSION));

    QString error;
    sim::Settings settings;
    sim::Terminals terminals;
    if (!sim::readArguments(app, &settings, &error) ||
        !sim::startTerminals(settings, &terminals, &error)) {
        std::fprintf(stderr, "%s\n", qPrintable(error));
        return 1;
    }
    const Stopper stopper; // before others learn that this program runs, and may end it
    QString ports = QString::number(terminals.front()->port());
    if (terminals.size() > 1)
        ports += QStringLiteral("-%1").arg(terminals.back()->port());
    std::printf("Listening on %s:%s\n", qPrintable(settings.address.toString()), qPrintable(ports));
    std::fflush(stdout);
    if (settings.endWithInput)
        std::thread(stopWithInput).detach();
    return QCoreApplication::exec();
}
