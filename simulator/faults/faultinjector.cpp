#include "simulator/faults/faultinjector.h"

#include "simulator/faults/faultkinds.h"

#include <algorithm>

namespace sim {

FaultInjector::FaultInjector(const FaultPlan &plan)
{
    setPlan(plan);
}

void FaultInjector::setPlan(const FaultPlan &plan)
{
    m_bytesPerSecond = plan.bytesPerSecond;
    m_delayMs = std::clamp(plan.delayMs, 0, Fault::MostMs);
    m_armed.clear();
    for (const Fault &fault : plan.faults) {
        const quint32 seeds[] = {plan.seed, static_cast<quint32>(m_armed.size())};
        m_armed.push_back({fault, QRandomGenerator(seeds)});
    }
}

Delivery FaultInjector::deliver(quint8 code, const QByteArray &reply)
{
    Delivery delivery;
    delivery.bytes = reply;
    delivery.delayMs = m_delayMs;
    for (Armed &armed : m_armed) {
        if (strikes(armed, code))
            applyFault(armed.fault, delivery, armed.random);
    }
    return delivery;
}

bool FaultInjector::strikes(Armed &armed, quint8 code)
{
    const Fault &fault = armed.fault;
    if (fault.command != Fault::AnyCommand && fault.command != code)
        return false;
    armed.seen = std::min(armed.seen + 1, std::max(fault.from, 1)); // never overflows
    if (armed.seen < fault.from || (fault.times > 0 && armed.struck >= fault.times))
        return false;
    if (fault.chance < 1 && armed.random.generateDouble() >= fault.chance)
        return false;
    armed.struck += fault.times > 0 ? 1 : 0;
    return true;
}

} // namespace sim
