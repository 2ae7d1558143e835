#include "simulator/commandline.h"
#include "simulator/terminal.h"
#include "version.h"

#include <QCoreApplication>

#include <QObject>
#include <QThread>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace {

void printLine(std::FILE *stream, const QString &line)
{
    std::fprintf(stream, "%s\n", line.toLocal8Bit().constData());
    std::fflush(stream);
}

int fail(const QString &reason)
{
    printLine(stderr, reason);
    return 1;
}

std::atomic<bool> stopAsked{false};
std::atomic<bool> holdsInput{false};
static_assert(std::atomic<bool>::is_always_lock_free); // set by a signal

void askToStop(int /*signal*/)
{
    stopAsked = true;
}

/// Waits for the end of the standard input, on a thread of its own.
void stopWithInput()
{
    while (std::getchar() != EOF) {
    }
    holdsInput = false;
    stopAsked = true;
}

/// Leaves the event loop in good order when the program is asked to end.
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

QString endpoint(const QHostAddress &address, quint16 port)
{
    return QStringLiteral("%1:%2").arg(address.toString()).arg(port);
}

int run(int argc, char *argv[], sim::Settings &settings)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setOrganizationDomain(QStringLiteral("kovant.example"));
    QCoreApplication::setOrganizationName(QStringLiteral("Kovant"));
    QCoreApplication::setApplicationName(QStringLiteral("quirel-simulator"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QUIREL_VERSION));

    QString error;
    if (!sim::readArguments(app, &settings, &error))
        return fail(error);
    if (settings.verbose)
        settings.terminal.log = [](const QString &line) { printLine(stderr, line); };

    sim::Terminal terminal(settings.terminal);
    if (!settings.dataFile.isEmpty() && !terminal.keepState(settings.dataFile, &error))
        return fail(error);
    if (!terminal.listen(settings.address, settings.port))
        return fail(QStringLiteral("Cannot listen on %1: %2")
                        .arg(endpoint(settings.address, settings.port), terminal.errorString()));
    printLine(stdout,
              QStringLiteral("Listening on ") + endpoint(settings.address, terminal.port()));
    const Stopper stopper;
    if (settings.endWithInput) {
        holdsInput = true;
        static QThread *const reader = QThread::create(stopWithInput); // to the end of the process
        reader->start();
    }
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    sim::Settings settings;
    const int code = run(argc, argv, settings);
    if (holdsInput)
        std::_Exit(code); // an orderly exit would wait for the thread that holds the input
    return code;
}
