#pragma once

#include "bench/framecounter.h"
#include "bench/linewatch.h"
#include "bench/measure.h"
#include "bench/watchdog.h"
#include "testkit/console.h"

#include <QElapsedTimer>

struct Step;

/// One window that goes through round after round, each with a new simulated terminal.
class Soak
{
public:
    /// Goes on for so long, and for as many rounds as a judgement needs. False if something fails,
    /// which is told.
    bool run(qint64 milliseconds);

private:
    bool round();
    bool step(const Step &step, const QString &folder);
    bool fail(const QString &reason);
    /// Leaves nothing of the round behind, and measures what stays nevertheless.
    void measure();
    bool judge() const;
    QString position() const;

    Console console;
    FrameCounter frames; ///< behind the console, whose pictures it counts
    LineWatch lines;
    Watchdog watchdog;
    QElapsedTimer clock;
    std::vector<Sample> samples;
    QMap<QByteArray, int> classesBefore; ///< after the warm-up's fewest rounds
    int steps = 0;
    QString current;
};
