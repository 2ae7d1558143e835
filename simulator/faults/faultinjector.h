#pragma once

#include "simulator/faults/fault.h"
#include "simulator/wire/delivery.h"

#include <QRandomGenerator>

#include <vector>

namespace sim {

/// Carries a plan out on the replies of a terminal, counting requests over all its connections.
class FaultInjector
{
public:
    explicit FaultInjector(const FaultPlan &plan);

    /// From now on this plan; counts and random numbers start anew.
    void setPlan(const FaultPlan &plan);
    quint32 bytesPerSecond() const { return m_bytesPerSecond; }

    /// What becomes of the reply to a request with this command code.
    Delivery deliver(quint8 code, const QByteArray &reply);

private:
    struct Armed
    {
        Fault fault;
        QRandomGenerator random; ///< its own, so that one fault does not disturb another
        int seen = 0;            ///< requests with its command
        int struck = 0;
    };

    static bool strikes(Armed &armed, quint8 code);

    std::vector<Armed> m_armed;
    quint32 m_bytesPerSecond = 0;
    int m_delayMs = 0;
};

} // namespace sim
