#pragma once

#include "simulator/faults/fault.h"
#include "simulator/wire/delivery.h"

class QRandomGenerator;

namespace sim {

/// A reply that a fault has struck.
struct Strike
{
    Delivery &reply;
    int value; ///< within the kind's range
    int pauseMs;
    QRandomGenerator &random;
};

struct FaultKind
{
    /// How a fault's text gives its value.
    enum class Form : quint8 {
        None,
        Number,
        Optional, ///< a number that may be missing with its "=", then 0
        Signed,   ///< with its sign; a kind of the same name takes the number without one
        Place,    ///< a number, "before" (0) or "after" (Fault::WholeReply)
    };

    Fault::Kind kind;
    Form form;
    const char *name;
    int lowest;
    int highest;
    const char *help; ///< the value's name; empty when there is none
    void (*apply)(const Strike &);
};

void applyFault(const Fault &fault, Delivery &reply, QRandomGenerator &random);
/// nullptr when there is none of that name; `hasSign` tells whether the value carries one.
const FaultKind *findKind(const QString &name, bool hasSign);
/// Names, values and ranges of all kinds, to be shown: a line each.
QString listKinds();

} // namespace sim
