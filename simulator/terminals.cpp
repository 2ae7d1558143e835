#include "simulator/program.h"

namespace sim {
namespace {

constexpr int MaxAttempts = 50; // to find consecutive free ports

TerminalOptions optionsOf(const Settings &settings, int index)
{
    TerminalOptions options = settings.terminal;
    options.index = index;
    options.faults.seed += static_cast<quint32>(index);
    if (const Log log = options.log; log && settings.terminals > 1)
        options.log = [=](const QString &line) {
            log(QStringLiteral("terminal %1, %2").arg(index + 1).arg(line));
        };
    return options;
}

bool listen(const Settings &settings, const Terminals &terminals, QString *error)
{
    int port = settings.port;
    // Below the ports that systems give to clients, which are often in use.
    if (port == 0 && terminals.size() > 1)
        port = QRandomGenerator::global()->bounded(10000, 32000);
    for (const auto &terminal : terminals) {
        const bool isPort = port <= 0xFFFF;
        if (!isPort || !terminal->listen(settings.address, static_cast<quint16>(port))) {
            *error = QStringLiteral("Cannot listen on %1:%2: %3")
                         .arg(settings.address.toString())
                         .arg(port)
                         .arg(isPort ? terminal->errorString() : "there is no such port");
            return false;
        }
        port = terminal->port() + 1;
    }
    return true;
}

} // namespace

bool startTerminals(const Settings &settings, Terminals *terminals, QString *error)
{
    for (int i = 0; i < settings.terminals; ++i) {
        terminals->push_back(std::make_unique<Terminal>(optionsOf(settings, i)));
        const QString suffix = i > 0 ? QStringLiteral(".%1").arg(i + 1) : QString();
        if (!settings.dataFile.isEmpty() &&
            !terminals->back()->keepState(settings.dataFile + suffix, error))
            return false;
    }
    for (int i = 1; i < MaxAttempts && settings.port == 0; ++i)
        if (listen(settings, *terminals, error))
            return true;
    return listen(settings, *terminals, error);
}

} // namespace sim
