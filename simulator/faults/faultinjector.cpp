#include "simulator/faults/fault.h"

#include <algorithm>

namespace sim {

void FaultInjector::setPlan(const FaultPlan &newPlan)
{
    plan = newPlan;
    armed.clear();
    for (const Fault &fault : plan.faults) {
        const quint32 seeds[] = {plan.seed, static_cast<quint32>(armed.size())};
        armed.push_back({fault, QRandomGenerator(seeds)});
    }
}

Delivery FaultInjector::deliver(quint8 code, const QByteArray &reply)
{
    Delivery delivery;
    delivery.bytes = reply;
    delivery.bytesPerSecond = plan.bytesPerSecond;
    delivery.delayMs = plan.delayMs;
    for (Armed &next : armed) {
        if (!strikes(next, code))
            continue;
        next.fault.kind->apply({delivery, next.fault, next.random});
        delivery.faults << QString::fromLatin1(next.fault.kind->name);
    }
    return delivery;
}

bool FaultInjector::strikes(Armed &candidate, quint8 code)
{
    const Fault &fault = candidate.fault;
    if (fault.command != Fault::AnyCommand && fault.command != code)
        return false;
    candidate.seen = std::min(candidate.seen + 1, fault.from); // never overflows
    if (candidate.seen < fault.from || (fault.times > 0 && candidate.struck >= fault.times))
        return false;
    if (fault.chance < 1 && candidate.random.generateDouble() >= fault.chance)
        return false;
    candidate.struck += fault.times > 0 ? 1 : 0;
    return true;
}

} // namespace sim
