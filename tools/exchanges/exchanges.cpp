#include "tools/exchanges/exchanges.h"

#include "link/cmdclient.h"
#include "simulator/terminal.h"
#include "testkit/commandcases.h"
#include "tools/exchanges/recorder.h"

#include <QElapsedTimer>
#include <QTextEdit>
#include <QTextStream>

namespace {

constexpr int EnrollmentTimeout = 10000; // ms

/// An enrollment takes its time, in which the terminal does little else.
bool waitForIdleness(CmdClient &client)
{
    QElapsedTimer timer;
    timer.start();
    uint8_t mode = 0;
    while (client.getMode(&mode) && timer.elapsed() < EnrollmentTimeout) {
        if (mode != 1 && mode != 6)
            return true;
    }
    return false;
}

std::vector<Exchange> complain(const char *command, const QTextEdit &log)
{
    QTextStream(stderr) << "No good example of " << command << ": " << log.toPlainText() << '\n';
    return {};
}

} // namespace

std::vector<Exchange> recordExchanges()
{
    sim::TerminalOptions options;
    options.enrollMs = 50;
    sim::Terminal terminal(options);
    terminal.device().state.records =
        sim::makeRecords(options.seed, 6, QDateTime({2026, 3, 4}, {5, 6, 7}, Qt::UTC));
    terminal.listen(QHostAddress(QHostAddress::LocalHost), 0);
    Recorder recorder(terminal.port());
    QTextEdit log;
    CmdClient client(&log, nullptr);
    if (!client.connectToDevice("127.0.0.1", recorder.port()))
        return complain("connecting", log);

    std::vector<Exchange> exchanges;
    for (const CommandCase &command : commandCases()) {
        if (!waitForIdleness(client))
            return complain("idleness", log);
        recorder.takeRequest();
        recorder.takeReply();
        QByteArray result;
        if (!command.call(client, &result))
            return complain(command.name, log);
        exchanges.push_back({command.name, recorder.takeRequest(), recorder.takeReply()});
    }
    return exchanges;
}
