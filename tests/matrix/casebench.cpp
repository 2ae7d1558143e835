#include "tests/matrix/casebench.h"

#include "simulator/faultspec.h"
#include "tests/commandcases.h"

#include <QHostAddress>
#include <QTest>

namespace {

constexpr int Patience = 10000; // ms, on a busy machine
constexpr int SettleRounds = 5; // without a byte, before the next command
constexpr int RecordsOfMonth = 3500;
constexpr quint32 MoreUsers = 400;
constexpr quint32 FeaturesUser = 255;
constexpr quint32 AddedUser = 0x01020304; // and deleted

sim::TerminalOptions options()
{
    sim::TerminalOptions options;
    options.enrollMs = 0;
    options.rebootMs = 1000; // time for a reply in pieces
    return options;
}

/// Calls that bring texts have room for them here, and the longest document is none.
Call callOf(const char *name)
{
    static const std::vector<std::pair<const char *, Call>> own = {
        {"getUserList", userListCall(819200)},
        {"getUserConfig", textCall(&CmdClient::getUserConfig, 3076)},
        {"getVendorConfig", textCall(&CmdClient::getVendorConfig, 3076)},
        {"getOutputConfig", textCall(&CmdClient::getOutputConfig, 3076)},
        {"getRecordFileList", textCall(&CmdClient::getRecordFileList, 3076)},
        {"getQrCodeList", textCall(&CmdClient::getQrCodeList, 819200)},
        {"getMonthRecords", recordPageCall(409600)},
        {"setOutputConfig", plainCall(&CmdClient::setOutputConfig, "{}", 2)},
    };
    for (const auto &[ownName, call] : own) {
        if (qstrcmp(name, ownName) == 0)
            return call;
    }
    return commandCase(name).call;
}

QString logged(const QString &text)
{
    return QString(text).replace('\r', '\n').replace(QChar::Nbsp, ' ');
}

} // namespace

bool WatchedClient::waitUntil(const std::function<bool()> &complete, int most)
{
    rounds = 0;
    const bool done = CmdClient::waitUntil(
        [&] {
            ++rounds;
            return complete();
        },
        most);
    arrived = recvBuffer;
    return done;
}

CaseBench::CaseBench()
    : terminal(options())
{
    if (!terminal.listen(QHostAddress::LocalHost, 0))
        qFatal("The terminal cannot listen.");
    pristine = terminal.device().state;
    for (quint32 id = 1000; id < 1000 + MoreUsers; ++id)
        pristine.users[id] = {id, 0, QStringLiteral("User %1").arg(id), {}, 1, 1};
    for (const quint32 id : {7U, 9U, 65536U})
        pristine.users[id] = {id, 0, {}, {}, 0, 0};
    const QDateTime now = QDateTime::currentDateTimeUtc();
    pristine.qrCodes.append({"gate", QString(32, 'k'), now, now.addDays(1)});
    pristine.records.counts[{2024, 7}] = RecordsOfMonth;
    reconnect();
    learnReplies();
}

void CaseBench::learnReplies()
{
    for (size_t command = 0; command < manners().size(); ++command) {
        if (!call(command).accepted)
            qFatal("The terminal does not do %s.", manners()[command].name);
        honest.push_back(client.arrived);
        checkNext(FaultCase::End::Stays, true);
    }
}

void CaseBench::prepare(const char *commandName)
{
    sim::Device &device = terminal.device();
    device.setMode(static_cast<quint8>(DeviceMode::LocalRecognition));
    device.state = pristine;
    if (qstrcmp(commandName, "deleteUser") == 0)
        device.state.users[AddedUser] = {AddedUser, 0, {}, {}, 0, 0};
    const bool features = qstrcmp(commandName, "getRemoteFeatures") == 0;
    if (!features && qstrcmp(commandName, "getRemoteEnrollImages") != 0)
        return;
    device.startEnrollment(DeviceMode::RemoteEnroll, features ? FeaturesUser : AddedUser);
    if (!QTest::qWaitFor([&] { return !device.enrolling(); }, Patience))
        qFatal("The enrollment does not end.");
}

CaseBench::Outcome CaseBench::call(size_t command)
{
    const char *name = manners()[command].name;
    log.clear();
    client.arrived.clear();
    client.rounds = 0;
    prepare(name);
    QByteArray result;
    const bool accepted = callOf(name)(client, &result);
    return {accepted, log.toPlainText(), result};
}

