#pragma once

#include "link/cmdclient.h"
#include "simulator/terminal.h"
#include "tests/matrix/faultcases.h"
#include "tests/matrix/manners.h"

#include <QTextEdit>

#include <vector>

/// A client that tells what its last wait saw.
class WatchedClient : public CmdClient
{
public:
    using CmdClient::CmdClient;

    int rounds = 0; ///< in which it looked
    QByteArray arrived;

protected:
    bool waitUntil(const std::function<bool()> &complete, int rounds) override;
};

/// A terminal and a client that go through one case after the other.
class CaseBench
{
public:
    CaseBench();

    /// Empty when all went as it should, else what did not.
    QString run(const FaultCase &faultCase);

private:
    struct Outcome
    {
        bool accepted;
        QString lines;
        QByteArray result;
    };

    void prepare(const char *commandName);
    void learnReplies();
    void plant(const char *commandName, const QString &faults);
    Outcome call(size_t command);
    QString check(const FaultCase &faultCase, const QByteArray &expected,
                  const Outcome &outcome) const;
    QString checkSilence(size_t command);
    QString checkNext(FaultCase::End end, bool wasRebooted);
    bool reconnect();

    sim::Terminal terminal;
    sim::State pristine;
    QTextEdit log;
    WatchedClient client{&log, nullptr};
    std::vector<QByteArray> honest; ///< replies, in the order of manners()
};
