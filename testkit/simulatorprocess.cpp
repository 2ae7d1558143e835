#include "testkit/simulatorprocess.h"

#include "testkit/scriptedpeer.h"

#include <QCoreApplication>
#include <QTextStream>

namespace {

constexpr int StartTimeout = 10000; // ms
constexpr int EndTimeout = 10000;   // ms

} // namespace

SimulatorProcess::~SimulatorProcess()
{
    process.kill();
    process.waitForFinished(EndTimeout);
}

bool SimulatorProcess::start()
{
    pushPort = freePort();
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/quirel-simulator"),
                  {QStringLiteral("--end-with-input"), QStringLiteral("--port"),
                   QStringLiteral("0"), QStringLiteral("--push-port"), QString::number(pushPort),
                   QStringLiteral("--push-interval"), QStringLiteral("1"),
                   QStringLiteral("--enroll-seconds"), QStringLiteral("1"),
                   QStringLiteral("--reboot-seconds"), QStringLiteral("1")});
    while (!process.canReadLine() && process.waitForReadyRead(StartTimeout)) {
    }
    const QString greeting = QString::fromUtf8(process.readLine()).trimmed();
    listeningPort = static_cast<quint16>(greeting.section(QLatin1Char(':'), -1).toUInt());
    if (listeningPort == 0)
        QTextStream(stderr) << "The simulated terminal did not start: " << process.errorString()
                            << '\n';
    return listeningPort != 0;
}

bool SimulatorProcess::end()
{
    process.closeWriteChannel();
    const bool ended = process.waitForFinished(EndTimeout) &&
                       process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    if (!ended)
        QTextStream(stderr) << "The simulated terminal did not end properly.\n";
    return ended;
}
