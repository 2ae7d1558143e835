#include "simulator/commandline.h"
#include "simulator/terminal.h"

#include <QCoreApplication>

#include <QObject>

#include <csignal>
#include <cstdio>

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

volatile std::sig_atomic_t stopAsked = 0;

void askToStop(int /*signal*/)
{
    stopAsked = 1;
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
        if (stopAsked != 0)
            QCoreApplication::quit();
    }
};

QString endpoint(const QHostAddress &address, quint16 port)
{
    return QStringLiteral("%1:%2").arg(address.toString()).arg(port);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setOrganizationDomain(QStringLiteral("kovant.example"));
    QCoreApplication::setOrganizationName(QStringLiteral("Kovant"));
    QCoreApplication::setApplicationName(QStringLiteral("quirel-simulator"));
    QCoreApplication::setApplicationVersion(QStringLiteral(QUIREL_VERSION));

    sim::Settings settings;
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
    return QCoreApplication::exec();
}
