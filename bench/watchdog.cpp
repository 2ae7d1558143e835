#include "bench/watchdog.h"

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int Patience = 120000; // ms; every wait of a step ends long before

} // namespace

Watchdog::~Watchdog()
{
    over = true;
    begun.release();
    wait();
}

void Watchdog::beginsWith(const QString &work)
{
    const QMutexLocker locker(&mutex);
    current = work;
    begun.release();
}

void Watchdog::run()
{
    while (begun.tryAcquire(1, Patience)) {
        if (over)
            return;
    }
    const QMutexLocker locker(&mutex);
    std::fprintf(stderr, "FAILED: %s does not end\n", qPrintable(current));
    std::_Exit(1);
}
