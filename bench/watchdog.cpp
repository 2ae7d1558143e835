#include "bench/watchdog.h"

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int Timeout = 120000; // ms; longer than any wait of a step

} // namespace

Watchdog::~Watchdog()
{
    over = true;
    begun.release();
    wait();
}

void Watchdog::begin(const QString &work)
{
    const QMutexLocker locker(&mutex);
    current = work;
    begun.release();
}

void Watchdog::run()
{
    while (begun.tryAcquire(1, Timeout)) {
        if (over)
            return;
    }
    const QMutexLocker locker(&mutex);
    std::fprintf(stderr, "FAILED: %s does not end\n", qPrintable(current));
    std::_Exit(1);
}