QString CaseBench::run(const FaultCase &faultCase)
{
    const Manner &manner = manners()[faultCase.command];
    const bool isLate = faultCase.previous >= 0;
    const size_t struck = isLate ? static_cast<size_t>(faultCase.previous) : faultCase.command;
    const QByteArray &reply = honest[struck];
    const QString faults = faultCase.fault(reply.size());
    plant(manners()[struck].name, faults);

    QByteArray expected = faultCase.arrival(reply);
    QString wrong;
    if (isLate) {
        wrong = checkSilence(struck);
        expected += honest[faultCase.command];
    }
    if (wrong.isEmpty())
        wrong = check(faultCase, expected, call(faultCase.command));
    terminal.setFaults({});
    const bool reboots = qstrcmp(manner.name, "rebootDevice") == 0;
    if (wrong.isEmpty())
        wrong = checkNext(faultCase.end, reboots);
    else
        reconnect();
    return wrong.isEmpty() ? wrong
                           : QStringLiteral("%1 of %2, %3: %4")
                                 .arg(faults, manners()[struck].name, manner.name, wrong);
}

/// The first request with the command is struck by all of the faults.
void CaseBench::plant(const char *commandName, const QString &faults)
{
    const auto code = static_cast<quint8>(commandCase(commandName).request.at(5));
    sim::FaultPlan plan;
    for (const QString &text : faults.split(' ')) {
        sim::Fault fault;
        QString error;
        if (!sim::parseFault(QStringLiteral("0x%1:%2,times=1").arg(code, 0, 16).arg(text), &fault,
                             &error))
            qFatal("%s", qPrintable(error));
        plan.faults << fault;
    }
    terminal.setFaults(plan);
}

QString CaseBench::check(const FaultCase &faultCase, const QByteArray &expected,
                         const Outcome &outcome) const
{
    const Manner &manner = manners()[faultCase.command];
    const QByteArray &arrived = client.arrived;
    // What comes behind a late reply is compared in its own cases.
    const int compared = faultCase.previous < 0
                             ? expected.size()
                             : honest[static_cast<size_t>(faultCase.previous)].size();
    const int certain = faultCase.certainBytes(compared);
    if (arrived.size() > expected.size() || !expected.startsWith(arrived.left(certain)))
        return "what arrived is not what was sent";
    const bool allArrives = faultCase.arrivesWhole(expected.size());
    const bool complete = manner.isComplete(allArrives && certain > 0 ? expected : arrived);
    if (!complete && allArrives && arrived.size() != expected.size())
        return QStringLiteral("%1 bytes arrived, not %2").arg(arrived.size()).arg(expected.size());
    if (complete ? client.rounds > manner.rounds : client.rounds != manner.rounds)
        return QStringLiteral("ended after %1 rounds").arg(client.rounds);
    if (complete && !manner.isComplete(arrived))
        return QStringLiteral("was content with %1 bytes").arg(arrived.size());
    const Verdict verdict = complete ? manner.judge(arrived) : manner.timedOut();
    if (outcome.accepted != verdict.accepted)
        return verdict.accepted ? "refused" : "accepted";
    if (logged(outcome.lines) != logged(verdict.lines))
        return QStringLiteral("said \"%1\", not \"%2\"").arg(outcome.lines, verdict.lines);
    return outcome.result == verdict.result ? QString() : "another result, or too many bytes of it";
}

QString CaseBench::checkSilence(size_t command)
{
    const Outcome outcome = call(command);
    const bool timedOut = !outcome.accepted && client.arrived.isEmpty() &&
                          outcome.lines == manners()[command].timedOut().lines;
    return timedOut ? QString() : "the late reply was not waited for in vain";
}

QString CaseBench::checkNext(FaultCase::End end, bool wasRebooted)
{
    if (end != FaultCase::End::Stays &&
        !QTest::qWaitFor([&] { return !client.hasConnection(); }, Patience))
        return "the connection stays";
    while (client.waitAck(1, SettleRounds)) {
    }
    if ((end != FaultCase::End::Stays || wasRebooted) && !reconnect())
        return "no new connection";
    log.clear();
    prepare("getMode");
    uint8_t mode = 0xFF;
    const bool answered = client.getMode(&mode) && mode == 3 && log.toPlainText().isEmpty();
    return answered ? QString() : "the next command fails";
}

bool CaseBench::reconnect()
{
    const bool back = QTest::qWaitFor([&] { return !terminal.device().rebooting(); }, Patience);
    log.clear();
    return back && client.connectToDevice("127.0.0.1", terminal.port()) &&
           log.toPlainText() == "Device connected.";
}
