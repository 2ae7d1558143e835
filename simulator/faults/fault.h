#pragma once

#include "simulator/wire/delivery.h"

#include <QRandomGenerator>
#include <QVector>

#include <limits>
#include <vector>

namespace sim {

struct FaultKind;

/// One way in which the terminal fails a console, and when.
struct Fault
{
    static constexpr int AnyCommand = -1;
    static constexpr int WholeReply = std::numeric_limits<int>::max(); ///< value of close, reset
    static constexpr int MaxMs = 3'600'000;
    static constexpr int MaxTrail = 1'000'000;

    const FaultKind *kind = nullptr;
    int value = 0;            ///< within the range of the kind
    int command = AnyCommand; ///< or a command code
    int pauseMs = 0;          ///< between pieces, up to MaxMs
    int from = 1;             ///< the first request that is struck, among those with `command`
    int times = 0;            ///< most strikes; 0: no limit
    double chance = 1;        ///< 0 to 1, that such a request is struck
};

/// The faults of a terminal, and the speed of its replies.
struct FaultPlan
{
    QVector<Fault> faults;      ///< all that strike a reply are applied, in this order
    quint32 seed = 1;           ///< the same seed and requests give the same strikes and garbage
    quint32 bytesPerSecond = 0; ///< to each console; 0: no limit
    int delayMs = 0;            ///< before every reply, up to Fault::MaxMs
};

/// A reply that a fault has struck.
struct Strike
{
    Delivery &reply;
    const Fault &fault;
    QRandomGenerator &random;
};

struct FaultKind
{
    /// How a fault's text gives its value.
    enum class Form : quint8 {
        None,
        Number,
        Optional, ///< a number, 0 when it is missing with its "="
        Signed,   ///< a number with its sign; another kind of that name takes one without a sign
        Place,    ///< a number, "before" (0) or "after" (Fault::WholeReply)
    };

    const char *name;
    Form form;
    int lowest;
    int highest;
    const char *help; ///< the value's name; empty when there is no value
    void (*apply)(const Strike &);
};

/// Returns nullptr when there is none of that name that takes such a value.
const FaultKind *findKind(const QString &name, const QString &value);
/// Returns names, values and ranges of all kinds for the program's help, a line for each.
QString listKinds();

/// Reads one fault such as "getMode:drop", "all:delay=200,chance=0.1" or
/// "0x10:cut=-1,from=2,times=1". Returns false, with `error` naming the part that is wrong and
/// `fault` untouched, when it cannot be read.
bool parseFault(const QString &text, Fault *fault, QString *error);

/// Returns the syntax of such a text for the program's help.
QString faultSyntax();

/// Applies a plan to the replies of a terminal. Counts requests over all connections.
class FaultInjector
{
public:
    explicit FaultInjector(const FaultPlan &firstPlan) { setPlan(firstPlan); }

    /// Replaces the plan; counts and random numbers start anew.
    void setPlan(const FaultPlan &newPlan);

    /// Returns what becomes of the reply to a request with this command code.
    Delivery deliver(quint8 code, const QByteArray &reply);

private:
    struct Armed
    {
        Fault fault;
        QRandomGenerator random; ///< its own, so that faults do not influence each other
        int seen = 0;            ///< requests with its command
        int struck = 0;
    };

    static bool strikes(Armed &candidate, quint8 code);

    std::vector<Armed> armed;
    FaultPlan plan;
};

} // namespace sim
