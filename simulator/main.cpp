#include "simulator/commandline.h"
#include "simulator/terminal.h"

#include <QCoreApplication>

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
    if (!terminal.listen(settings.address, settings.port))
        return fail(QStringLiteral("Cannot listen on %1: %2")
                        .arg(endpoint(settings.address, settings.port), terminal.errorString()));
    printLine(stdout,
              QStringLiteral("Listening on ") + endpoint(settings.address, terminal.port()));
    return QCoreApplication::exec();
}
